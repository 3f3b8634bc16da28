// Where an outline looks otherwise than another that it came from.
#pragma once

#include <QTransform>

#include "Rendering/Outline.h"

#include <optional>

namespace tessara {

/// Rows of pixels, `top` to `bottom`.
struct OutlineRows
{
    int top = 0;
    int bottom = -1;
};

/// The rows in which two outlines may cover otherwise: those of the parts between the first that
/// differs and the last. None for equal ones. Nothing is told of what isn't made of parts, nor
/// where it is turned.
std::optional<OutlineRows> changedRows(const OutlineParts &before, const OutlineParts &after,
                                       const QTransform &toPixels);

} // namespace tessara
