// How one layer goes on and off air.
#pragma once

#include "Models/LayerEnums.h"

namespace tessara {

struct LayerRunSettings
{
    Q_GADGET
    Q_PROPERTY(tessara::LayerRunTransitionStyle transitionStyle MEMBER transitionStyle FINAL)
    Q_PROPERTY(double dissolveDuration MEMBER dissolveDuration FINAL)
    Q_PROPERTY(double autoOutDuration MEMBER autoOutDuration FINAL)

public:
    LayerRunTransitionStyle transitionStyle = LayerRunTransitionStyle::dissolve;
    double dissolveDuration = 0.35; // s, 0 to 8
    double autoOutDuration = 0;     // s, 0 to 600; 0 means stay until taken out

    bool operator==(const LayerRunSettings &) const = default;
};

} // namespace tessara
