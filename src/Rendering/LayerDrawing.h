// One layer of the document, painted.
#pragma once

#include "Rendering/LayerPrimitives.h"

class QPainter;

namespace tessara {

class CanvasDocument;

/// How much of a layer is to be seen: 0 to 1, and 0 for one that isn't drawn at all.
double runOpacity(const CanvasDocument &document, const CanvasLayerItem &item);

/// The box that a layer takes up at rest, in canvas coordinates: a text's is measured, a long one's
/// by the lines that reach into `seen`.
QRectF drawnBounds(const CanvasLayerItem &item, const QRectF &seen, TextBlockCache &texts);

/// Paints in canvas coordinates, as the document has it.
void drawLayer(QPainter &painter, const CanvasDocument &document, const CanvasLayerItem &item,
               double runOpacity, DrawingStyle style, TextBlockCache &texts);

/// The same for a layer of no document, at rest and wholly in; on any thread that owns the layer.
void drawLayer(QPainter &painter, const CanvasLayerItem &item, DrawingStyle style,
               TextBlockCache &texts);

} // namespace tessara
