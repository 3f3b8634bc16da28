// What each kind of layer is drawn with.
#pragma once

#include "Models/CanvasLayerItem.h"
#include "Rendering/Primitive.h"
#include "Rendering/TextBlock.h"

namespace tessara {

class ImageLayer;
class ScoreLayer;
class TextBlockCache;

enum class DrawingStyle {
    frame, // what goes on air: shapes stand with their top at the bottom
    canvas // what the operator edits: upright
};

/// Where and for whom a layer is drawn.
struct DrawingPlace
{
    QPointF offset{}; // canvas units, the take's slide
    DrawingStyle style = DrawingStyle::frame;
    double pixelsPerUnit = 1; // chooses among the sizes in which a picture is held
    QRectF seen = everywhere; // canvas units; of long texts only what reaches into it is drawn
};

/// In the order in which they lie on each other. Web pages, 3D models and captured windows are live
/// views and have none: they leave no hole, and what lies under them shows.
std::vector<Primitive> primitivesOf(const CanvasLayerItem &item, const DrawingPlace &place,
                                    TextBlockCache &texts);

/// `place` is the layer's top left corner in canvas units.
std::vector<Primitive> picturePrimitives(const ImageLayer &layer, QPointF place,
                                         double pixelsPerUnit);
/// Nothing shows beyond `frame`, in canvas units. A crop is a window onto a larger bar. The layer's
/// own opacity reaches the panels alone, the run's the texts as well, and neither the ornaments of
/// a title bar.
std::vector<Primitive> scoreBarPrimitives(const ScoreLayer &layer, const QRectF &frame,
                                          TextBlockCache &texts);

/// Filled, and where the outline's width is above 0 stroked over the fill.
struct TextInk
{
    RGBAColor fill;
    RGBAColor outline{};
    double outlineWidth = 0; // percent of the font size, centred on the glyphs' edges
};

/// `topLeft` is that of the first line's box, in canvas units, like the part of the canvas that is
/// seen.
void appendText(std::vector<Primitive> &primitives, const TextBlock &block, QPointF topLeft,
                const TextInk &ink, const Fading &fading = {}, const QRectF &seen = everywhere);

} // namespace tessara
