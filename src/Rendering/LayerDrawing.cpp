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

<<<<<<< HEAD
=======
/// Where in its transition a layer is.
struct RunState
{
    QPointF offset{};
    double opacity = 1;
};

void drawText(QPainter &painter, const TextLayer &layer, const RunState &run, TextBlockCache &texts)
{
    const SizedFont font = layer.resolvedFont(layer.fontSize(), QFont::DemiBold);
    const TextPaint paint{layer.color().color(), layer.outlineColor().color(), outlineWidth(layer)};
    const TextLayerHorizontalAlignment alignment = layer.horizontalAlignment();
    const QPointF anchor = layer.position() + run.offset;
    painter.setOpacity(run.opacity);
    if (const std::optional<QSizeF> given = layer.textBoxSize()) {
        const QSizeF box = given->expandedTo({1, 1});
        const auto wrapped = texts.block(layer.text(), font, alignment, box.width());
        const double top =
            boxedTextTop(anchor.y() + box.height(), box.height(), wrapped->unwrappedHeight());
        wrapped->draw(painter, {anchor.x(), top}, paint);
        return;
    }
    const auto line = texts.block(layer.text(), font, alignment);
    const double left = line->size().width() * alignmentShare(alignment);
    line->draw(painter, {anchor.x() - left, anchor.y()}, paint);
}

void drawImage(QPainter &painter, const ImageLayer &layer, const RunState &run)
{
    const double opacity = layer.opacity() * run.opacity;
    painter.setOpacity(std::isfinite(opacity) ? opacity : 0);
    drawPicture(painter, layer, layer.frame().translated(run.offset));
}

QPainterPath mirroredTopToBottom(const QPainterPath &path, const QRectF &box)
{
    return QTransform(1, 0, 0, -1, 0, box.top() + box.bottom()).map(path);
}

// The opacities go into the colour, so that nothing else in the painter fades.
void drawShape(QPainter &painter, const ShapeLayer &layer, const RunState &run, DrawingStyle style)
{
    const QRectF box = layer.frame().translated(run.offset);
    RGBAColor color = layer.color();
    color.alpha *= layer.opacity() * run.opacity;
    const QPainterPath upright = layer.outline().path(box);
    painter.fillPath(style == DrawingStyle::frame ? mirroredTopToBottom(upright, box) : upright,
                     color.color());
}

void drawScore(QPainter &painter, const ScoreLayer &layer, const RunState &run,
               TextBlockCache &texts)
{
    drawScoreBar(painter, layer, layer.frame().translated(run.offset), run.opacity, texts);
}

// A countdown fades and never slides.
void drawCountdown(QPainter &painter, const CountdownLayer &layer, double opacity,
                   TextBlockCache &texts)
{
    const QRectF box = layer.frame();
    if (!(opacity > LayerTakes::leastVisibility) || box.isEmpty())
        return;
    painter.setOpacity(opacity);
    if (layer.showBackground()) {
        QPainterPath background;
        const double radius = layer.cornerRadius() > 0 ? layer.cornerRadius() : 0;
        background.addRoundedRect(box, radius, radius);
        painter.fillPath(background, layer.backgroundColor().color());
    }
    const auto time = texts.block(layer.formattedTime(), layer.resolvedFont());
    const QSizeF spare = box.size() - time->size();
    time->draw(painter, box.topLeft() + QPointF(spare.width(), spare.height()) * 0.5,
               {layer.currentColor().color(), {}, 0});
}

>>>>>>> text
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
