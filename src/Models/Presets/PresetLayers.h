// The layers that a preset is made of, as they come alive.
#pragma once

#include "Models/CanvasLayerItem.h"
#include "Models/LayerRunSettings.h"
#include "Models/Presets/TextPreset.h"

namespace tessara {

// Each in no document yet; the caller owns it. `number` ends the name of an entry without one.
// Positions and sizes are taken as they stand: nothing is scaled to a canvas.

ShapeLayer *makePresetLayer(const PresetRectEntry &entry, qsizetype number, const QUuid &groupID);
TextLayer *makePresetLayer(const TextPresetEntry &entry, qsizetype number, const QUuid &groupID);
/// At least 24 by 24 units, and within the limits of a picture layer.
ImageLayer *makePresetLayer(const PresetImageEntry &entry, const Picture &picture,
                            const QUuid &groupID);

/// Fixed pictures first, replaceable ones after them and so above them.
QList<PresetImageEntry> inStackingOrder(const QList<PresetImageEntry> &images);

/// The preset's style or a dissolve, its duration or the style's own, within the limits of a take.
LayerRunSettings defaultRunSettings(const TextPreset &preset);

} // namespace tessara
