// The orders in which a device takes the bytes of a frame.
#pragma once

#include <QtGlobal>

namespace tessara {

enum class FrameFormat {
    bgra, // B, G, R, A
    argb, // A, R, G, B
    yuv   // Cb, Y, Cr, Y: '2vuy', without alpha
};

/// What the pixels of a row take, in bytes; a pair of '2vuy' is never cut.
constexpr qsizetype rowBytesOf(FrameFormat format, int width)
{
    return format == FrameFormat::yuv ? (qsizetype(width) * 2 + 2) / 4 * 4 : qsizetype(width) * 4;
}

} // namespace tessara
