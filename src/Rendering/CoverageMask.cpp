#include "Rendering/CoverageMask.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Rendering/CoverageRaster.h"

namespace tessara {

namespace {

// A few lines are a painter's in no time; a text of thousands takes it long.
constexpr int fewElements = 500;

/// One closed line of a path.
struct Contour
{
    std::vector<CoverageRaster::Point> points;
    int firstElement;
    int endElement;
    QRect pixels; // with a rim of one
};

bool hasCurves(const QPainterPath &path)
{
    for (int index = 0; index < path.elementCount(); ++index) {
        if (path.elementAt(index).isCurveTo())
            return true;
    }
    return false;
}

// As a painter maps and rounds, and beyond any clip no further than whole numbers go.
CoverageRaster::Point rounded(QPointF point, const QTransform &toPixels)
{
    constexpr double far = 1e6; // px
    const QPointF mapped = toPixels.map(point);
    return {qRound(std::clamp(mapped.x(), -far, far) * 64),
            qRound(std::clamp(mapped.y(), -far, far) * 64)};
}

QRect pixelsOf(const std::vector<CoverageRaster::Point> &points)
{
    const auto [left, right] = std::ranges::minmax(points, {}, &CoverageRaster::Point::x);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &CoverageRaster::Point::y);
    return {QPoint((left.x >> 6) - 1, (top.y >> 6) - 1),
            QPoint((right.x >> 6) + 1, (bottom.y >> 6) + 1)};
}

std::vector<Contour> contoursOf(const QPainterPath &path, const QTransform &toPixels)
{
    std::vector<Contour> contours;
    for (int first = 0; first < path.elementCount();) {
        Contour contour{{rounded(path.elementAt(first), toPixels)}, first, first + 1, {}};
        int &end = contour.endElement;
        for (; end < path.elementCount() && !path.elementAt(end).isMoveTo(); ++end)
            contour.points.push_back(rounded(path.elementAt(end), toPixels));
        contour.pixels = pixelsOf(contour.points);
        first = end;
        contours.push_back(std::move(contour));
    }
    return contours;
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

void paint(Picture &picture, const QPainterPath &path, const QTransform &toPixels,
           const QRect &clip)
{
    // Of the clip's own place and size: a painter moves a line that it cuts by a hair.
    const QRect drawn = clip;
    QImage image(drawn.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toPixels * QTransform::fromTranslate(-drawn.left(), -drawn.top()));
    painter.fillPath(path, Qt::white);
    painter.end();
    for (int y = picture.pixels.top(); y <= picture.pixels.bottom(); ++y) {
        const auto *source = reinterpret_cast<const QRgb *>(image.constScanLine(y - drawn.top()))
                             + picture.pixels.left() - drawn.left();
        uchar *target = picture.row(y);
        for (int x = 0; x < picture.pixels.width(); ++x)
            target[x] = std::max(target[x], uchar(qAlpha(source[x])));
    }
}

// Band by band, so that what is added up stays in the cache.
void rasterize(Picture &picture, const std::vector<const Contour *> &contours,
               CoverageRaster::Rule rule)
{
    constexpr int bandRows = 48;
    const QRect &all = picture.pixels;
    CoverageRaster raster({all.left(), 0, all.width(), bandRows});
    for (int top = all.top(); top <= all.bottom(); top += bandRows) {
        const int rows = std::min(bandRows, all.bottom() + 1 - top);
        raster.moveTo(top, rows);
        bool isEmpty = true;
        for (const Contour *contour : contours) {
            if (contour->pixels.bottom() < top || contour->pixels.top() >= top + rows)
                continue;
            raster.addPolygon(contour->points.data(), contour->points.size());
            isEmpty = false;
        }
        if (!isEmpty)
            raster.takeRows(rule, picture.row(top), all.width());
    }
}

/// The contours that `clip` cuts, and those that touch them: what they cover counts as one.
std::vector<bool> cutBy(const QRect &clip, const std::vector<Contour> &contours)
{
    std::vector<bool> isCut(contours.size());
    std::vector<std::size_t> open;
    for (std::size_t index = 0; index < contours.size(); ++index) {
        isCut[index] = !clip.contains(contours[index].pixels);
        if (isCut[index])
            open.push_back(index);
    }
    while (!open.empty()) {
        const QRect pixels = contours[open.back()].pixels;
        open.pop_back();
        for (std::size_t index = 0; index < contours.size(); ++index) {
            if (isCut[index] || !contours[index].pixels.intersects(pixels))
                continue;
            isCut[index] = true;
            open.push_back(index);
        }
    }
    return isCut;
}

QPainterPath pathOf(const QPainterPath &path, const std::vector<Contour> &contours,
                    const std::vector<bool> &isWanted)
{
    QPainterPath part;
    part.setFillRule(path.fillRule());
    for (std::size_t which = 0; which < contours.size(); ++which) {
        if (!isWanted[which])
            continue;
        part.moveTo(path.elementAt(contours[which].firstElement));
        for (int index = contours[which].firstElement + 1; index < contours[which].endElement;
             ++index)
            part.lineTo(path.elementAt(index));
    }
    return part;
}

void drawPolygons(Picture &picture, const QPainterPath &path, const QTransform &toPixels,
                  const std::vector<Contour> &contours, const QRect &clip)
{
    const std::vector<bool> isCut = cutBy(clip, contours);
    std::vector<const Contour *> whole;
    for (std::size_t index = 0; index < contours.size(); ++index) {
        if (!isCut[index])
            whole.push_back(&contours[index]);
    }
    if (!whole.empty())
        rasterize(picture, whole,
                  path.fillRule() == Qt::WindingFill ? CoverageRaster::Rule::winding
                                                     : CoverageRaster::Rule::oddEven);
    if (whole.size() < contours.size())
        paint(picture, pathOf(path, contours, isCut), toPixels, clip);
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
    CoverageMask mask{ink, {}};
    mask.alpha.reserve(std::size_t(ink.width()) * std::size_t(ink.height()));
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        const uchar *row = picture.row(y) + ink.left() - picture.pixels.left();
        mask.alpha.insert(mask.alpha.end(), row, row + ink.width());
    }
    return mask;
}

Picture emptyPicture(const QRect &pixels)
{
    return {pixels, std::vector<uchar>(std::size_t(pixels.width()) * std::size_t(pixels.height()))};
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

CoverageMask rasterizedPath(const QPainterPath &path, const QTransform &toPixels, const QRect &clip)
{
    if (path.elementCount() <= fewElements || toPixels.type() > QTransform::TxScale
        || hasCurves(path)) {
        const QPainterPath own = copyOf(path);
        constexpr double rim = 1; // px, for a path is rounded on its way to the pixels
        const QRectF box = toPixels.mapRect(own.controlPointRect()).adjusted(-rim, -rim, rim, rim);
        const QRect pixels = box.intersected(clip).toAlignedRect().intersected(clip);
        if (pixels.isEmpty())
            return {};
        Picture picture = emptyPicture(pixels);
        paint(picture, own, toPixels, QRectF(clip).contains(box) ? pixels : clip);
        return maskOf(picture);
    }
    const std::vector<Contour> contours = contoursOf(path, toPixels);
    QRect pixels;
    for (const Contour &contour : contours)
        pixels |= contour.pixels.intersected(clip);
    if (pixels.isEmpty())
        return {};
    Picture picture = emptyPicture(pixels);
    drawPolygons(picture, path, toPixels, contours, clip);
    return maskOf(picture);
}

} // namespace tessara
