// Paths of many shapes, which are known one by one.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <memory>
#include <span>
#include <vector>

namespace tessara {

/// Polygons that stand in many places, as a glyph's do.
struct OutlineShape
{
    QPainterPath path;
    QRectF box;         // of its points
    quint64 serial = 0; // shapes of a process with the same one have the same points

    /// `polygons` under a serial of its own; it has no curves, and no point that begins nothing.
    static OutlineShape of(const QPainterPath &polygons);
};

struct PlacedShape
{
    OutlineShape shape;
    QPointF position;
};

/// What became of a shape in an outline: the elements from the part's before up to `end`.
struct OutlinePart
{
    quint64 serial;
    QPointF position;
    QRectF box; // at that position
    int end;

    /// The same points at the same place.
    bool isSameAs(const OutlinePart &other) const
    {
        return serial == other.serial && position.x() == other.position.x()
               && position.y() == other.position.y();
    }
};

/// In the order of the path; none for a path that isn't made of shapes.
using OutlineParts = std::shared_ptr<const std::vector<OutlinePart>>;

/// Thousands of points that are compared, measured and cut by the hundreds of shapes that they
/// came with.
struct Outline
{
    QPainterPath path; // to be filled with the winding rule
    OutlineParts parts;
};

Outline outlineOf(std::span<const PlacedShape> shapes);

/// What `controlPointRect` tells of the path.
QRectF boxOf(const QPainterPath &path, const OutlineParts &parts);

} // namespace tessara
