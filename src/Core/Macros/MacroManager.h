// The macros of the show: recorded, kept, played and fired by the clock.
#pragma once

#include <QPointer>
#include <QSet>

#include "Base/Observable.h"
#include "Base/Settings.h"
#include "Base/Task.h"
#include "Core/Macros/Macro.h"
#include "Core/Macros/MacroLogEntry.h"
#include "Core/Macros/MacroSchedule.h"

namespace tessara {

class CanvasDocument;

/// A macro refuses to start while another runs or a recording does. An operation on an id that
/// isn't found does nothing.
class MacroManager : public QObject
{
    Q_OBJECT
    /// In the order of their creation.
    Q_PROPERTY(QList<tessara::Macro> macros READ macros NOTIFY macrosChanged FINAL)
    Q_PROPERTY(
        bool isRecording READ isRecording WRITE setIsRecording NOTIFY isRecordingChanged FINAL)
    Q_PROPERTY(QList<tessara::MacroStep> recordingSteps READ recordingSteps NOTIFY
                   recordingStepsChanged FINAL)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged FINAL)
    Q_PROPERTY(
        std::optional<QUuid> runningMacroID READ runningMacroID NOTIFY isRunningChanged FINAL)
    /// The newest entries, oldest first.
    Q_PROPERTY(QList<tessara::MacroLogEntry> log READ log NOTIFY logChanged FINAL)
    /// What became of macros that couldn't be read or saved: a sentence for the operator.
    Q_PROPERTY(std::optional<QString> lastErrorMessage READ lastErrorMessage NOTIFY
                   lastErrorMessageChanged FINAL)

public:
    static constexpr QLatin1String saveKey{"tessara_macros_v2"};
    /// Holds what stood under `saveKey` and could not be read, value by value as it was.
    static constexpr QLatin1String asideKey{"tessara_macros_v2_unreadable"};
    static constexpr qsizetype longestLog = 200; // entries; only recorded steps trim it

    /// Loads what was saved; what of it can't be read is set aside. The clock, the settings and the
    /// document outlive the manager; without a document nothing is played.
    MacroManager(Clock &clock, Settings &settings, CanvasDocument *document);
    ~MacroManager() override;

    const QList<Macro> &macros() const { return m_macros; }
    bool isRecording() const { return m_isRecording; }
    const QList<MacroStep> &recordingSteps() const { return m_recordingSteps; }
    bool isRunning() const { return m_runningMacroID.has_value(); }
    std::optional<QUuid> runningMacroID() const { return m_runningMacroID; }
    const QList<MacroLogEntry> &log() const { return m_log; }
    const std::optional<QString> &lastErrorMessage() const { return m_lastErrorMessage; }
    CanvasDocument *currentDocument() const;

    // Recording
    /// True begins a recording; false ends it and keeps its steps for `stopRecording`.
    void setIsRecording(bool recording);
    /// Into the log and, while recording, among the steps.
    void record(const MacroStep::Kind &kind);
    /// Only while recording; the seconds are finite and above 0.
    Q_INVOKABLE void addPause(double seconds);
    /// Makes a macro of the steps; a blank name discards them.
    Q_INVOKABLE void stopRecording(const QString &name);
    Q_INVOKABLE void clearLog();

    // Playback
    /// Plays a copy: what becomes of the list meanwhile does not matter.
    Q_INVOKABLE void runMacro(const tessara::Macro &macro);
    Q_INVOKABLE void runMacroAtIndex(int index);
    Q_INVOKABLE void stopRunning();

    // The list; each operation saves it
    Q_INVOKABLE void updateMacroLoop(const QUuid &id, bool enabled, qint64 count);
    Q_INVOKABLE void updateMacroSchedule(const QUuid &id, bool enabled, const QString &time);
    /// The name is trimmed; an empty one changes nothing.
    Q_INVOKABLE void renameMacro(const QUuid &id, const QString &name);
    Q_INVOKABLE void deleteMacro(const QUuid &id);
    /// A pause that isn't finite changes nothing: no file could hold it.
    Q_INVOKABLE void updateStep(const QUuid &macroID, const QUuid &stepID,
                                const tessara::MacroStep::Kind &newKind);
    Q_INVOKABLE void deleteStep(const QUuid &macroID, const QUuid &stepID);
    Q_INVOKABLE void save();
    /// Nothing when a pause is not finite.
    Q_INVOKABLE std::optional<QByteArray> exportJSON() const;
    /// Adds the file's macros under new ids; the number of them, 0 for a file that can't be read.
    Q_INVOKABLE qsizetype importMacros(const QByteArray &data);

signals:
    void macrosChanged();
    void isRecordingChanged();
    void recordingStepsChanged();
    void isRunningChanged();
    void logChanged();
    /// Told anew with every failure, be it the same.
    void lastErrorMessageChanged();

private:
    void load();
    tl::expected<void, QString> setAside();
    tl::expected<void, QString> store();
    void saveChange();
    void tell(const std::optional<QString> &message);
    Macro *macro(const QUuid &id);
    void trimLog();
    void appendToLog(const MacroStep &step, const QString &detail, bool isRecorded);
    void appendStep(const MacroStep &step);
    Task play(Macro macro);
    void playStep(const MacroStep::Kind &kind);
    void checkScheduledMacros(const QString &time);
    void fire(const Macro &macro);
    void logMissedFiring(const Macro &macro, const QString &reason);
    void finishRunning();

    Clock &m_clock;
    Settings &m_settings;
    QPointer<CanvasDocument> m_currentDocument;
    QList<Macro> m_macros;
    bool m_isRecording = false;
    QList<MacroStep> m_recordingSteps;
    QList<MacroLogEntry> m_log;
    std::optional<QString> m_lastErrorMessage;
    bool m_isSaveFailing = false;
    QJsonValue m_unreadable = QJsonValue::Undefined; // what is still to be set aside
    std::optional<QUuid> m_runningMacroID;
    Task m_runningTask;
    MacroSchedule m_schedule;
};

} // namespace tessara
