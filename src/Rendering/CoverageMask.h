// How much of each pixel a path covers.
#pragma once

#include <QPainterPath>
#include <QRect>
#include <QTransform>

#include "Rendering/Outline.h"

#include <vector>

namespace tessara {

struct CoverageMask
{
    QRect bounds;             // the smallest that holds all that is covered; empty for nothing
    std::vector<uchar> alpha; // rows from the top, bounds.width() bytes each

    const uchar *row(int y) const
    {
        return alpha.data() + size_t(y - bounds.top()) * size_t(bounds.width());
    }
};

/// The coverage of the pixels in `clip`, to the byte what a painter with antialiasing makes of the
/// path in an opaque colour on a transparent picture. For any thread, also of one path at once.
/// Those of its `parts` that lie above or below the clip take no time.
CoverageMask rasterizedPath(const QPainterPath &path, const QTransform &toPixels, const QRect &clip,
                            const OutlineParts &parts = {});

} // namespace tessara
