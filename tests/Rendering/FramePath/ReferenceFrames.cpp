#include "Rendering/FramePath/ReferenceFrames.h"

#include "Base/Pixels/PixelConversion.h"
#include "DeckLink/DeckLinkFrameBuffer.h"
#include "Models/CanvasDocument.h"
#include "Rendering/LayerDrawing.h"
#include "Rendering/RenderEngine.h"
#include "Rendering/TextBlockCache.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

DeckLinkFrameBuffer bufferFor(const QImage &frame, const FrameTarget &target)
{
    const int width = target.size.width();
    const int height = target.size.height();
    switch (target.content) {
    case FrameContent::key:
        return *DeckLinkFrameBuffer::makeAlphaKey(frame, width, height);
    case FrameContent::fillWithMirroredAlpha:
        return *DeckLinkFrameBuffer::makeExternalKeyFill(frame, width, height);
    case FrameContent::fill:
        return *DeckLinkFrameBuffer::make(frame, width, height);
    }
    Q_UNREACHABLE();
}

struct Slide
{
    QPointF offset;
    std::optional<double> fraction{}; // px; none at a whole pixel
};

Slide slideOf(const CanvasDocument &document, const CanvasLayerItem &item)
{
    if (std::holds_alternative<CountdownLayer *>(item))
        return {};
    const Layer *layer = layerOf(item);
    const QSizeF size = document.effectiveTransitionOffset(layer->id(), layer->isHidden());
    const double pixels = size.width() + size.height(); // one of them is 0
    const double fraction = pixels - std::floor(pixels);
    return {{size.width(), size.height()}, fraction == 0 ? std::nullopt : std::optional(fraction)};
}

// Source pixels to one of the frame.
double densityOf(const Primitive &primitive)
{
    const auto *picture = std::get_if<PlacedPicture>(&primitive.what);
    if (!picture)
        return 1;
    const QSizeF drawn = primitive.toCanvas.mapRect(picture->box).size();
    return std::max({1.0, picture->image.width() / std::max(drawn.width(), 1e-3),
                     picture->image.height() / std::max(drawn.height(), 1e-3)});
}

// Covered wholly or not at all, with its neighbours. Beyond the frame there may be anything.
bool isFlat(const QImage &image, QPoint place, QPoint step)
{
    const auto at = [&](QPoint where) {
        return image.rect().contains(where) ? image.pixel(where) : 0x01010101;
    };
    return at(place - step) == at(place) && at(place + step) == at(place)
           && qAlpha(at(place)) % 255 == 0;
}

bool isNearInk(const QImage &image, QPoint place, QPoint step)
{
    const auto has = [&](QPoint at) { return image.rect().contains(at) && image.pixel(at) != 0; };
    return has(place) || has(place - step) || has(place + step);
}

// What has its neighbours along the slide inside the clip as well.
QRect withinClip(const Primitive &primitive, const QTransform &toFrame, QPoint step)
{
    constexpr double far = 1e5; // px
    QRectF clip(-far, -far, 2 * far, 2 * far);
    if (primitive.clip)
        clip &= toFrame.mapRect(*primitive.clip);
    const auto *picture = std::get_if<PlacedPicture>(&primitive.what);
    if (picture && picture->mask)
        clip &= (primitive.toCanvas * toFrame).mapRect(picture->mask->controlPointRect());
    const QRect inner =
        clip.toAlignedRect().adjusted(2 * step.x(), 2 * step.y(), -2 * step.x(), -2 * step.y());
    return inner.isValid() ? inner : QRect(); // one turned inside out contains points, too
}

bool isThinPicture(const Primitive &primitive, const QTransform &toFrame)
{
    constexpr double thin = 2; // px
    const auto *picture = std::get_if<PlacedPicture>(&primitive.what);
    if (!picture)
        return false;
    const QTransform toPixels = primitive.toCanvas * toFrame;
    QRectF drawn = toPixels.mapRect(picture->box);
    if (picture->mask)
        drawn &= toPixels.mapRect(picture->mask->controlPointRect());
    return std::min(drawn.width(), drawn.height()) < thin;
}

QRect reachOf(const Primitive &primitive, const QTransform &toFrame, QSize frame)
{
    const auto *fill = std::get_if<FilledPath>(&primitive.what);
    const QRectF box =
        fill ? fill->path.controlPointRect() : std::get<PlacedPicture>(primitive.what).box;
    const QRectF mapped = (primitive.toCanvas * toFrame).mapRect(box);
    return (mapped.adjusted(-2, -2, 2, 2) & QRectF(QPointF(), frame)).toAlignedRect();
}

// Only where it is, and not what it shows.
Primitive whitened(Primitive primitive)
{
    if (auto *picture = std::get_if<PlacedPicture>(&primitive.what))
        picture->image.fill(Qt::white);
    return primitive;
}

// At full opacity.
QImage drawnAlone(Primitive primitive, const QTransform &toFrame, QSize frame)
{
    primitive.fading = {};
    if (auto *fill = std::get_if<FilledPath>(&primitive.what))
        fill->color = RGBAColor::white;
    QImage image(frame, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setTransform(toFrame);
    drawPrimitive(painter, primitive, 1);
    return image;
}

} // namespace

FrameTarget frameTarget(FrameContent content, FrameFormat format, QSize size, qsizetype spare)
{
    const qsizetype pixels =
        format == FrameFormat::yuv ? rowBytesOf2vuy(size.width()) : qsizetype(size.width()) * 4;
    return {content, format, size, pixels + spare};
}

FrameBytes referenceBytes(const QImage &frame, const FrameTarget &target)
{
    DeckLinkFrameBuffer buffer = bufferFor(frame, target);
    FrameBytes bytes = FrameBytes::zeroed(target.rowBytes * target.size.height());
    const SourceRows plain{buffer.data.data(), buffer.rowBytes};
    const TargetRows rows{bytes.writableData(), target.rowBytes};
    switch (target.format) {
    case FrameFormat::bgra:
        repackRows(plain, rows, buffer.height);
        break;
    case FrameFormat::argb:
        convertBGRAToARGB(plain, rows, buffer.width, buffer.height);
        break;
    case FrameFormat::yuv:
        convertBGRATo2vuy(plain, rows, buffer.width, buffer.height);
        break;
    }
    return bytes;
}

QImage imageOf(const FrameBytes &bytes, QSize size)
{
    return {bytes.data(), size.width(), size.height(), qsizetype(size.width()) * 4,
            QImage::Format_ARGB32_Premultiplied};
}

Tolerance::Tolerance(const CanvasDocument &document, QSize frame, bool areSpritesKept)
    : m_width(frame.width())
    , m_resting(std::size_t(frame.width()) * std::size_t(frame.height()))
    , m_sliding(m_resting.size())
{
    TextBlockCache texts;
    const QTransform toFrame = frameTransform(document.size(), frame);
    for (const CanvasLayerItem &item : document.orderedLayers()) {
        const double opacity = runOpacity(document, item);
        if (opacity == 0)
            continue;
        const Slide slide = slideOf(document, item);
        const bool isElsewhere = areSpritesKept || !slide.offset.isNull();
        for (const Primitive &primitive :
             primitivesOf(item, {slide.offset, DrawingStyle::frame, 1}, texts)) {
            if (slide.fraction)
                addSliding(primitive, toFrame, frame, slide.offset, *slide.fraction);
            else
                addResting(primitive, toFrame, frame, isElsewhere);
        }
    }
}

void Tolerance::addResting(const Primitive &primitive, const QTransform &toFrame, QSize frame,
                           bool isElsewhere)
{
    const bool isSampledElsewhere = isElsewhere && primitive.isPicture();
    const QImage coverage = drawnAlone(whitened(primitive), toFrame, frame);
    const QRect reach = reachOf(primitive, toFrame, frame).intersected(coverage.rect());
    for (int y = reach.top(); y <= reach.bottom(); ++y) {
        for (int x = reach.left(); x <= reach.right(); ++x) {
            const QPoint place(x, y);
            const bool isEdge =
                !isFlat(coverage, place, {1, 0}) || !isFlat(coverage, place, {0, 1});
            if (isEdge || isSampledElsewhere)
                m_resting[indexOf(place)] = ofRounding;
        }
    }
}

void Tolerance::addSliding(const Primitive &primitive, const QTransform &toFrame, QSize frame,
                           QPointF offset, double fraction)
{
    m_isSliding = true;
    const QPoint step = offset.x() != 0 ? QPoint(1, 0) : QPoint(0, 1);
    const double bend = 255 * 2 * fraction * (1 - fraction) * densityOf(primitive);
    const int edge = int(std::ceil(std::min(255.0, bend))) + ofSlides;
    const QImage alone = drawnAlone(primitive, toFrame, frame);
    const QRect inner = withinClip(primitive, toFrame, step);
    const bool isThin = isThinPicture(primitive, toFrame);
    const bool skipsPixels = densityOf(primitive) > 2;
    const QRect reach = reachOf(primitive, toFrame, frame).intersected(alone.rect());
    for (int y = reach.top(); y <= reach.bottom(); ++y) {
        for (int x = reach.left(); x <= reach.right(); ++x) {
            const QPoint place(x, y);
            if (isThin || (!inner.contains(place) && isNearInk(alone, place, step)))
                m_sliding[indexOf(place)] += 255;
            else
                m_sliding[indexOf(place)] +=
                    isFlat(alone, place, step) && !skipsPixels ? ofSlides : edge;
        }
    }
}

Difference difference(const QImage &one, const QImage &other, const Tolerance &tolerance)
{
    Difference difference;
    for (int y = 0; y < one.height(); ++y) {
        const uchar *left = one.constScanLine(y);
        const uchar *right = other.constScanLine(y);
        for (int x = 0; x < one.width(); ++x) {
            int worst = 0;
            for (int channel = 0; channel < 4; ++channel)
                worst = std::max(worst, std::abs(left[4 * x + channel] - right[4 * x + channel]));
            difference.largest = std::max(difference.largest, worst);
            const int excess = worst - tolerance.at({x, y});
            if (excess <= 0)
                continue;
            ++difference.beyond;
            if (excess > difference.excess) {
                difference.excess = excess;
                difference.worst = {x, y};
            }
        }
    }
    return difference;
}

} // namespace tessara
