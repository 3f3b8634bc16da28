#include "UI/OutputModel.h"

#include "Base/RawString.h"
#include "Core/AppState.h"

#include <algorithm>

namespace tessara {

namespace {

QStringList deviceNames(const DeckLinkManager &manager)
{
    QStringList names;
    for (const DeckLinkDevice &device : manager.devices())
        names.append(device.displayName);
    return names;
}

int deviceRow(const DeckLinkManager &manager)
{
    const QList<DeckLinkDevice> &devices = manager.devices();
    const auto selected = std::find_if(devices.begin(), devices.end(), [&](const auto &device) {
        return device.index == manager.selectedDeviceIndex();
    });
    return selected == devices.end() ? -1 : int(selected - devices.begin());
}

void selectDevice(DeckLinkManager &manager, int row)
{
    if (row >= 0 && row < manager.devices().size())
        manager.setSelectedDeviceIndex(manager.devices()[row].index);
}

} // namespace

OutputModel::OutputModel(AppState &app)
    : m_app(app)
    , m_fill(*app.deckLinkManager())
    , m_key(*app.deckLinkKeyManager())
{
    connect(&app, &AppState::outputChanged, this, &OutputModel::changed);
}

bool OutputModel::sdkAvailable() const
{
    return m_fill.sdkAvailable();
}

bool OutputModel::isRunning() const
{
    return m_app.isDeckLinkOutputRunning();
}

bool OutputModel::canStart() const
{
    return m_app.canStartDeckLinkOutputFromConfig();
}

QStringList OutputModel::routingLabels() const
{
    QStringList labels;
    for (const DeckLinkOutputRouting routing : allCases<DeckLinkOutputRouting>())
        labels.append(label(routing));
    return labels;
}

int OutputModel::routing() const
{
    return int(m_app.deckLinkOutputRouting());
}

void OutputModel::setRouting(int row)
{
    const std::vector<DeckLinkOutputRouting> cases = allCases<DeckLinkOutputRouting>();
    if (row >= 0 && row < int(cases.size()))
        m_app.setDeckLinkOutputRouting(cases[std::size_t(row)]);
}

bool OutputModel::isGreenScreen() const
{
    return m_app.deckLinkOutputRouting() == DeckLinkOutputRouting::greenScreen;
}

bool OutputModel::isKeyAndFill() const
{
    return m_app.deckLinkOutputRouting() == DeckLinkOutputRouting::keyAndFill;
}

bool OutputModel::isKeyAndFillAB() const
{
    return m_app.deckLinkOutputRouting() == DeckLinkOutputRouting::keyAndFillAB;
}

QStringList OutputModel::fillDevices() const
{
    return deviceNames(m_fill);
}

int OutputModel::fillDevice() const
{
    return deviceRow(m_fill);
}

void OutputModel::setFillDevice(int row)
{
    selectDevice(m_fill, row);
}

QStringList OutputModel::modes() const
{
    QStringList labels;
    for (const DeckLinkDisplayMode &mode : m_fill.modes())
        labels.append(mode.displayLabel());
    return labels;
}

int OutputModel::mode() const
{
    const QList<DeckLinkDisplayMode> &modes = m_fill.modes();
    const auto selected = std::find_if(modes.begin(), modes.end(), [this](const auto &mode) {
        return mode.modeID == m_fill.selectedModeID();
    });
    return selected == modes.end() ? -1 : int(selected - modes.begin());
}

void OutputModel::setMode(int row)
{
    if (row >= 0 && row < m_fill.modes().size())
        m_fill.setSelectedModeID(m_fill.modes()[row].modeID);
}

QStringList OutputModel::keyDevices() const
{
    return deviceNames(m_key);
}

int OutputModel::keyDevice() const
{
    return deviceRow(m_key);
}

void OutputModel::setKeyDevice(int row)
{
    selectDevice(m_key, row);
}

bool OutputModel::isKeyModeReady() const
{
    return m_app.isKeyModeReady();
}

QString OutputModel::keyModeStatus() const
{
    return m_app.keyModeStatusText().value_or(QString());
}

QString OutputModel::statusMessage() const
{
    return m_fill.statusMessage().value_or(QString());
}

QString OutputModel::fillError() const
{
    return m_fill.lastErrorMessage().value_or(QString());
}

QString OutputModel::keyError() const
{
    return m_key.lastErrorMessage().value_or(QString());
}

void OutputModel::start()
{
    if (isRunning())
        stop();
    m_app.startDeckLinkOutput();
}

void OutputModel::stop()
{
    m_app.stopDeckLinkOutput();
}

void OutputModel::refresh()
{
    m_app.refreshDeckLinkDevices();
}

} // namespace tessara
