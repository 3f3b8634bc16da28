#include "Rendering/CoverageMask.h"

#include <QImage>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

// A painter's time grows with the square of what a row of pixels crosses: in tiles of about a glyph
// it stays short. What a contour adds to a tile that it does not reach is nothing, to the byte.
constexpr QSize smallTile{48, 48}; // px
constexpr int fewElements = 500;   // crossed by no row more often than pays for a tile

struct Contour
{
    int firstElement;
    int endElement;
    QRect pixels;
};

QRect outward(double left, double top, double right, double bottom)
{
    // Beyond any clip, and no more than fits into whole numbers. A rim, for a painter rounds.
    const auto whole = [](double value) { return int(value > -1e6 ? std::min(value, 1e6) : -1e6); };
    return {QPoint(whole(std::floor(left)) - 1, whole(std::floor(top)) - 1),
            QPoint(whole(std::ceil(right)) + 1, whole(std::ceil(bottom)) + 1)};
}

std::vector<Contour> contoursOf(const QPainterPath &path, const QTransform &toPixels)
{
    std::vector<Contour> contours;
    for (int first = 0; first < path.elementCount();) {
        const QPointF start = toPixels.map(path.elementAt(first));
        double left = start.x(), right = start.x(), top = start.y(), bottom = start.y();
        int end = first + 1;
        for (; end < path.elementCount() && !path.elementAt(end).isMoveTo(); ++end) {
            const QPointF point = toPixels.map(path.elementAt(end));
            left = std::min(left, point.x());
            right = std::max(right, point.x());
            top = std::min(top, point.y());
            bottom = std::max(bottom, point.y());
        }
        contours.push_back({first, end, outward(left, top, right, bottom)});
        first = end;
    }
    return contours;
}

void addContour(QPainterPath &target, const QPainterPath &path, const Contour &contour)
{
    for (int index = contour.firstElement; index < contour.endElement; ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        if (element.isMoveTo()) {
            target.moveTo(element);
        } else if (element.isLineTo()) {
            target.lineTo(element);
        } else {
            target.cubicTo(element, path.elementAt(index + 1), path.elementAt(index + 2));
            index += 2;
        }
    }
}

void drawTile(QImage &picture, const QRect &tile, const QPainterPath &path,
              const QTransform &toPicture)
{
    QImage part(picture.scanLine(tile.top()) + 4 * tile.left(), tile.width(), tile.height(),
                picture.bytesPerLine(), picture.format());
    QPainter painter(&part);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toPicture * QTransform::fromTranslate(-tile.left(), -tile.top()));
    painter.fillPath(path, Qt::white);
}

QImage drawn(const QPainterPath &path, const QTransform &toPixels,
             const std::vector<Contour> &contours, const QRect &pixels)
{
    QImage picture(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    const QSize tileSize = path.elementCount() > fewElements ? smallTile : pixels.size();
    const int columns = (pixels.width() + tileSize.width() - 1) / tileSize.width();
    const int rows = (pixels.height() + tileSize.height() - 1) / tileSize.height();
    std::vector<QPainterPath> tiles(size_t(columns) * size_t(rows));
    for (const Contour &contour : contours) {
        const QRect reached = contour.pixels.intersected(pixels).translated(-pixels.topLeft());
        if (reached.isEmpty())
            continue;
        for (int row = reached.top() / tileSize.height();
             row <= reached.bottom() / tileSize.height(); ++row) {
            for (int column = reached.left() / tileSize.width();
                 column <= reached.right() / tileSize.width(); ++column)
                addContour(tiles[size_t(row * columns + column)], path, contour);
        }
    }
    const QTransform toPicture =
        toPixels * QTransform::fromTranslate(-pixels.left(), -pixels.top());
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            QPainterPath &tile = tiles[size_t(row * columns + column)];
            if (tile.isEmpty())
                continue;
            tile.setFillRule(path.fillRule());
            const QRect box(QPoint(column * tileSize.width(), row * tileSize.height()), tileSize);
            drawTile(picture, box.intersected(picture.rect()), tile, toPicture);
        }
    }
    return picture;
}

QRect inkOf(const QImage &picture)
{
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
    return ink;
}

CoverageMask maskOf(const QPainterPath &path, const QTransform &toPixels, const QRect &clip)
{
    const std::vector<Contour> contours = contoursOf(path, toPixels);
    QRect pixels;
    for (const Contour &contour : contours)
        pixels |= contour.pixels.intersected(clip);
    if (pixels.isEmpty())
        return {};
    const QImage picture = drawn(path, toPixels, contours, pixels);
    const QRect ink = inkOf(picture);
    if (ink.isEmpty())
        return {};
    CoverageMask mask{ink.translated(pixels.topLeft()), {}};
    mask.alpha.reserve(size_t(ink.width()) * size_t(ink.height()));
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y)) + ink.left();
        std::transform(row, row + ink.width(), std::back_inserter(mask.alpha),
                       [](QRgb pixel) { return uchar(qAlpha(pixel)); });
    }
    return mask;
}

} // namespace

CoverageMask rasterizedPath(const QPainterPath &path, const QTransform &toPixels, const QRect &clip)
{
    // Mapped here, a point stays the same to the last bit wherever its tile begins; but curves that
    // are turned come out otherwise when the painter maps them itself.
    if (toPixels.type() <= QTransform::TxScale)
        return maskOf(toPixels.map(path), {}, clip);
    return maskOf(path, toPixels, clip);
}

} // namespace tessara
