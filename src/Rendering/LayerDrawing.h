// One layer of the document, painted.
#pragma once

#include "Models/CanvasLayerItem.h"

class QPainter;

namespace tessara {

class CanvasDocument;
class TextBlockCache;

enum class DrawingStyle {
    frame, // what goes on air: shapes stand with their top at the bottom
    canvas // what the operator edits: upright
};

/// How much of a layer is to be seen: 0 to 1, and 0 for one that isn't drawn at all.
double runOpacity(const CanvasDocument &document, const CanvasLayerItem &item);

/// The box that a layer takes up at rest, in canvas coordinates: a text's is measured.
QRectF drawnBounds(const CanvasLayerItem &item, TextBlockCache &texts);

/// Paints in canvas coordinates, as the document has it. Web pages, 3D models and captured windows
/// are live views and have no drawing: they leave no hole, and what lies under them shows.
void drawLayer(QPainter &painter, const CanvasDocument &document, const CanvasLayerItem &item,
               double runOpacity, DrawingStyle style, TextBlockCache &texts);

/// The same for a layer of no document, at rest and wholly in; on any thread that owns the layer.
void drawLayer(QPainter &painter, const CanvasLayerItem &item, DrawingStyle style,
               TextBlockCache &texts);

} // namespace tessara
