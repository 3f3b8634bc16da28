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

QRectF textBounds(const TextLayer &layer, const QRectF &seen, TextBlockCache &texts)
{
    if (const std::optional<QSizeF> box = layer.textBoxSize())
        return {layer.position(), box->expandedTo({1, 1})};
    const SizedFont font = layer.resolvedFont(layer.fontSize(), QFont::DemiBold);
    const QSizeF size = texts.block(layer.text(), font, layer.horizontalAlignment())
                            ->size(seen.translated(-layer.position()));
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
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRectF seen = toDevice.inverted().mapRect(device.adjusted(-2, -2, 2, 2));
    for (const Primitive &primitive :
         primitivesOf(item, {offset, style, toDevice.m11(), seen}, texts))
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

QRectF drawnBounds(const CanvasLayerItem &item, const QRectF &seen, TextBlockCache &texts)
{
    return std::visit(
        Overloaded{[&](const TextLayer *text) { return textBounds(*text, seen, texts); },
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
