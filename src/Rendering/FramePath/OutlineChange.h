// Where an outline looks otherwise than another that it came from.
#pragma once

#include <QPainterPath>
#include <QTransform>

#include <optional>

namespace tessara {

/// Rows of pixels, `top` to `bottom`.
struct OutlineRows
{
    int top = 0;
    int bottom = -1;
};

/// The rows in which two outlines of straight lines may cover otherwise: those of the polygons
/// between the first that differs and the last. None for equal ones. Nothing is told of outlines
/// with curves or of different rules, nor where they are turned.
std::optional<OutlineRows> changedRows(const QPainterPath &before, const QPainterPath &after,
                                       const QTransform &toPixels);

} // namespace tessara
