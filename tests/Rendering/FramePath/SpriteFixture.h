// Sprites made by hand, and what is in them pixel by pixel.
#pragma once

#include "Rendering/FramePath/Sprite.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cstring>

namespace tessara {

inline QPainterPath rectangle(const QRectF &box)
{
    QPainterPath path;
    path.addRect(box);
    return path;
}

inline QPainterPath ellipse(const QRectF &box)
{
    QPainterPath path;
    path.addEllipse(box);
    return path;
}

inline Primitive fillOf(const QPainterPath &path, QPointF place = {})
{
    return {FilledPath{path, {1, 1, 1, 1}}, QTransform::fromTranslate(place.x(), place.y()), {}};
}

inline Primitive pictureOf(const QImage &image, const QRectF &box, QPointF place = {})
{
    return {PlacedPicture{image, box}, QTransform::fromTranslate(place.x(), place.y()), {}};
}

inline QImage gradient(QSize size, int alpha = 255)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgba(255 * x / size.width(), 255 * y / size.height(), 90, alpha));
    }
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

inline QRgb weakened(QRgb pixel, int coverage)
{
    const auto scaled = [coverage](int channel) {
        const int product = channel * coverage;
        return (product + (product >> 8) + 128) >> 8;
    };
    return qRgba(scaled(qRed(pixel)), scaled(qGreen(pixel)), scaled(qBlue(pixel)),
                 scaled(qAlpha(pixel)));
}

/// All of `area`, a mask as white.
inline QImage unpacked(const Sprite &sprite, const QRect &area)
{
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int row = 0; row < sprite.bounds().height(); ++row) {
        for (const SpriteRun &run : sprite.row(row)) {
            for (int index = 0; index < run.pixels; ++index) {
                const QPoint place =
                    sprite.bounds().topLeft() + QPoint(run.x + index, row) - area.topLeft();
                QRgb pixel = 0xffffffff;
                if (sprite.kind() == Sprite::Kind::picture) {
                    std::memcpy(&pixel, run.data + 4 * index, sizeof pixel);
                    if (run.isRim)
                        pixel = weakened(pixel, run.coverage()[index]);
                } else if (run.data)
                    pixel = run.data[index] * 0x01010101u;
                if (image.rect().contains(place))
                    image.setPixel(place, pixel);
                else
                    EXPECT_EQ(pixel, 0u) << "a pixel outside its area";
            }
        }
    }
    return image;
}

/// What a painter makes of it on a transparent picture.
inline QImage painted(const Primitive &primitive, const QRect &area)
{
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-area.topLeft());
    drawPrimitive(painter, primitive, 1);
    return image;
}

} // namespace tessara
