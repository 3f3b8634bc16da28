#include "Rendering/LayerDrawing.h"

#include "Models/CanvasDocument.h"
#include "Rendering/TextBlockCache.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

QPointF offsetOf(const CanvasDocument &document, const Layer &layer)
{
    const QSizeF offset = document.effectiveTransitionOffset(layer.id(), layer.isHidden());
    return {offset.width(), offset.height()};
}

QRectF textBounds(const TextLayer &layer, TextBlockCache &texts)
{
    if (const std::optional<QSizeF> box = layer.textBoxSize())
        return {layer.position(), box->expandedTo({1, 1})};
    const SizedFont font = layer.resolvedFont(layer.fontSize(), QFont::DemiBold);
    const QSizeF size = texts.block(layer.text(), font, layer.horizontalAlignment())->size();
    const double left = size.width() * alignmentShare(layer.horizontalAlignment());
    return {layer.position() - QPointF(left, 0), size};
}

double unit(double value)
{
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

void drawLayer(QPainter &painter, const CanvasLayerItem &item, QPointF offset, double runOpacity,
               DrawingStyle style, TextBlockCache &texts)
{
    const double pixelsPerUnit = painter.deviceTransform().m11();
    for (const Primitive &primitive : primitivesOf(item, {offset, style, pixelsPerUnit}, texts))
        drawPrimitive(painter, primitive, runOpacity);
}

} // namespace

double runOpacity(const CanvasDocument &document, const CanvasLayerItem &item)
{
    const Layer *layer = layerOf(item);
    const double visibility =
        unit(document.layerVisibility().value(layer->id(), layer->isHidden() ? 0 : 1));
    return visibility > LayerTakes::leastVisibility ? visibility : 0;
}

QRectF drawnBounds(const CanvasLayerItem &item, TextBlockCache &texts)
{
    return std::visit(Overloaded{[&](const TextLayer *text) { return textBounds(*text, texts); },
                                 [](const SizedLayer *layer) { return layer->frame(); }},
                      item);
}

void drawLayer(QPainter &painter, const CanvasDocument &document, const CanvasLayerItem &item,
               double runOpacity, DrawingStyle style, TextBlockCache &texts)
{
    drawLayer(painter, item, offsetOf(document, *layerOf(item)), runOpacity, style, texts);
}

void drawLayer(QPainter &painter, const CanvasLayerItem &item, DrawingStyle style,
               TextBlockCache &texts)
{
    drawLayer(painter, item, QPointF(), 1, style, texts);
}

} // namespace tessara
