#include "Rendering/Primitive.h"

#include "Base/Overloaded.h"

#include <QPainter>
#include <QRgba64>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr int fullOpacity = 256; // a painter counts in 256ths

double limitedOpacity(double opacity)
{
    return std::isfinite(opacity) ? std::clamp(opacity, 0.0, 1.0) : 0;
}

int opacityIn256ths(const Fading &fading, double runOpacity)
{
    if (fading.means != Fading::Means::drawing)
        return fullOpacity;
    return int(limitedOpacity(fading.opacity(runOpacity)) * fullOpacity);
}

QColor fadedColor(RGBAColor color, const Fading &fading, double runOpacity)
{
    if (fading.means == Fading::Means::color)
        color.alpha *= fading.opacity(runOpacity);
    return color.color();
}

// A painter moves a picture that isn't stretched by whole pixels, and blends one that is, however
// little. It starts from the pixels on which it rests, or it would jump at the end of its slide.
void drawSliding(QPainter &painter, const PlacedPicture &picture)
{
    constexpr double hair = 1e-9; // px; a half stays one, however the place was summed up
    const auto whole = [](double rest) { return std::round(rest + std::copysign(hair, rest)); };
    const QPointF rest = painter.deviceTransform().map(picture.box.topLeft()) - picture.slide;
    painter.setTransform(QTransform::fromTranslate(whole(rest.x()) + picture.slide.x(),
                                                   whole(rest.y()) + picture.slide.y()));
    painter.drawImage(QRectF(QPointF(), picture.box.size() * (1 + hair)), picture.image,
                      picture.image.rect());
}

} // namespace

// However little it is stretched; sizes themselves are compared with a tolerance.
bool isPixelForPixel(const PlacedPicture &picture, const QTransform &toDevice)
{
    return toDevice.type() <= QTransform::TxTranslate
           && picture.box.width() == picture.image.width()
           && picture.box.height() == picture.image.height();
}

QRect clipInPixels(const QRectF &clip, const QTransform &canvasToDevice)
{
    constexpr double far = 1e6; // px; nobody draws so far out
    const QRectF device = canvasToDevice.mapRect(clip).intersected({-far, -far, 2 * far, 2 * far});
    return device.toAlignedRect();
}

// As the raster engine counts, to the last bit.
quint32 blendedColor(const RGBAColor &color, const Fading &fading, double runOpacity)
{
    const QRgba64 plain = fadedColor(color, fading, runOpacity).rgba64();
    const quint32 alpha = quint32(plain.alpha()) * quint32(opacityIn256ths(fading, runOpacity));
    return QRgba64::fromRgba64(plain.red(), plain.green(), plain.blue(), quint16(alpha >> 8))
        .premultiplied()
        .toArgb32();
}

int blendedOpacity(const Fading &fading, double runOpacity)
{
    return 255 * opacityIn256ths(fading, runOpacity) >> 8;
}

void drawPrimitive(QPainter &painter, const Primitive &primitive, double runOpacity)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (primitive.clip) {
        const QTransform toDevice = painter.deviceTransform();
        const QRect pixels = clipInPixels(*primitive.clip, toDevice);
        painter.setClipRect(toDevice.inverted().mapRect(QRectF(pixels)), Qt::IntersectClip);
    }
    const Fading &fading = primitive.fading;
    if (fading.means == Fading::Means::drawing)
        painter.setOpacity(limitedOpacity(fading.opacity(runOpacity)));
    std::visit(Overloaded{
                   [&](const FilledPath &fill) {
                       painter.setTransform(primitive.toCanvas, true);
                       painter.fillPath(fill.path, fadedColor(fill.color, fading, runOpacity));
                   },
                   [&](const PlacedPicture &picture) {
                       painter.setRenderHint(QPainter::SmoothPixmapTransform);
                       painter.setTransform(primitive.toCanvas, true);
                       if (picture.mask)
                           painter.setClipPath(*picture.mask, Qt::IntersectClip);
                       if (!picture.slide.isNull()
                           && isPixelForPixel(picture, painter.deviceTransform()))
                           drawSliding(painter, picture);
                       else
                           painter.drawImage(picture.box, picture.image, picture.image.rect());
                   },
               },
               primitive.what);
    painter.restore();
}

} // namespace tessara
