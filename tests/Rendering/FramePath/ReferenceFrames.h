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
/// Layers at rest: 1, where something covers a pixel in part, or where a picture's sprite was made
/// in another place. The platform rounds places and samples, and the last bit of a sum decides
/// which way; it is another one where the sum has begun elsewhere. Nothing adds up: 1 is all that a
/// frame may be off.
///
/// Layers that slide by a fraction t of a pixel. Between two pixels of a sprite lies what both of
/// them have in it, each by its share, where drawing from nothing covers the pixel anew. What a
/// pixel's window covers changes by no more than the window moves, and a straight line between two
/// points of such a curve that lie one pixel apart is off by 2 t (1 - t) at most: half of the range
/// for the thinnest line at t = 1/2, and nothing where three neighbours along the slide are covered
/// wholly or not at all. A picture of more than one pixel to a pixel of the frame changes faster by
/// as much; of more than two the painter leaves some out, and what three neighbours show tells
/// nothing of them. The rectangle to which a score bar or a picture is cut moves by whole pixels:
/// along its rim a column or row may be there or not. A picture less than two pixels wide or high
/// lacks some of its rows or columns, others at each place: the painter finds none of their pixels.
///
/// Where several layers slide over each other, their tolerances add up.
class Tolerance
{
public:
    /// Of frames whose sprites were all made for them, or may have been kept from others.
    Tolerance(const CanvasDocument &document, QSize frame, bool areSpritesKept);

    int at(QPoint place) const { return m_resting[indexOf(place)] + m_sliding[indexOf(place)]; }
    bool isSliding() const { return m_isSliding; }

private:
    static constexpr int ofRounding = 1;
    static constexpr int ofSlides = 16; // beside the bend, as measured

    std::size_t indexOf(QPoint place) const
    {
        return std::size_t(place.y()) * std::size_t(m_width) + std::size_t(place.x());
    }
    void addResting(const Primitive &primitive, const QTransform &toFrame, QSize frame,
                    bool isElsewhere);
    void addSliding(const Primitive &primitive, const QTransform &toFrame, QSize frame,
                    QPointF offset, double fraction);

    int m_width;
    bool m_isSliding = false;
    std::vector<int> m_resting; // of each pixel
    std::vector<int> m_sliding;
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
