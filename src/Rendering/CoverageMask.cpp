#include "Rendering/CoverageMask.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <span>

#include "Rendering/CoverageRaster.h"
#include "Rendering/SparseImage.h"

namespace tessara {

namespace {

// A few lines are a painter's in no time; a text of thousands takes it long.
constexpr int fewElements = 12;

using Point = CoverageRaster::Point;

/// One closed line of a path.
struct Contour
{
    int first; // point
    int end;
    QRect pixels; // with a rim of one
};

struct Polygons
{
    std::vector<Point> points;
    std::vector<Contour> contours;
};

QRect pixelsOf(const Point *first, const Point *end)
{
    int left = first->x, right = first->x, top = first->y, bottom = first->y;
    for (const Point *point = first; point < end; ++point) {
        left = std::min(left, point->x);
        right = std::max(right, point->x);
        top = std::min(top, point->y);
        bottom = std::max(bottom, point->y);
    }
    return {QPoint((left >> 6) - 1, (top >> 6) - 1), QPoint((right >> 6) + 1, (bottom >> 6) + 1)};
}

constexpr double far = 1e6; // px

/// Some of the elements of a path.
struct Elements
{
    int begin;
    int end;
};

/// What may cover anything in the rows of `clip`; those parts that follow each other as one.
std::vector<Elements> elementsIn(const QRect &clip, const QPainterPath &path,
                                 const OutlineParts &parts, const QTransform &toPixels)
{
    if (!parts)
        return {{0, path.elementCount()}};
    constexpr int rim = 1; // px, for points are rounded on their way
    std::vector<Elements> elements;
    int begin = 0;
    for (const OutlinePart &part : *parts) {
        const QRectF box = toPixels.mapRect(part.box);
        if (box.bottom() >= clip.top() - rim && box.top() <= clip.bottom() + 1 + rim) {
            if (!elements.empty() && elements.back().end == begin)
                elements.back().end = part.end;
            else
                elements.push_back({begin, part.end});
        }
        begin = part.end;
    }
    return elements;
}

// As a painter maps and rounds, and beyond any clip no further than whole numbers go. Nothing for a
// path with curves.
std::optional<Polygons> polygonsOf(const QPainterPath &path, std::span<const Elements> stretches,
                                   const QTransform &toPixels)
{
    const auto rounded = [](double pixels) { return qRound(std::clamp(pixels, -far, far) * 64); };
    const double scaleX = toPixels.m11(), left = toPixels.dx();
    const double scaleY = toPixels.m22(), top = toPixels.dy();
    Polygons polygons;
    int count = 0;
    for (const auto &[begin, end] : stretches)
        count += end - begin;
    polygons.points.reserve(std::size_t(count));
    for (const auto &[begin, end] : stretches) {
        for (int index = begin; index < end; ++index) {
            const QPainterPath::Element element = path.elementAt(index);
            if (element.isCurveTo())
                return std::nullopt;
            if (element.isMoveTo())
                polygons.contours.push_back({int(polygons.points.size()), 0, {}});
            polygons.points.push_back(
                {rounded(scaleX * element.x + left), rounded(scaleY * element.y + top)});
            polygons.contours.back().end = int(polygons.points.size());
        }
    }
    for (Contour &contour : polygons.contours)
        contour.pixels =
            pixelsOf(polygons.points.data() + contour.first, polygons.points.data() + contour.end);
    return polygons;
}

/// Coverage in the making.
struct Picture
{
    QRect pixels;
    std::vector<uchar> alpha;

    uchar *row(int y)
    {
        return alpha.data() + std::size_t(y - pixels.top()) * std::size_t(pixels.width());
    }
};

Picture emptyPicture(const QRect &pixels)
{
    return {pixels, std::vector<uchar>(std::size_t(pixels.width()) * std::size_t(pixels.height()))};
}

// Where a painter may have its zero so that it rounds as from the frame's: halves of a 64th of a
// pixel go away from it, and the frame's lies between what is negative and what isn't.
int zeroFor(double begin, int firstPixel)
{
    return std::min(firstPixel, begin < 0 ? 0 : int(begin));
}

Picture painted(const QPainterPath &path, const QTransform &toPixels, const QRect &pixels,
                const QRectF &box)
{
    const QPoint zero(zeroFor(box.left(), pixels.left()), zeroFor(box.top(), pixels.top()));
    const QRect drawn(zero, pixels.bottomRight());
    SparseImage sparse(drawn.size(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&sparse.image());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(pixels.translated(-zero));
    painter.setTransform(toPixels * QTransform::fromTranslate(-zero.x(), -zero.y()));
    painter.fillPath(path, Qt::white);
    painter.end();
    const QImage &image = sparse.image();
    Picture picture = emptyPicture(pixels);
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        const auto *source = reinterpret_cast<const QRgb *>(image.constScanLine(y - drawn.top()))
                             + pixels.left() - drawn.left();
        std::transform(source, source + pixels.width(), picture.row(y),
                       [](QRgb pixel) { return uchar(qAlpha(pixel)); });
    }
    return picture;
}

// Band by band, so that what is added up stays in the cache.
void rasterize(Picture &picture, const Polygons &polygons, CoverageRaster::Rule rule)
{
    constexpr int bandCells = 192 * 1024;
    const QRect &all = picture.pixels;
    const int bandRows = std::clamp(bandCells / all.width(), 1, all.height());
    // To get its memory anew takes a fifth of the time for a long title.
    static thread_local CoverageRaster raster;
    for (int top = all.top(); top <= all.bottom(); top += bandRows) {
        const int rows = std::min(bandRows, all.bottom() + 1 - top);
        raster.begin({all.left(), top, all.width(), rows});
        bool isEmpty = true;
        for (const Contour &contour : polygons.contours) {
            if (contour.pixels.bottom() < top || contour.pixels.top() >= top + rows
                || contour.pixels.left() > all.right())
                continue;
            raster.addPolygon(polygons.points.data() + contour.first,
                              std::size_t(contour.end - contour.first));
            isEmpty = false;
        }
        if (!isEmpty)
            raster.takeRows(rule, picture.row(top), all.width());
    }
}

CoverageMask maskOf(Picture &picture)
{
    QRect ink;
    for (int y = picture.pixels.top(); y <= picture.pixels.bottom(); ++y) {
        const uchar *row = picture.row(y);
        const uchar *end = row + picture.pixels.width();
        const auto isCovered = [](uchar alpha) { return alpha != 0; };
        const uchar *first = std::find_if(row, end, isCovered);
        if (first == end)
            continue;
        const uchar *last = end - 1;
        while (*last == 0)
            --last;
        ink |= QRect(QPoint(picture.pixels.left() + int(first - row), y),
                     QPoint(picture.pixels.left() + int(last - row), y));
    }
    if (ink.isEmpty())
        return {};
    uchar *target = picture.alpha.data();
    for (int y = ink.top(); y <= ink.bottom(); ++y, target += ink.width())
        std::memmove(target, picture.row(y) + ink.left() - picture.pixels.left(),
                     std::size_t(ink.width()));
    picture.alpha.resize(std::size_t(ink.width()) * std::size_t(ink.height()));
    return {ink, std::move(picture.alpha)};
}

// A path keeps what it was asked for without a lock, so that each thread needs one of its own.
QPainterPath copyOf(const QPainterPath &path)
{
    QPainterPath copy;
    copy.addPath(path);
    copy.setFillRule(path.fillRule());
    return copy;
}

} // namespace

CoverageMask rasterizedPath(const QPainterPath &path, const QTransform &toPixels, const QRect &clip,
                            const OutlineParts &parts)
{
    const bool mayRasterize =
        path.elementCount() > fewElements && toPixels.type() <= QTransform::TxScale;
    const std::optional<Polygons> polygons =
        mayRasterize ? polygonsOf(path, elementsIn(clip, path, parts, toPixels), toPixels)
                     : std::nullopt;
    if (!polygons) {
        const QPainterPath own = copyOf(path);
        constexpr double rim = 1; // px, for a path is rounded on its way to the pixels
        const QRectF box = toPixels.mapRect(own.controlPointRect()).adjusted(-rim, -rim, rim, rim);
        const QRect pixels = box.intersected(clip).toAlignedRect().intersected(clip);
        if (pixels.isEmpty())
            return {};
        Picture picture = painted(own, toPixels, pixels, box);
        return maskOf(picture);
    }
    QRect pixels;
    for (const Contour &contour : polygons->contours)
        pixels |= contour.pixels.intersected(clip);
    if (pixels.isEmpty())
        return {};
    Picture picture = emptyPicture(pixels);
    rasterize(picture, *polygons,
              path.fillRule() == Qt::WindingFill ? CoverageRaster::Rule::winding
                                                 : CoverageRaster::Rule::oddEven);
    return maskOf(picture);
}

} // namespace tessara
