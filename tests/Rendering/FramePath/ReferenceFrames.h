// The slow way to a device's bytes, and how near to it a fast one has to come.
#pragma once

#include "Base/Pixels/FrameBytes.h"
#include "Rendering/FramePath/FrameTarget.h"
#include "Rendering/Primitive.h"

#include <QImage>

#include <vector>

namespace tessara {

class CanvasDocument;

/// The least bytes of a row, and some more.
FrameTarget frameTarget(FrameContent content, FrameFormat format, QSize size, qsizetype spare = 0);

/// `frame` scaled, converted and laid out in rows as `target` wants it.
FrameBytes referenceBytes(const QImage &frame, const FrameTarget &target);

/// A frame of B, G, R, A without padding, as a picture that stays valid as long as the bytes.
QImage imageOf(const FrameBytes &bytes, QSize size);

/// How far the channels of each pixel may be from those of the reference. What isn't named here may
/// not differ at all.
///
/// Edges of fills. A raster that begins elsewhere rounds the last bit of a place differently: 2 is
/// the most that was seen.
///
/// Pictures at an opacity, where something covers them in part. The painter multiplies coverage and
/// opacity, cuts the fraction, and fades the picture by the product; in a sprite the coverage has
/// been multiplied in before: 1.
///
/// Pictures with a mask. The painter steps through the picture from where each stretch of one
/// coverage begins, and rounds its steps: 1.
///
/// Layers that slide by a fraction t of a pixel. Between two pixels of a sprite lies what both of
/// them have in it, each by its share, where drawing from nothing covers the pixel anew. What a
/// pixel's window covers changes by no more than the window moves, and a straight line between two
/// points of such a curve that lie one pixel apart is off by 2 t (1 - t) at most: half of the range
/// for the thinnest line at t = 1/2, and nothing where three neighbours along the slide are covered
/// wholly or not at all. A picture of more than one pixel to a pixel of the frame changes faster by
/// as much. The rectangle to which a score bar or a picture is cut moves by whole pixels: along its
/// rim a column or row may be there or not. A picture less than two pixels wide or high lacks some
/// of its rows or columns, others at each place: the painter finds none of their pixels.
///
/// Where several primitives lie on each other, so do their tolerances.
class Tolerance
{
public:
    Tolerance(const CanvasDocument &document, QSize frame);

    int at(QPoint place) const { return m_channels[indexOf(place)]; }
    bool isSliding() const { return m_isSliding; }

private:
    static constexpr int ofPictures = 1;
    static constexpr int ofEdges = 2;
    static constexpr int ofSlides = 16; // beside the bend, as measured
    static constexpr int ofSampling = 1;

    std::size_t indexOf(QPoint place) const
    {
        return std::size_t(place.y()) * std::size_t(m_width) + std::size_t(place.x());
    }
    int &at(QPoint place) { return m_channels[indexOf(place)]; }
    void addResting(const Primitive &primitive, double opacity, const QTransform &toFrame,
                    QSize frame);
    void addSliding(const Primitive &primitive, const QTransform &toFrame, QSize frame,
                    QPointF offset, double fraction);

    int m_width;
    bool m_isSliding = false;
    std::vector<int> m_channels;
};

struct Difference
{
    int largest = 0;      // in a channel
    int beyond = 0;       // pixels that are further off than they may be
    int excess = 0;       // by how much at most
    QPoint worst{-1, -1}; // where
};

/// Both in the same order of channels.
Difference difference(const QImage &one, const QImage &other, const Tolerance &tolerance);

} // namespace tessara
