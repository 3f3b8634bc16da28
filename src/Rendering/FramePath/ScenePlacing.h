// Where the parts of a layer are in a frame.
#pragma once

#include "Rendering/FramePath/SceneLayer.h"
#include "Rendering/FramePath/TileDamage.h"

namespace tessara {

/// Makes the layer's items of its parts, all of which have their sprites if it is seen, and adds
/// what looks otherwise than before to `damage`.
void placeItems(SceneLayer &layer, TileDamage &damage);

} // namespace tessara
