#include "Core/AppState.h"

#include "Core/KeyModeMatch.h"
#include "DeckLink/DeckLinkFrameBuffer.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr QSizeF defaultCanvasSize{1920, 1080};
const QColor chromaGreen(0, 177, 64);
constexpr double rateWithoutMode = 30; // frames a second

tl::expected<void, QString> started(DeckLinkManager &manager, DeckLinkStartMode mode)
{
    if (manager.startOutput(mode))
        return {};
    return tl::unexpected(manager.lastErrorMessage().value_or(QString()));
}

} // namespace

AppState::AppState(Clock &clock, const ApplicationSupport &support,
                   const BuiltInPresets &builtInPresets)
    : m_clock(clock)
    , m_settings(support.settingsFile())
    , m_document(clock, defaultCanvasSize)
    , m_macros(clock, m_settings, &m_document)
    , m_macroRecorder(m_macros, m_document, clock)
    , m_history(m_document, clock, [this] { return m_macros.isRunning(); })
    , m_presets(support, clock, builtInPresets)
    , m_realtimeClock(clock, m_document)
{
    watchManagers();
    setLastErrorMessage(m_settings.loadError());
    connect(&m_macros, &MacroManager::lastErrorMessageChanged, this, &AppState::followMacroErrors);
    followMacroErrors();
    connect(&m_presets, &PresetLibrary::userTextPresetsChanged, this,
            &AppState::userTextPresetsChanged);
    ensureDistinctKeyDeviceSelection();
    syncKeyModeWithFillMode();
    updateRealtimeTimerText();
}

AppState::~AppState()
{
    stopDeckLinkOutput();
}

void AppState::watchManagers()
{
    for (DeckLinkManager *manager : {&m_fill, &m_key}) {
        connect(manager, &DeckLinkManager::changed, this, &AppState::outputChanged);
        connect(manager, &DeckLinkManager::selectedDeviceIndexChanged, this, [this] {
            if (m_routing != DeckLinkOutputRouting::keyAndFill)
                return;
            ensureDistinctKeyDeviceSelection();
            syncKeyModeWithFillMode();
        });
    }
    connect(&m_fill, &DeckLinkManager::selectedModeIDChanged, this,
            &AppState::syncKeyModeWithFillMode);
}

void AppState::setDeckLinkOutputRouting(DeckLinkOutputRouting routing)
{
    if (m_routing == routing)
        return;
    m_routing = routing;
    if (isDeckLinkOutputRunning())
        stopDeckLinkOutput();
    if (routing == DeckLinkOutputRouting::keyAndFill) {
        ensureDistinctKeyDeviceSelection();
        syncKeyModeWithFillMode();
    }
    emit deckLinkOutputRoutingChanged();
    emit outputChanged();
}

bool AppState::isDeckLinkOutputRunning() const
{
    return m_fill.isOutputRunning() || m_key.isOutputRunning();
}

void AppState::startDeckLinkOutput()
{
    if (const tl::expected<void, QString> outputs = startManagers(); !outputs) {
        if (!isDeckLinkOutputRunning())
            m_outputLoop.reset(); // of an output that was to be started anew
        if (!outputs.error().isEmpty())
            setLastErrorMessage(outputs.error());
        return;
    }
    // What the first frames would take from the beats that follow.
    m_framePath.makeSprites(m_document);
    m_outputLoop.reset();
    sendCurrentFrameToDeckLink(); // the first frame doesn't wait for the first beat
    if (!isDeckLinkOutputRunning())
        return;
    m_framePath.makeFramesAhead();
    m_outputLoop = std::make_unique<OutputLoop>(m_clock, outputRate(),
                                                [this] { sendCurrentFrameToDeckLink(); });
    emit outputChanged();
}

tl::expected<void, QString> AppState::startManagers()
{
    switch (m_routing) {
    case DeckLinkOutputRouting::fillOnly:
    case DeckLinkOutputRouting::greenScreen:
        return started(m_fill, DeckLinkStartMode::standard);
    case DeckLinkOutputRouting::keyAndFillAB:
        return started(m_fill, DeckLinkStartMode::externalKeying);
    case DeckLinkOutputRouting::keyAndFill:
        return startKeyAndFill();
    }
    Q_UNREACHABLE();
}

tl::expected<void, QString> AppState::startKeyAndFill()
{
    ensureDistinctKeyDeviceSelection();
    if (!m_fill.selectedDeviceIndex() || !m_fill.selectedModeID())
        return tl::unexpected(QStringLiteral("Select Fill device and mode"));
    if (!m_key.selectedDeviceIndex())
        return tl::unexpected(QStringLiteral("Select Key device"));
    if (m_fill.selectedDeviceIndex() == m_key.selectedDeviceIndex())
        return tl::unexpected(QStringLiteral("Choose different devices for Fill and Key outputs"));
    syncKeyModeWithFillMode();
    if (!m_key.selectedModeID())
        return tl::unexpected(QStringLiteral("Selected Fill mode is unavailable on Key device"));
    tl::expected<void, QString> fill = started(m_fill, DeckLinkStartMode::standard);
    if (!fill)
        return fill;
    tl::expected<void, QString> key = started(m_key, DeckLinkStartMode::standard);
    if (!key)
        m_fill.stopOutput();
    return key;
}

void AppState::stopDeckLinkOutput()
{
    m_outputLoop.reset();
    m_fill.stopOutput();
    m_key.stopOutput();
    emit outputChanged();
}

double AppState::outputRate() const
{
    const auto rateOf = [](const DeckLinkManager &manager, double withoutMode) {
        const std::optional<DeckLinkDisplayMode> mode = manager.selectedMode();
        return mode ? mode->rate() : withoutMode;
    };
    const double fillRate = rateOf(m_fill, rateWithoutMode);
    if (m_routing != DeckLinkOutputRouting::keyAndFill)
        return fillRate;
    return std::min(fillRate, rateOf(m_key, fillRate));
}

void AppState::sendCurrentFrameToDeckLink()
{
    const std::optional<DeckLinkDisplayMode> mode = m_fill.selectedMode();
    if (!m_fill.isOutputRunning() || m_isSendingFrame || !mode)
        return;
    m_isSendingFrame = true;
    const Outcome outcome = sendFrames(*mode);
    m_isSendingFrame = false;
    if (!outcome)
        return stopAfter(outcome.error());
    m_framePath.prepareHidden();
}

void AppState::stopAfter(const QString &message)
{
    setLastErrorMessage(message);
    stopDeckLinkOutput(); // nothing restarts by itself
}

// One picture a beat, even for two devices. A key that fails ends the output, but the fill of its
// beat has gone out.
AppState::Outcome AppState::sendFrames(const DeckLinkDisplayMode &mode)
{
    const auto fill = framesFor(m_fill, mode,
                                m_routing == DeckLinkOutputRouting::keyAndFillAB
                                    ? FrameContent::fillWithMirroredAlpha
                                    : FrameContent::fill);
    if (!fill)
        return tl::unexpected(fill.error());
    std::vector<DeviceFrames> devices{*fill};
    Outcome keyOutcome;
    if (m_routing == DeckLinkOutputRouting::keyAndFill) {
        const auto key = keyFrames();
        if (key)
            devices.push_back(*key);
        else
            keyOutcome = tl::unexpected(key.error());
    }
    tl::expected<FramePath::Frames, QString> frames = compose(devices);
    if (!frames && devices.size() > 1) { // the fill alone may still have room
        keyOutcome = tl::unexpected(frames.error());
        devices.pop_back();
        frames = compose(devices);
    }
    if (!frames)
        return tl::unexpected(frames.error());
    const Outcome sent = display(devices, *frames);
    return sent ? keyOutcome : sent;
}

/// An output that fails without a word is no reason to stop.
AppState::Outcome AppState::display(std::span<const DeviceFrames> devices,
                                    const FramePath::Frames &frames)
{
    const Nanoseconds start = m_clock.now();
    for (std::size_t index = 0; index < devices.size(); ++index) {
        const auto &[manager, target, isInDeviceLayout] = devices[index];
        const QSize size = target.size;
        const FrameBytes &bytes = frames[index];
        const bool isSent =
            isInDeviceLayout
                ? manager.sendDeviceFrame(bytes, size.width(), size.height())
                : manager.sendFrame({bytes, size.width(), size.height(), int(target.rowBytes)});
        if (!isSent && manager.lastErrorMessage())
            return tl::unexpected(*manager.lastErrorMessage());
    }
    if (m_outputLoop)
        m_outputLoop->noteDisplay(m_clock.now() - start);
    return {};
}

tl::expected<AppState::DeviceFrames, QString> AppState::keyFrames()
{
    const std::optional<DeckLinkDisplayMode> mode = m_key.selectedMode();
    if (!m_key.isOutputRunning() || !mode)
        return tl::unexpected(QStringLiteral("Key output is not running"));
    return framesFor(m_key, *mode, FrameContent::key);
}

tl::expected<AppState::DeviceFrames, QString>
AppState::framesFor(DeckLinkManager &manager, const DeckLinkDisplayMode &mode, FrameContent content)
{
    if (mode.width < 1 || mode.height < 1)
        return tl::unexpected(text(DeckLinkFrameBufferError::contextCreationFailed));
    const std::optional<DeckLinkBridge::FrameLayout> layout = manager.frameLayout(mode.width);
    if (!layout)
        return tl::unexpected(manager.lastErrorMessage().value_or(QString()));
    const QSize size(mode.width, mode.height);
    if (layout->rowBytes >= rowBytesOf(layout->format, mode.width))
        return DeviceFrames{manager, {content, layout->format, size, layout->rowBytes}};
    // A device whose rows are too short for their pixels gets what fits.
    const qsizetype rowBytes = rowBytesOf(FrameFormat::bgra, mode.width);
    return DeviceFrames{manager, {content, FrameFormat::bgra, size, rowBytes}, false};
}

tl::expected<FramePath::Frames, QString> AppState::compose(std::span<const DeviceFrames> devices)
{
    const bool isGreen = m_routing == DeckLinkOutputRouting::greenScreen;
    std::array<FrameTarget, FramePath::mostTargets> targets;
    std::ranges::transform(devices, targets.begin(), &DeviceFrames::target);
    return m_framePath
        .render(m_document, isGreen ? std::optional(chromaGreen) : std::nullopt,
                std::span(targets).first(devices.size()))
        .map_error([](RenderEngineError error) { return text(error); });
}

void AppState::refreshDeckLinkDevices()
{
    m_fill.refreshDevices();
    m_key.refreshDevices();
    ensureDistinctKeyDeviceSelection();
    syncKeyModeWithFillMode();
}

void AppState::ensureDistinctKeyDeviceSelection()
{
    const std::optional<int> fill = m_fill.selectedDeviceIndex();
    const QList<DeckLinkDevice> devices = m_key.devices();
    if (!fill || devices.size() < 2 || m_key.selectedDeviceIndex() != fill)
        return;
    const auto other = std::find_if(devices.begin(), devices.end(),
                                    [&](const auto &device) { return device.index != *fill; });
    if (other != devices.end())
        m_key.setSelectedDeviceIndex(other->index);
}

void AppState::syncKeyModeWithFillMode()
{
    if (m_routing != DeckLinkOutputRouting::keyAndFill)
        return;
    const std::optional<DeckLinkDisplayMode> wanted = m_fill.selectedMode();
    const std::optional<DeckLinkDisplayMode> match =
        wanted ? matchingMode(m_key.modes(), *wanted) : std::nullopt;
    m_key.setSelectedModeID(match ? std::optional(match->modeID) : std::nullopt);
}

bool AppState::isKeyModeReady() const
{
    return m_routing != DeckLinkOutputRouting::keyAndFill || m_key.selectedModeID();
}

bool AppState::canStartDeckLinkOutputFromConfig() const
{
    if (!m_fill.sdkAvailable() || !m_fill.selectedDeviceIndex() || !m_fill.selectedModeID())
        return false;
    if (m_routing != DeckLinkOutputRouting::keyAndFill)
        return true;
    return m_key.sdkAvailable() && m_key.selectedDeviceIndex() && isKeyModeReady()
           && m_key.selectedDeviceIndex() != m_fill.selectedDeviceIndex();
}

std::optional<QString> AppState::keyModeStatusText() const
{
    if (m_routing != DeckLinkOutputRouting::keyAndFill)
        return std::nullopt;
    const std::optional<DeckLinkDisplayMode> fill = m_fill.selectedMode();
    if (!fill)
        return QStringLiteral("Select Fill mode first");
    if (const std::optional<DeckLinkDisplayMode> key = m_key.selectedMode())
        return QStringLiteral("Key mode follows Fill mode: ") + key->displayLabel();
    return QStringLiteral("Key device has no matching mode for %1x%2")
        .arg(fill->width)
        .arg(fill->height);
}

TextLayer *AppState::addTimerLayer()
{
    const qsizetype number = m_realtimeClock.clockLayerCount() + 1;
    auto *layer = new TextLayer(QUuid::createUuid(), QStringLiteral("Timer %1").arg(number),
                                m_realtimeClock.text());
    layer->setFontSize(96);
    layer->setFieldKey(QStringLiteral("realtime_timer_%1").arg(number));
    layer->setFieldKind(TemplateFieldKind::timer);
    m_document.addLayer(CanvasLayerItem(layer));
    updateRealtimeTimerText();
    report({});
    return layer;
}

void AppState::updateRealtimeTimerText()
{
    m_realtimeClock.update();
}

void AppState::saveTemplatePreset(const TextPreset &preset)
{
    report(m_presets.saveTemplatePreset(preset));
}

void AppState::deleteUserPreset(const TextPreset &preset)
{
    report(m_presets.deleteUserPreset(preset));
}

void AppState::prefetchPresets()
{
    for (const QList<TextPreset> &presets : {userTextPresets(), systemPresets()}) {
        for (const TextPreset &preset : presets)
            m_document.prefetchPictures(preset);
    }
}

void AppState::applyPreset(const QString &id)
{
    const auto applyFrom = [&](const QList<TextPreset> &presets) {
        const auto found = std::find_if(presets.begin(), presets.end(),
                                        [&](const TextPreset &preset) { return preset.id == id; });
        if (found == presets.end())
            return false;
        applyPreset(*found);
        return true;
    };
    if (!applyFrom(userTextPresets()))
        applyFrom(systemPresets());
}

void AppState::applyPreset(const TextPreset &preset)
{
    if (const auto applied = m_document.addTextPreset(preset); !applied)
        setLastErrorMessage(text(applied.error()));
}

void AppState::snapshotDocument(const QString &name, const std::optional<QString> &existingID)
{
    snapshotDocument(&m_document, name, existingID);
}

void AppState::snapshotDocument(CanvasDocument *document, const QString &name,
                                const std::optional<QString> &existingID)
{
    if (const auto preset = m_presets.snapshot(*document, name, existingID))
        saveTemplatePreset(*preset);
}

// A message of somebody else stays when the macros have none left.
void AppState::followMacroErrors()
{
    const std::optional<QString> before = std::exchange(m_macroError, m_macros.lastErrorMessage());
    if (m_macroError || lastErrorMessage() == before)
        setLastErrorMessage(m_macroError);
}

void AppState::report(const tl::expected<void, QString> &outcome)
{
    if (!outcome)
        return setLastErrorMessage(outcome.error());
    setLastExportURL(std::nullopt);
    setLastErrorMessage(std::nullopt);
}

} // namespace tessara
