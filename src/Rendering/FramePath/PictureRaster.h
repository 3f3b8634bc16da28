// A picture in pixels of the frame, as the platform's painter samples it.
#pragma once

#include "Rendering/Primitive.h"
#include "Rendering/SparseImage.h"

#include <QRect>

namespace tessara {

/// Rows of pixels that lie behind each other.
struct RasterRows
{
    const quint8 *pixels = nullptr;
    qsizetype rowBytes = 0;
    int count = 0;
    /// How much of each pixel an edge leaves, a byte each. Where there is none, nothing is
    /// weakened.
    const quint8 *coverage = nullptr;
    qsizetype coverageRowBytes = 0;
};

/// Drawn in the frame's own coordinates, since a painter's rounding depends on where a picture
/// begins. Pixels on an edge of its box or its mask are not weakened by it: coverage and opacity
/// have to be multiplied with each other before a pixel is multiplied with them.
class PictureRaster
{
public:
    /// `shown` is what a clip leaves of `area`.
    PictureRaster(const PlacedPicture &picture, const QTransform &toDevice, const QRect &area,
                  const QRect &shown);

    /// A part of the area. Good until the next call, which must ask for what lies below.
    RasterRows rows(const QRect &pixels);

private:
    void draw(const QRect &clip);
    void drawCoverage();
    void setUp(QPainter &painter, const QRect &clip) const;

    const PlacedPicture &m_picture;
    QTransform m_toDevice;
    QRect m_area;
    QRect m_shown;
    bool m_isStretched;
    bool m_hasSoftEdges;
    SparseImage m_image;    // of the area
    SparseImage m_coverage; // where there are soft edges
    int m_given = 0;        // rows from the top that nobody needs any more
};

} // namespace tessara
