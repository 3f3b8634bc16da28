// The take engine: moves one layer on or off air.
#pragma once

#include <QMap>
#include <QSizeF>
#include <QUuid>

#include "Base/Clock.h"
#include "Models/LayerRunSettings.h"

#include <functional>
#include <map>

namespace tessara {

class CanvasDocument;

struct TakeOptions
{
    bool useRunTransition = true; // else a cut, whatever the layer's settings are
    Seconds initialDelay{0};
};

/// Two values a layer tell where it stands: its `isHidden`, the state once a take is complete, and
/// its visibility of 0 to 1, which a running take moves. A new command goes on from the present
/// value.
class LayerTakes
{
public:
    static constexpr double longestDissolve = 8;  // s
    static constexpr double longestAutoOut = 600; // s
    /// At or below it a layer counts as gone, and isn't drawn.
    static constexpr double leastVisibility = 0.001;

    LayerTakes(CanvasDocument &document, Clock &clock);

    /// Gives a new layer its settings and its visibility, unless the id has some already.
    void setupLayer(const QUuid &id, bool isHidden);
    /// Forgets the id and ends its tasks.
    void removeLayer(const QUuid &id);

    void setLayerOnAir(const QUuid &id, bool onAir, TakeOptions options = {});
    void cancelAutoOut(const QUuid &id);
    void cancelTransition(const QUuid &id);
    bool isInTransition(const QUuid &id) const { return m_transitionTasks.contains(id); }
    bool isAutoOutPending(const QUuid &id) const { return m_autoOutTasks.contains(id); }

    const QMap<QUuid, LayerRunSettings> &runSettings() const { return m_runSettings; }
    LayerRunSettings runSettings(const QUuid &id) const { return m_runSettings.value(id); }
    void setRunSettings(const QUuid &id, const LayerRunSettings &settings);
    void setTransitionStyle(const QUuid &id, LayerRunTransitionStyle style);
    void setDissolveDuration(const QUuid &id, double seconds);
    void setAutoOutDuration(const QUuid &id, double seconds);

    const QMap<QUuid, double> &visibility() const { return m_visibility; }
    /// These write past the engine, as scripts and tests may; a running take writes over it.
    void setVisibility(const QUuid &id, double value);
    void replaceVisibility(const QMap<QUuid, double> &visibility);
    void replaceRunSettings(const QMap<QUuid, LayerRunSettings> &settings);
    /// 0 to 1.
    double effectiveVisibility(const QUuid &id, bool isHidden) const;
    /// How far a preset reveal has still to slide, y downward, in canvas units.
    QSizeF effectiveTransitionOffset(const QUuid &id, bool isHidden) const;
    /// Not hidden, and more than a trace of it to be seen.
    bool isOnAir(const QUuid &id) const;
    /// On air, with nothing under way that would change it.
    bool standsOnAir(const QUuid &id) const;

private:
    struct Transition
    {
        LayerRunTransitionStyle style = LayerRunTransitionStyle::cut;
        double duration = 0; // s
    };

    Transition transitionFor(const QUuid &id, bool useRunTransition) const;
    void runTransition(const QUuid &id, bool onAir, Transition transition);
    void takeIn(const QUuid &id, double duration);
    void takeOut(const QUuid &id, double duration);
    void finishTakeOut(const QUuid &id);
    double rampStart(const QUuid &id) const;
    void scheduleAutoOutIfNeeded(const QUuid &id);

    Task delayedTransition(QUuid id, bool onAir, Transition transition, Seconds delay);
    Task ramp(QUuid id, double from, double to, double duration, std::function<void()> completion);
    Task autoOut(QUuid id, Seconds delay);

    CanvasDocument &m_document;
    Clock &m_clock;
    QMap<QUuid, LayerRunSettings> m_runSettings;
    QMap<QUuid, double> m_visibility;
    // Last, so that they end before what they write.
    std::map<QUuid, Task> m_autoOutTasks;
    std::map<QUuid, Task> m_transitionTasks;
};

} // namespace tessara
