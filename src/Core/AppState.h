// The application's one long-lived object.
#pragma once

#include "Core/DeckLinkOutputRouting.h"
#include "Core/Macros/MacroManager.h"
#include "Core/Macros/MacroRecorder.h"
#include "Core/OutputLoop.h"
#include "Core/Presets/PresetLibrary.h"
#include "Core/RealtimeClock.h"
#include "DeckLink/DeckLinkManager.h"
#include "Models/CanvasDocument.h"
#include "Models/DocumentHistory.h"
#include "Models/Runlist.h"
#include "Rendering/FramePath/FramePath.h"

#include "Base/ApplicationSupport.h"
#include "Base/Settings.h"

namespace tessara {

/// Owns the document, the outputs and what keeps them going. Windows, scripts and tests drive the
/// application through it.
class AppState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tessara::CanvasDocument *document READ document CONSTANT FINAL)
    Q_PROPERTY(tessara::Runlist *runlist READ runlist CONSTANT FINAL)
    Q_PROPERTY(tessara::MacroManager *macros READ macros CONSTANT FINAL)
    Q_PROPERTY(tessara::UndoStack *undoStack READ undoStack CONSTANT FINAL)
    Q_PROPERTY(tessara::DeckLinkManager *deckLinkManager READ deckLinkManager CONSTANT FINAL)
    Q_PROPERTY(tessara::DeckLinkManager *deckLinkKeyManager READ deckLinkKeyManager CONSTANT FINAL)
    Q_PROPERTY(tessara::OutputRouting::DeckLinkOutputRouting deckLinkOutputRouting READ
                   deckLinkOutputRouting WRITE setDeckLinkOutputRouting NOTIFY
                       deckLinkOutputRoutingChanged FINAL)
    Q_PROPERTY(bool isDeckLinkOutputRunning READ isDeckLinkOutputRunning NOTIFY outputChanged FINAL)
    Q_PROPERTY(bool canStartDeckLinkOutputFromConfig READ canStartDeckLinkOutputFromConfig NOTIFY
                   outputChanged FINAL)
    Q_PROPERTY(bool isKeyModeReady READ isKeyModeReady NOTIFY outputChanged FINAL)
    Q_PROPERTY(
        std::optional<QString> keyModeStatusText READ keyModeStatusText NOTIFY outputChanged FINAL)
    /// Ticks of the running output that the main thread was too busy to take.
    Q_PROPERTY(quint64 missedTicks READ missedTicks FINAL)
    // The presets; every change of one list is told as a change of all.
    Q_PROPERTY(QList<tessara::TextPreset> userTextPresets READ userTextPresets NOTIFY
                   userTextPresetsChanged FINAL)
    Q_PROPERTY(QList<tessara::TextPreset> systemPresets READ systemPresets NOTIFY
                   userTextPresetsChanged FINAL)
    Q_PROPERTY(QList<tessara::TextPreset> visibleUserTextPresets READ visibleUserTextPresets NOTIFY
                   userTextPresetsChanged FINAL)
    /// Kept for scripts and logs; the windows show the managers' own messages.
    TESSARA_OBSERVABLE(std::optional<QString>, lastErrorMessage, setLastErrorMessage)
    TESSARA_OBSERVABLE(std::optional<QUrl>, lastExportURL, setLastExportURL)

public:
    AppState(Clock &clock, const ApplicationSupport &support,
             const BuiltInPresets &builtInPresets = BuiltInPresets());
    ~AppState() override;

    CanvasDocument *document() { return &m_document; }
    const CanvasDocument *document() const { return &m_document; }
    Runlist *runlist() { return &m_runlist; }
    MacroManager *macros() { return &m_macros; }
    UndoStack *undoStack() { return &m_history.undoStack(); }
    DeckLinkManager *deckLinkManager() { return &m_fill; }
    DeckLinkManager *deckLinkKeyManager() { return &m_key; }
    Clock &clock() { return m_clock; }
    Settings &settings() { return m_settings; }

    DeckLinkOutputRouting deckLinkOutputRouting() const { return m_routing; }
    /// A change stops a running output, and never starts one.
    void setDeckLinkOutputRouting(DeckLinkOutputRouting routing);

    bool isDeckLinkOutputRunning() const;
    bool canStartDeckLinkOutputFromConfig() const;
    bool isKeyModeReady() const;
    std::optional<QString> keyModeStatusText() const;

    /// A failure leaves its text in `lastErrorMessage`, and the output stopped.
    Q_INVOKABLE void startDeckLinkOutput();
    Q_INVOKABLE void stopDeckLinkOutput();
    /// Lists the devices of both managers anew.
    Q_INVOKABLE void refreshDeckLinkDevices();
    Q_INVOKABLE void ensureDistinctKeyDeviceSelection();
    Q_INVOKABLE void syncKeyModeWithFillMode();

    /// A text layer that shows the time of day.
    Q_INVOKABLE tessara::TextLayer *addTimerLayer();
    Q_INVOKABLE void updateRealtimeTimerText();

    const TemplatePresetStore &templatePresetStore() const { return m_presets.store(); }
    const QList<TextPreset> &userTextPresets() const { return m_presets.userTextPresets(); }
    QList<TextPreset> systemPresets() const { return m_presets.systemPresets(); }
    QList<TextPreset> visibleUserTextPresets() const { return m_presets.visibleUserTextPresets(); }
    // Success clears `lastExportURL` and `lastErrorMessage`, a failure leaves its text there.
    Q_INVOKABLE void saveTemplatePreset(const tessara::TextPreset &preset);
    Q_INVOKABLE void deleteUserPreset(const tessara::TextPreset &preset);
    /// Decodes the pictures of the presets ahead, the user's own first, so that applying one on air
    /// costs no frame.
    Q_INVOKABLE void prefetchPresets();
    /// Adds the layers of the preset of that id, the user's own or a built-in one. A failure leaves
    /// its text in `lastErrorMessage`.
    Q_INVOKABLE void applyPreset(const QString &id);
    void applyPreset(const TextPreset &preset);
    /// Saves the content of a document as a preset, under an id of its own or over the preset with
    /// the given one. A blank name saves nothing.
    Q_INVOKABLE void snapshotDocument(tessara::CanvasDocument *document, const QString &name,
                                      const std::optional<QString> &existingID);
    /// Of the application's own document.
    Q_INVOKABLE void snapshotDocument(const QString &name,
                                      const std::optional<QString> &existingID);

    quint64 missedTicks() const { return m_outputLoop ? m_outputLoop->missedTicks() : 0; }
    /// Null while the output is stopped.
    const OutputLoop *outputLoop() const { return m_outputLoop.get(); }

signals:
    void deckLinkOutputRoutingChanged();
    /// A device, a mode, a message or the state of the output has changed.
    void outputChanged();
    void userTextPresetsChanged();

private:
    /// What a device takes of each frame, and how it is handed over.
    struct DeviceFrames
    {
        DeckLinkManager &manager;
        FrameTarget target;
        bool isInDeviceLayout = true;
    };
    using Outcome = tl::expected<void, QString>;

    void report(const Outcome &outcome);
    void followMacroErrors();
    void watchManagers();
    Outcome startManagers();
    Outcome startKeyAndFill();
    double outputRate() const;
    void sendCurrentFrameToDeckLink();
    Outcome sendFrames(const DeckLinkDisplayMode &mode);
    Outcome display(std::span<const DeviceFrames> devices, const FramePath::Frames &frames);
    tl::expected<DeviceFrames, QString> keyFrames();
    static tl::expected<DeviceFrames, QString>
    framesFor(DeckLinkManager &manager, const DeckLinkDisplayMode &mode, FrameContent content);
    tl::expected<FramePath::Frames, QString> compose(std::span<const DeviceFrames> devices);
    void stopAfter(const QString &message);

    Clock &m_clock;
    Settings m_settings;
    CanvasDocument m_document;
    Runlist m_runlist{m_document};
    MacroManager m_macros;
    std::optional<QString> m_macroError; // told last
    MacroRecorder m_macroRecorder;
    DocumentHistory m_history;
    PresetLibrary m_presets;
    FramePath m_framePath;
    DeckLinkManager m_fill;
    DeckLinkManager m_key;
    DeckLinkOutputRouting m_routing = DeckLinkOutputRouting::fillOnly;
    bool m_isSendingFrame = false;
    RealtimeClock m_realtimeClock;
    std::unique_ptr<OutputLoop> m_outputLoop;
};

} // namespace tessara
