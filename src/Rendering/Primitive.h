// The single drawing operations that layers are made of.
#pragma once

#include "Models/RGBAColor.h"
#include "Rendering/Outline.h"

#include <QImage>
#include <QPainterPath>
#include <QTransform>

#include <optional>
#include <variant>
#include <vector>

class QPainter;

namespace tessara {

/// How much of a primitive shows. Each fades by itself: an outline at half opacity lets the fill
/// shine through, which a layer faded as a whole would not.
struct Fading
{
    enum class Means {
        none,   // always as it is
        color,  // the opacity goes into the colour's alpha
        drawing // the colour stays, and the drawing fades
    };

    Means means = Means::drawing;
    double share = 1; // of the run opacity: the layer's own opacity, where it has a say

    /// `runOpacity` 0 to 1. Not limited to 1: a layer's own opacity isn't either.
    double opacity(double runOpacity) const { return share * runOpacity; }

    bool operator==(const Fading &) const = default;
};

/// An outline, filled by its own rule with one colour.
struct FilledPath
{
    QPainterPath path;
    RGBAColor color;
    OutlineParts parts{}; // of a path of polygons that is filled with the winding rule
};

/// An image stretched into a box, smoothly.
struct PlacedPicture
{
    QImage image; // premultiplied
    QRectF box;
    std::optional<QPainterPath> mask{}; // where it shows
    QPointF slide{};                    // canvas units that a take has moved it by
};

/// Whether a painter neither stretches a picture nor blends it between pixels: it goes to the
/// whole pixel that is nearest to the corner of its box.
bool isPixelForPixel(const PlacedPicture &picture, const QTransform &toDevice);

/// One drawing operation of a layer, without its opacity.
struct Primitive
{
    std::variant<FilledPath, PlacedPicture> what;
    QTransform toCanvas; // from the coordinates of what is drawn, canvas units, y downward
    Fading fading;
    std::optional<QRectF> clip{}; // canvas units, widened to whole pixels

    bool isPicture() const { return std::holds_alternative<PlacedPicture>(what); }
};

/// `canvasToDevice` must be a shift and a scale alone.
QRect clipInPixels(const QRectF &clip, const QTransform &canvasToDevice);

/// The colour that a painter blends for a fill, premultiplied; `drawingOpacity` is the painter's.
quint32 blendedColor(const RGBAColor &color, const Fading &fading, double runOpacity);
/// The factor by which a painter weakens an image, 0 to 255.
int blendedOpacity(const Fading &fading, double runOpacity);

/// With the painter in canvas units.
void drawPrimitive(QPainter &painter, const Primitive &primitive, double runOpacity);

} // namespace tessara
