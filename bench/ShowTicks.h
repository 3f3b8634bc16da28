// What changes in a show from one tick to the next.
#pragma once

#include "Models/CanvasDocument.h"

#include <functional>

namespace tessara {

/// Changes the document of which it was made, each time otherwise than before. The document stays
/// the caller's.
using ShowTick = std::function<void()>;

ShowTick nothingChanges();
/// Every layer is somewhere within a dissolve.
ShowTick allLayersDissolve(CanvasDocument &document);
/// Every layer of the largest group, or of the show where there is none, slides in by fractions of
/// a pixel.
ShowTick groupReveals(CanvasDocument &document);
/// Three layers that show a time go on to the next one; a null function where there are fewer.
ShowTick clocksChange(CanvasDocument &document);
/// A still show over one full colour that changes: all of it is to be drawn again.
ShowTick backdropChanges(CanvasDocument &document);
/// Somebody types into the middle of a title of 400 characters, wrapped and outlined, which this
/// adds; `scale` is that of the canvas.
ShowTick titleIsTyped(CanvasDocument &document, double scale);

} // namespace tessara
