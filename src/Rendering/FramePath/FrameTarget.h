// What an output takes of a frame.
#pragma once

#include "Base/Pixels/FrameFormat.h"

#include <QSize>

namespace tessara {

enum class FrameContent {
    fill,                  // the colour with its alpha
    fillWithMirroredAlpha, // the colour with the alpha upside down against it
    key                    // the alpha as opaque grey
};

struct FrameTarget
{
    FrameContent content = FrameContent::fill;
    FrameFormat format = FrameFormat::bgra;
    QSize size;             // px; the frame is stretched where it has another
    qsizetype rowBytes = 0; // at least those of the pixels; what is beyond them is 0

    bool operator==(const FrameTarget &) const = default;
};

} // namespace tessara
