#include "DeckLink/DeckLinkManager.h"

#include <algorithm>

#include "DeckLink/DeckLinkAPIDispatch.h"

namespace tessara {
namespace {

template <typename List, typename Identifier, typename Field>
auto entryWith(const List &list, const std::optional<Identifier> &identifier, Field field)
{
    return identifier ? std::ranges::find(list, *identifier, field) : list.end();
}

std::optional<qint64> defaultModeID(const QList<DeckLinkDisplayMode> &modes)
{
    if (modes.isEmpty())
        return std::nullopt;
    const auto preferred = std::ranges::find_if(modes, &DeckLinkDisplayMode::isPreferred);
    return preferred != modes.end() ? preferred->modeID : modes.first().modeID;
}

} // namespace

DeckLinkManager::DeckLinkManager(QObject *parent)
    : QObject(parent)
{
    refreshDevices();
}

std::optional<DeckLinkDisplayMode> DeckLinkManager::selectedMode() const
{
    const auto entry = entryWith(m_modes, m_selectedModeID, &DeckLinkDisplayMode::modeID);
    return entry != m_modes.end() ? std::optional(*entry) : std::nullopt;
}

void DeckLinkManager::refreshDevices()
{
    const bool isTooOld = deckLinkDriverState() == DeckLinkDriverState::tooOld;
    store(m_sdkAvailable, !isTooOld && m_bridge.isSDKAvailable(),
          &DeckLinkManager::sdkAvailableChanged);
    if (!m_sdkAvailable) {
        storeDevices({});
        showNoOutput(isTooOld ? deckLinkDriverTooOldText()
                              : QStringLiteral("DeckLink SDK unavailable"));
        return;
    }
    QList<DeckLinkDevice> devices;
    for (const DeckLinkDeviceInfo &info : m_bridge.deviceInfos())
        devices.append({info.index, info.displayName});
    storeDevices(devices);
    if (m_devices.isEmpty())
        return showNoOutput(QStringLiteral("No DeckLink devices found"));
    if (entryWith(m_devices, m_selectedDeviceIndex, &DeckLinkDevice::index) != m_devices.end())
        refreshModes();
    else
        setSelectedDeviceIndex(m_devices.first().index);
    setLastErrorMessage(std::nullopt);
}

void DeckLinkManager::showNoOutput(const QString &reason)
{
    setSelectedDeviceIndex(std::nullopt);
    storeModes({});
    setSelectedModeID(std::nullopt);
    setOutputRunning(false);
    setStatusMessage(reason);
    setLastErrorMessage(std::nullopt);
}

void DeckLinkManager::refreshModes()
{
    if (!m_sdkAvailable || !m_selectedDeviceIndex) {
        storeModes({});
        setSelectedModeID(std::nullopt);
        return;
    }
    QList<DeckLinkDisplayMode> modes;
    for (const DeckLinkDisplayModeInfo &info :
         m_bridge.displayModesForDeviceAtIndex(*m_selectedDeviceIndex))
        modes.append(
            {info.modeID, info.name, info.width, info.height, info.frameDuration, info.timeScale});
    // Within a score the driver's order stays.
    std::ranges::stable_sort(modes, {}, &DeckLinkDisplayMode::modeScore);
    storeModes(modes);
    if (!selectedMode())
        setSelectedModeID(defaultModeID(m_modes));
    setStatusMessage(m_modes.isEmpty() ? std::optional(QStringLiteral("No output modes available"))
                                       : std::nullopt);
}

bool DeckLinkManager::startOutput(DeckLinkStartMode mode)
{
    if (!m_sdkAvailable)
        return refuse(QStringLiteral("DeckLink SDK is not available"));
    if (!m_selectedDeviceIndex)
        return refuse(QStringLiteral("Select a DeckLink device"));
    const std::optional<DeckLinkDisplayMode> displayMode = selectedMode();
    if (!displayMode)
        return refuse(QStringLiteral("Select an output mode"));
    const DeckLinkBridge::Result started = m_bridge.startOutputForDeviceAtIndex(
        *m_selectedDeviceIndex, displayMode->modeID, mode == DeckLinkStartMode::externalKeying);
    setOutputRunning(started.has_value());
    if (!started) {
        setStatusMessage(std::nullopt);
        return refuse(started.error().isEmpty() ? QStringLiteral("Could not start output")
                                                : started.error());
    }
    setStatusMessage(QStringLiteral("Output started"));
    setLastErrorMessage(std::nullopt);
    return true;
}

bool DeckLinkManager::refuse(const QString &reason)
{
    setLastErrorMessage(reason);
    return false;
}

void DeckLinkManager::stopOutput()
{
    m_bridge.stopOutput();
    setOutputRunning(false);
    setStatusMessage(QStringLiteral("Output stopped"));
}

bool DeckLinkManager::sendFrame(const DeckLinkFrameBuffer &frame)
{
    if (!m_isOutputRunning)
        return false;
    return accept(m_bridge.sendFrameBGRA(frame.data, frame.width, frame.height, frame.rowBytes));
}

std::optional<DeckLinkBridge::FrameLayout> DeckLinkManager::frameLayout(int width)
{
    if (!m_isOutputRunning)
        return std::nullopt;
    const auto layout = m_bridge.frameLayout(width);
    if (layout)
        return *layout;
    refuse(layout.error());
    return std::nullopt;
}

bool DeckLinkManager::sendDeviceFrame(const FrameBytes &data, int width, int height)
{
    return m_isOutputRunning && accept(m_bridge.sendDeviceFrame(data, width, height));
}

bool DeckLinkManager::accept(const DeckLinkBridge::Result &sent)
{
    if (sent)
        return true;
    // A failing device doesn't tell the same again with every frame.
    return refuse(sent.error().isEmpty() ? QStringLiteral("Could not send video frame")
                                         : sent.error());
}

void DeckLinkManager::setSelectedDeviceIndex(std::optional<int> index)
{
    if (m_selectedDeviceIndex == index)
        return;
    store(m_selectedDeviceIndex, index, &DeckLinkManager::selectedDeviceIndexChanged);
    refreshModes();
}

void DeckLinkManager::setSelectedModeID(std::optional<qint64> modeID)
{
    const std::optional<DeckLinkDisplayMode> before = selectedMode();
    store(m_selectedModeID, modeID, &DeckLinkManager::selectedModeIDChanged);
    if (selectedMode() != before)
        notify(&DeckLinkManager::selectedModeChanged);
}

void DeckLinkManager::storeModes(const QList<DeckLinkDisplayMode> &modes)
{
    const std::optional<DeckLinkDisplayMode> before = selectedMode();
    store(m_modes, modes, &DeckLinkManager::modesChanged);
    if (selectedMode() != before)
        notify(&DeckLinkManager::selectedModeChanged);
}

void DeckLinkManager::storeDevices(const QList<DeckLinkDevice> &devices)
{
    // Devices compare by index alone, and a new name has to reach the menu as well.
    if (std::ranges::equal(m_devices, devices, {}, &DeckLinkDevice::displayName,
                           &DeckLinkDevice::displayName))
        return;
    m_devices = devices;
    notify(&DeckLinkManager::devicesChanged);
}

void DeckLinkManager::setStatusMessage(const std::optional<QString> &message)
{
    store(m_statusMessage, message, &DeckLinkManager::statusMessageChanged);
}

void DeckLinkManager::setLastErrorMessage(const std::optional<QString> &message)
{
    store(m_lastErrorMessage, message, &DeckLinkManager::lastErrorMessageChanged);
}

void DeckLinkManager::setOutputRunning(bool isRunning)
{
    store(m_isOutputRunning, isRunning, &DeckLinkManager::isOutputRunningChanged);
}

template <typename Value>
void DeckLinkManager::store(Value &field, const Value &value, Notice notice)
{
    if (field == value)
        return;
    field = value;
    notify(notice);
}

void DeckLinkManager::notify(Notice notice)
{
    emit(this->*notice)();
    emit changed();
}

} // namespace tessara
