#include "Rendering/FramePath/PictureRaster.h"

#include <QPainter>

#include <cmath>

namespace tessara {

namespace {

// A painter puts a picture that isn't stretched, and a rectangular clip, at whole pixels, and
// rounds halves away from zero. Where its zero isn't the frame's, a hair tells `corner` in which
// direction it goes there; `inside` is on the same side of zero.
QTransform placedFrom(QPoint zero, const QTransform &toDevice, QPointF corner, QPointF inside)
{
    if (zero.isNull())
        return toDevice;
    constexpr double hair = 1e-7; // px
    const auto nudge = [](double place, double side) {
        const bool isHalf = std::abs(place - std::floor(place) - 0.5) < hair / 2;
        return isHalf ? std::copysign(hair, side) : 0;
    };
    const QPointF place = toDevice.map(corner);
    const QPointF side = toDevice.map(inside);
    return toDevice
           * QTransform::fromTranslate(nudge(place.x(), side.x()) - zero.x(),
                                       nudge(place.y(), side.y()) - zero.y());
}

bool isOnWholePixels(const QRectF &box)
{
    const QRectF whole = box.toAlignedRect();
    return box.left() == whole.left() && box.right() == whole.right() && box.top() == whole.top()
           && box.bottom() == whole.bottom();
}

} // namespace

PictureRaster::PictureRaster(const PlacedPicture &picture, const QTransform &toDevice,
                             const QRect &area, const QRect &shown)
    : m_picture(picture)
    , m_toDevice(toDevice)
    , m_area(area)
    , m_shown(shown)
    , m_isStretched(!isPixelForPixel(picture, toDevice))
    , m_hasSoftEdges(picture.mask
                     || (m_isStretched && !isOnWholePixels(toDevice.mapRect(picture.box))))
    , m_image(area.size(), QImage::Format_ARGB32_Premultiplied)
{
    if (!m_hasSoftEdges)
        return;
    m_coverage = SparseImage(area.size(), QImage::Format_Alpha8);
    draw(shown);
    drawCoverage();
}

// In the frame's coordinates, as far as the area has them.
void PictureRaster::setUp(QPainter &painter, const QRect &clip) const
{
    const QPoint zero = m_area.topLeft();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (clip != m_area)
        painter.setClipRect(clip.translated(-zero));
    if (m_picture.mask) {
        const QRectF box = m_picture.mask->controlPointRect();
        painter.setTransform(placedFrom(zero, m_toDevice, box.topLeft(), box.bottomRight()));
        painter.setClipPath(*m_picture.mask, Qt::IntersectClip);
    }
    const QPointF corner = m_picture.box.topLeft();
    painter.setTransform(placedFrom(zero, m_toDevice, corner, corner));
}

// A painter takes the spans of some rows at once, and samples what lies between two edges from
// where such a lot begins: with soft edges it is another picture if drawn in parts. A raster
// operation writes the pixels on a soft edge as if it were a hard one.
void PictureRaster::draw(const QRect &clip)
{
    QPainter painter(&m_image.image());
    setUp(painter, clip);
    if (m_hasSoftEdges)
        painter.setCompositionMode(QPainter::RasterOp_SourceOrDestination);
    painter.drawImage(m_picture.box, m_picture.image, m_picture.image.rect());
}

// A picture that isn't stretched lies on whole pixels, wherever its box does, and has no soft edges
// but those of its mask.
void PictureRaster::drawCoverage()
{
    constexpr double beside = 2; // px
    const QRectF &box = m_picture.box;
    QPainter painter(&m_coverage.image());
    setUp(painter, m_shown);
    painter.fillRect(m_isStretched ? box : box.adjusted(-beside, -beside, beside, beside),
                     Qt::white);
}

RasterRows PictureRaster::rows(const QRect &pixels)
{
    const QPoint from = pixels.topLeft() - m_area.topLeft();
    for (SparseImage *image : {&m_image, &m_coverage}) {
        if (!image->image().isNull())
            image->giveBack(m_given, from.y() - m_given);
    }
    m_given = from.y();
    if (!m_hasSoftEdges)
        draw({m_shown.left(), pixels.top(), m_shown.width(), pixels.height()});
    const QImage &image = m_image.image();
    RasterRows rows{image.constScanLine(from.y()) + qsizetype(from.x()) * 4, image.bytesPerLine(),
                    pixels.height()};
    if (m_hasSoftEdges) {
        const QImage &coverage = m_coverage.image();
        rows.coverage = coverage.constScanLine(from.y()) + from.x();
        rows.coverageRowBytes = coverage.bytesPerLine();
    }
    return rows;
}

} // namespace tessara
