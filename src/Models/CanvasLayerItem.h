// Any one layer of the canvas, by its kind.
#pragma once

#include "Base/Overloaded.h"
#include "Models/CountdownLayer.h"
#include "Models/ImageLayer.h"
#include "Models/Model3DLayer.h"
#include "Models/ScoreLayer.h"
#include "Models/ShapeLayer.h"
#include "Models/TextLayer.h"
#include "Models/WebLayer.h"
#include "Models/WindowCaptureLayer.h"

#include <variant>

namespace tessara {

/// A reference, not a copy. A new kind makes the build name every place that has to know it.
using CanvasLayerItem =
    std::variant<TextLayer *, ImageLayer *, ShapeLayer *, ScoreLayer *, WebLayer *, Model3DLayer *,
                 WindowCaptureLayer *, CountdownLayer *>;

/// What the layer shares with all others.
inline Layer *layerOf(const CanvasLayerItem &item)
{
    return std::visit([](auto *layer) -> Layer * { return layer; }, item);
}

/// The name of the case: "text", "image", "shape", "score", "web", "model", "windowCapture" or
/// "countdown".
QString kindName(const CanvasLayerItem &item);

/// Absent for the kinds that can't belong to a group: score, window capture and countdown.
std::optional<QUuid> presetGroupID(const CanvasLayerItem &item);
/// Nothing for those kinds.
void setPresetGroupID(const CanvasLayerItem &item, const std::optional<QUuid> &groupID);

/// The layer's own opacity; a text has none and counts as opaque.
double layerOpacity(const CanvasLayerItem &item);

} // namespace tessara
