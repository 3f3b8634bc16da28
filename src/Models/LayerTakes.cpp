#include "Models/LayerTakes.h"

#include "Models/CanvasDocument.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr double shortestRamp = 0.02; // s; anything shorter is a cut
constexpr double leastDelay = 0.0001; // s
// Written at this rate whatever the output's: every frame reads the newest value.
constexpr int rampStepsPerSecond = 60;

double unit(double value)
{
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

double limitedSeconds(double seconds, double longest)
{
    return std::isfinite(seconds) ? std::clamp(seconds, 0.0, longest) : 0;
}

} // namespace

LayerTakes::LayerTakes(CanvasDocument &document, Clock &clock)
    : m_document(document)
    , m_clock(clock)
{
}

void LayerTakes::setupLayer(const QUuid &id, bool isHidden)
{
    if (!m_runSettings.contains(id))
        setRunSettings(id, {});
    if (!m_visibility.contains(id))
        setVisibility(id, isHidden ? 0 : 1);
}

void LayerTakes::removeLayer(const QUuid &id)
{
    cancelTransition(id);
    cancelAutoOut(id);
    if (m_runSettings.remove(id) > 0)
        emit m_document.layerRunSettingsChanged();
    if (m_visibility.remove(id) > 0)
        emit m_document.layerVisibilityChanged();
}

void LayerTakes::setLayerOnAir(const QUuid &id, bool onAir, TakeOptions options)
{
    if (!m_document.layerItem(id))
        return;
    cancelAutoOut(id);
    cancelTransition(id);
    const Transition transition = transitionFor(id, options.useRunTransition);
    if (options.useRunTransition && options.initialDelay.count() > leastDelay)
        m_transitionTasks[id] = delayedTransition(id, onAir, transition, options.initialDelay);
    else
        runTransition(id, onAir, transition);
}

void LayerTakes::cancelAutoOut(const QUuid &id)
{
    m_autoOutTasks.erase(id);
}

void LayerTakes::cancelTransition(const QUuid &id)
{
    m_transitionTasks.erase(id);
}

LayerTakes::Transition LayerTakes::transitionFor(const QUuid &id, bool useRunTransition) const
{
    if (!useRunTransition)
        return {};
    const LayerRunSettings settings = runSettings(id);
    return {settings.transitionStyle, limitedSeconds(settings.dissolveDuration, longestDissolve)};
}

void LayerTakes::runTransition(const QUuid &id, bool onAir, Transition transition)
{
    const bool isAnimated =
        transition.style != LayerRunTransitionStyle::cut && transition.duration >= shortestRamp;
    if (isAnimated) {
        onAir ? takeIn(id, transition.duration) : takeOut(id, transition.duration);
        return;
    }
    m_document.applyLayerHiddenState(id, !onAir);
    setVisibility(id, onAir ? 1 : 0);
    if (onAir)
        scheduleAutoOutIfNeeded(id);
}

void LayerTakes::takeIn(const QUuid &id, double duration)
{
    m_document.applyLayerHiddenState(id, false);
    m_transitionTasks[id] =
        ramp(id, rampStart(id), 1, duration, [this, id] { scheduleAutoOutIfNeeded(id); });
}

void LayerTakes::takeOut(const QUuid &id, double duration)
{
    const std::optional<CanvasLayerItem> item = m_document.layerItem(id);
    const double from = rampStart(id);
    if (!item || layerOf(*item)->isHidden() || from <= leastVisibility) {
        finishTakeOut(id);
        return;
    }
    m_transitionTasks[id] = ramp(id, from, 0, duration, [this, id] { finishTakeOut(id); });
}

void LayerTakes::finishTakeOut(const QUuid &id)
{
    m_document.applyLayerHiddenState(id, true);
    setVisibility(id, 0);
}

double LayerTakes::rampStart(const QUuid &id) const
{
    return unit(m_visibility.value(id, 1));
}

Task LayerTakes::delayedTransition(QUuid id, bool onAir, Transition transition, Seconds delay)
{
    const bool slept = co_await m_clock.sleep(delay);
    if (!slept)
        co_return;
    cancelTransition(id); // this very task makes room for the ramp
    runTransition(id, onAir, transition);
}

Task LayerTakes::ramp(QUuid id, double from, double to, double duration,
                      std::function<void()> completion)
{
    const bool started = co_await m_clock.nextTurn();
    if (!started)
        co_return;
    const double length = std::max(duration, shortestRamp);
    const int steps = std::max(1, int(std::lround(length * rampStepsPerSecond)));
    const Nanoseconds pause{std::int64_t(length / steps * 1e9)};
    for (int step = 1; step <= steps; ++step) {
        setVisibility(id, unit(from + (to - from) * (double(step) / steps)));
        if (step == steps)
            break;
        const bool slept = co_await m_clock.sleep(pause);
        if (!slept)
            co_return;
    }
    setVisibility(id, unit(to));
    cancelTransition(id); // this very task
    completion();
}

void LayerTakes::scheduleAutoOutIfNeeded(const QUuid &id)
{
    const double seconds = limitedSeconds(runSettings(id).autoOutDuration, longestAutoOut);
    if (seconds == 0)
        return;
    m_autoOutTasks[id] = autoOut(id, Seconds{seconds});
}

Task LayerTakes::autoOut(QUuid id, Seconds delay)
{
    const bool slept = co_await m_clock.sleep(delay);
    if (!slept)
        co_return;
    setLayerOnAir(id, false);
}

void LayerTakes::setRunSettings(const QUuid &id, const LayerRunSettings &settings)
{
    if (m_runSettings.contains(id) && m_runSettings.value(id) == settings)
        return;
    m_runSettings[id] = settings;
    emit m_document.layerRunSettingsChanged();
}

void LayerTakes::setTransitionStyle(const QUuid &id, LayerRunTransitionStyle style)
{
    LayerRunSettings settings = runSettings(id);
    settings.transitionStyle = style;
    setRunSettings(id, settings);
}

void LayerTakes::setDissolveDuration(const QUuid &id, double seconds)
{
    LayerRunSettings settings = runSettings(id);
    settings.dissolveDuration = limitedSeconds(seconds, longestDissolve);
    setRunSettings(id, settings);
}

void LayerTakes::setAutoOutDuration(const QUuid &id, double seconds)
{
    LayerRunSettings settings = runSettings(id);
    settings.autoOutDuration = limitedSeconds(seconds, longestAutoOut);
    setRunSettings(id, settings);
    if (settings.autoOutDuration == 0)
        cancelAutoOut(id);
}

void LayerTakes::setVisibility(const QUuid &id, double value)
{
    const auto entry = m_visibility.find(id);
    if (entry == m_visibility.end())
        m_visibility.insert(id, value);
    else if (!replaceValue(*entry, value))
        return;
    emit m_document.visibilityChanged(id);
    emit m_document.layerVisibilityChanged();
}

void LayerTakes::replaceVisibility(const QMap<QUuid, double> &visibility)
{
    const QMap<QUuid, double> old = std::exchange(m_visibility, visibility);
    if (old == visibility)
        return;
    for (const QUuid &id : m_document.layerOrder())
        emit m_document.visibilityChanged(id);
    emit m_document.layerVisibilityChanged();
}

void LayerTakes::replaceRunSettings(const QMap<QUuid, LayerRunSettings> &settings)
{
    if (replaceValue(m_runSettings, settings))
        emit m_document.layerRunSettingsChanged();
}

double LayerTakes::effectiveVisibility(const QUuid &id, bool isHidden) const
{
    return unit(m_visibility.value(id, isHidden ? 0 : 1));
}

QSizeF LayerTakes::effectiveTransitionOffset(const QUuid &id, bool isHidden) const
{
    const std::optional<CanvasLayerItem> item = m_document.layerItem(id);
    if (!item || runSettings(id).transitionStyle != LayerRunTransitionStyle::presetReveal)
        return {0, 0};
    constexpr double leastSlide = 0.0001;
    const double part = 1 - effectiveVisibility(id, isHidden);
    if (part <= leastSlide)
        return {0, 0};
    const QRectF frame = m_document.layerFrame(*item);
    const QSizeF canvas = m_document.size();
    const double dx = std::clamp(0.26 * frame.width(), 32.0, 140.0) * part;
    const double dy = std::clamp(0.24 * frame.height(), 18.0, 90.0) * part;
    if (frame.center().x() < 0.4 * canvas.width())
        return {-dx, 0};
    if (frame.center().x() > 0.6 * canvas.width())
        return {dx, 0};
    return {0, frame.center().y() > 0.55 * canvas.height() ? dy : -dy};
}

bool LayerTakes::isOnAir(const QUuid &id) const
{
    const std::optional<CanvasLayerItem> item = m_document.layerItem(id);
    return item && !layerOf(*item)->isHidden() && effectiveVisibility(id, false) > leastVisibility;
}

bool LayerTakes::standsOnAir(const QUuid &id) const
{
    return isOnAir(id) && !isInTransition(id) && !isAutoOutPending(id);
}

} // namespace tessara
