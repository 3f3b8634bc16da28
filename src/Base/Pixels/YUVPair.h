// Two pixels as one word of '2vuy', the one formula for all that convert.
#pragma once

#include <QtGlobal>

namespace tessara {

// BT.601 studio range in 8-bit fixed point: black is 16, white 235. Every intermediate value fits
// 16 bits, the luma unsigned and the chroma signed, so that a register holds twice as many.
struct Chroma
{
    qint16 u;
    qint16 v;
};

inline quint32 lumaOf(quint16 blue, quint16 green, quint16 red)
{
    return quint16(quint16(quint16(66 * red + 129 * green + 25 * blue + 128) >> 8) + 16);
}

inline Chroma chromaOf(qint16 blue, qint16 green, qint16 red)
{
    return {qint16(qint16(112 * blue - 74 * green - 38 * red + 128) >> 8),
            qint16(qint16(112 * red - 94 * green - 18 * blue + 128) >> 8)};
}

/// B, G, R, A twice to Cb, Y, Cr, Y, each with its first byte lowest.
inline quint32 yuvPair(quint32 first, quint32 second)
{
    const auto blue = [](quint32 pixel) { return quint16(pixel & 0xFF); };
    const auto green = [](quint32 pixel) { return quint16(pixel >> 8 & 0xFF); };
    const auto red = [](quint32 pixel) { return quint16(pixel >> 16 & 0xFF); };
    const Chroma one = chromaOf(qint16(blue(first)), qint16(green(first)), qint16(red(first)));
    const Chroma two = chromaOf(qint16(blue(second)), qint16(green(second)), qint16(red(second)));
    const auto cb = quint16((quint16(one.u + two.u) >> 1 & 0xFF) ^ 128);
    const auto cr = quint16((quint16(one.v + two.v) >> 1 & 0xFF) ^ 128);
    return cb | lumaOf(blue(first), green(first), red(first)) << 8 | quint32(cr) << 16
           | lumaOf(blue(second), green(second), red(second)) << 24;
}

} // namespace tessara
