// The observable face of one output: the lists, the operator's selection, and what went wrong.
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

#include "DeckLink/DeckLinkBridge.h"
#include "DeckLink/DeckLinkFrameBuffer.h"
#include "DeckLink/DeckLinkModels.h"

namespace tessara {

class DeckLinkManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool sdkAvailable READ sdkAvailable NOTIFY sdkAvailableChanged FINAL)
    Q_PROPERTY(QList<tessara::DeckLinkDevice> devices READ devices NOTIFY devicesChanged FINAL)
    Q_PROPERTY(std::optional<int> selectedDeviceIndex READ selectedDeviceIndex WRITE
                   setSelectedDeviceIndex NOTIFY selectedDeviceIndexChanged FINAL)
    Q_PROPERTY(QList<tessara::DeckLinkDisplayMode> modes READ modes NOTIFY modesChanged FINAL)
    Q_PROPERTY(std::optional<qint64> selectedModeID READ selectedModeID WRITE setSelectedModeID
                   NOTIFY selectedModeIDChanged FINAL)
    Q_PROPERTY(std::optional<tessara::DeckLinkDisplayMode> selectedMode READ selectedMode NOTIFY
                   selectedModeChanged FINAL)
    Q_PROPERTY(bool isOutputRunning READ isOutputRunning NOTIFY isOutputRunningChanged FINAL)
    Q_PROPERTY(
        std::optional<QString> statusMessage READ statusMessage NOTIFY statusMessageChanged FINAL)
    Q_PROPERTY(std::optional<QString> lastErrorMessage READ lastErrorMessage NOTIFY
                   lastErrorMessageChanged FINAL)

public:
    /// Lists the devices at once.
    explicit DeckLinkManager(QObject *parent = nullptr);

    bool sdkAvailable() const { return m_sdkAvailable; }
    const QList<DeckLinkDevice> &devices() const { return m_devices; }
    std::optional<int> selectedDeviceIndex() const { return m_selectedDeviceIndex; }
    const QList<DeckLinkDisplayMode> &modes() const { return m_modes; }
    std::optional<qint64> selectedModeID() const { return m_selectedModeID; }
    /// The listed mode that is selected, if it is in the list.
    std::optional<DeckLinkDisplayMode> selectedMode() const;
    bool isOutputRunning() const { return m_isOutputRunning; }
    /// The calm line of the status bar.
    const std::optional<QString> &statusMessage() const { return m_statusMessage; }
    /// The red line of the status bar.
    const std::optional<QString> &lastErrorMessage() const { return m_lastErrorMessage; }

    Q_INVOKABLE void refreshDevices();
    Q_INVOKABLE void refreshModes();
    Q_INVOKABLE bool startOutput(tessara::DeckLinkStartMode mode);
    Q_INVOKABLE void stopOutput();
    /// False when there is no output, or with the reason in `lastErrorMessage`.
    bool sendFrame(const DeckLinkFrameBuffer &frame);
    /// How the running device takes its frames; the reason in `lastErrorMessage` where it can't be
    /// told.
    std::optional<DeckLinkBridge::FrameLayout> frameLayout(int width);
    /// The same for rows in the device's own layout.
    bool sendDeviceFrame(const FrameBytes &data, int width, int height);

public slots:
    /// Another device brings its own modes.
    void setSelectedDeviceIndex(std::optional<int> index);
    void setSelectedModeID(std::optional<qint64> modeID);

signals:
    void sdkAvailableChanged();
    void devicesChanged();
    void selectedDeviceIndexChanged();
    void modesChanged();
    void selectedModeIDChanged();
    void selectedModeChanged();
    void isOutputRunningChanged();
    void statusMessageChanged();
    void lastErrorMessageChanged();
    /// After any of the above.
    void changed();

private:
    using Notice = void (DeckLinkManager::*)();
    template <typename Value>
    void store(Value &field, const Value &value, Notice notice);
    void notify(Notice notice);
    void storeDevices(const QList<DeckLinkDevice> &devices);
    void storeModes(const QList<DeckLinkDisplayMode> &modes);
    void setStatusMessage(const std::optional<QString> &message);
    void setLastErrorMessage(const std::optional<QString> &message);
    void setOutputRunning(bool isRunning);
    void showNoOutput(const QString &reason);
    bool refuse(const QString &reason);
    bool accept(const DeckLinkBridge::Result &sent);

    DeckLinkBridge m_bridge;
    bool m_sdkAvailable = false;
    QList<DeckLinkDevice> m_devices;
    std::optional<int> m_selectedDeviceIndex;
    QList<DeckLinkDisplayMode> m_modes;
    std::optional<qint64> m_selectedModeID;
    bool m_isOutputRunning = false;
    std::optional<QString> m_statusMessage;
    std::optional<QString> m_lastErrorMessage;
};

} // namespace tessara
