#include "Rendering/LayerPrimitives.h"

#include "Rendering/TextBlockCache.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr double leastOutlineWidth = 0.001; // percent of the font size
constexpr double largestOutlineWidth = 16;  // percent of the font size

double outlineWidth(const TextLayer &layer)
{
    if (!std::isfinite(layer.outlineWidth()))
        return 0;
    const double width = std::clamp(layer.outlineWidth(), 0.0, largestOutlineWidth);
    return width > leastOutlineWidth ? width : 0;
}

// The block's lower edge lies half of the spare height above the box's, and the text starts at the
// block's top: text taller than its box grows upward from the lower edge.
double boxedTextTop(double boxBottom, double boxHeight, double textHeight)
{
    const double lift = std::max((boxHeight - textHeight) * 0.5, 0.0);
    return boxBottom - lift - std::max(boxHeight, textHeight);
}

std::vector<Primitive> textPrimitives(const TextLayer &layer, const DrawingPlace &place,
                                      TextBlockCache &texts)
{
    const SizedFont font = layer.resolvedFont(layer.fontSize(), QFont::DemiBold);
    const TextInk ink{layer.color(), layer.outlineColor(), outlineWidth(layer)};
    const TextLayerHorizontalAlignment alignment = layer.horizontalAlignment();
    const QPointF anchor = layer.position() + place.offset;
    std::vector<Primitive> primitives;
    if (const std::optional<QSizeF> given = layer.textBoxSize()) {
        const QSizeF box = given->expandedTo({1, 1});
        const auto wrapped = texts.block(layer.text(), font, alignment, box.width());
        const double top =
            boxedTextTop(anchor.y() + box.height(), box.height(), wrapped->unwrappedHeight());
        appendText(primitives, *wrapped, {anchor.x(), top}, ink, {}, place.seen);
    } else {
        const auto line = texts.block(layer.text(), font, alignment);
        const QSizeF size = line->size(place.seen.translated(-anchor));
        const double left = size.width() * alignmentShare(alignment);
        appendText(primitives, *line, {anchor.x() - left, anchor.y()}, ink, {}, place.seen);
    }
    return primitives;
}

QPainterPath mirroredTopToBottom(const QPainterPath &path, double height)
{
    return QTransform(1, 0, 0, -1, 0, height).map(path);
}

QTransform shiftedTo(QPointF place)
{
    return QTransform::fromTranslate(place.x(), place.y());
}

// The opacities go into the colour, so that nothing else fades.
std::vector<Primitive> shapePrimitives(const ShapeLayer &layer, const DrawingPlace &place)
{
    const QPainterPath upright = layer.outline().path({QPointF(), layer.size()});
    const bool isMirrored = place.style == DrawingStyle::frame;
    const QPainterPath path =
        isMirrored ? mirroredTopToBottom(upright, layer.size().height()) : upright;
    return {{FilledPath{path, layer.color()},
             shiftedTo(layer.position() + place.offset),
             {Fading::Means::color, layer.opacity()}}};
}

double unit(double value)
{
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

// A countdown fades and never slides.
std::vector<Primitive> countdownPrimitives(const CountdownLayer &layer, TextBlockCache &texts)
{
    const QRectF box = layer.frame();
    if (box.isEmpty())
        return {};
    const Fading fading{Fading::Means::drawing, unit(layer.opacity())};
    std::vector<Primitive> primitives;
    if (layer.showBackground()) {
        QPainterPath background;
        const double radius = layer.cornerRadius() > 0 ? layer.cornerRadius() : 0;
        background.addRoundedRect({QPointF(), box.size()}, radius, radius);
        primitives.push_back(
            {FilledPath{background, layer.backgroundColor()}, shiftedTo(box.topLeft()), fading});
    }
    const auto time = texts.block(layer.formattedTime(), layer.resolvedFont());
    const QSizeF spare = box.size() - time->size();
    appendText(primitives, *time, box.topLeft() + QPointF(spare.width(), spare.height()) * 0.5,
               {layer.currentColor()}, fading);
    return primitives;
}

} // namespace

void appendText(std::vector<Primitive> &primitives, const TextBlock &block, QPointF topLeft,
                const TextInk &ink, const Fading &fading, const QRectF &seen)
{
    const QRectF seenOfBlock = seen.translated(-topLeft);
    QTransform toCanvas = QTransform::fromTranslate(topLeft.x(), topLeft.y());
    toCanvas.scale(block.scale(), block.scale());
    const Outline &fill = block.fill(seenOfBlock);
    if (!fill.path.isEmpty())
        primitives.push_back({FilledPath{fill.path, ink.fill, fill.parts}, toCanvas, fading});
    // Their colours are their own; only the alpha of the fill reaches them.
    Fading ofPictures = fading;
    ofPictures.share *= ink.fill.color().alphaF();
    for (const TextBlock::PictureGlyph &picture : block.pictures(seenOfBlock))
        primitives.push_back({PlacedPicture{picture.image, picture.box}, toCanvas, ofPictures});
    if (ink.outlineWidth > 0 && !fill.path.isEmpty()) {
        const Outline stroke = block.stroke(ink.outlineWidth, seenOfBlock);
        primitives.push_back(
            {FilledPath{stroke.path, ink.outline, stroke.parts}, toCanvas, fading});
    }
}

std::vector<Primitive> primitivesOf(const CanvasLayerItem &item, const DrawingPlace &place,
                                    TextBlockCache &texts)
{
    using Primitives = std::vector<Primitive>;
    Primitives primitives = std::visit(
        Overloaded{
            [&](const TextLayer *text) { return textPrimitives(*text, place, texts); },
            [&](const ImageLayer *image) {
                return picturePrimitives(*image, image->position() + place.offset,
                                         place.pixelsPerUnit);
            },
            [&](const ShapeLayer *shape) { return shapePrimitives(*shape, place); },
            [&](const ScoreLayer *score) {
                return scoreBarPrimitives(*score, score->frame().translated(place.offset), texts);
            },
            [](const WebLayer *) { return Primitives(); },
            [](const Model3DLayer *) { return Primitives(); },
            [](const WindowCaptureLayer *) { return Primitives(); },
            [&](const CountdownLayer *countdown) { return countdownPrimitives(*countdown, texts); },
        },
        item);
    for (Primitive &primitive : primitives) {
        if (auto *picture = std::get_if<PlacedPicture>(&primitive.what))
            picture->slide = place.offset;
    }
    return primitives;
}

} // namespace tessara
