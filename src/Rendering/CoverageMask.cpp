#include "Rendering/CoverageMask.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <iterator>

namespace tessara {

namespace {

// A path keeps what it was asked for without a lock, so that each thread needs one of its own.
QPainterPath copyOf(const QPainterPath &path)
{
    QPainterPath copy;
    copy.addPath(path);
    copy.setFillRule(path.fillRule());
    return copy;
}

QRect pixelsOf(const QRectF &box, const QRect &clip)
{
    constexpr double rim = 2; // px, for a path is rounded on its way to the pixels
    return box.adjusted(-rim, -rim, rim, rim).intersected(clip).toAlignedRect().intersected(clip);
}

QImage drawn(const QPainterPath &path, const QTransform &toPixels, const QRect &pixels)
{
    QImage picture(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toPixels * QTransform::fromTranslate(-pixels.left(), -pixels.top()));
    painter.fillPath(path, Qt::white);
    return picture;
}

} // namespace

CoverageMask rasterizedPath(const QPainterPath &path, const QTransform &toPixels, const QRect &clip)
{
    const QPainterPath own = copyOf(path);
    const QRect pixels = pixelsOf(toPixels.mapRect(own.controlPointRect()), clip);
    if (pixels.isEmpty())
        return {};
    const QImage picture = drawn(own, toPixels, pixels);
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        const auto covered = [](QRgb pixel) { return pixel != 0; };
        const QRgb *end = row + picture.width();
        const QRgb *first = std::find_if(row, end, covered);
        if (first == end)
            continue;
        const QRgb *last = end - 1;
        while (*last == 0)
            --last;
        ink |= QRect(QPoint(int(first - row), y), QPoint(int(last - row), y));
    }
    CoverageMask mask{ink.translated(pixels.topLeft()), {}};
    mask.alpha.reserve(size_t(ink.width()) * size_t(ink.height()));
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y)) + ink.left();
        std::transform(row, row + ink.width(), std::back_inserter(mask.alpha),
                       [](QRgb pixel) { return uchar(qAlpha(pixel)); });
    }
    return ink.isEmpty() ? CoverageMask() : mask;
}

} // namespace tessara
