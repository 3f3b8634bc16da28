// The last step of a composed row: from B, G, R, A in the cache to a row of the card's frame.
#pragma once

#include <QtGlobal>

namespace tessara {

/// Any positive number of pixels and targets anywhere. Nothing is written past the target's last
/// pixel; a source begins at a multiple of 4 bytes and may be read up to 64 bytes past its end.
struct OutputKernels
{
    using Convert = void (*)(quint8 *target, const quint32 *source, qsizetype pixels);
    using ConvertMirrored = void (*)(quint8 *target, const quint32 *color,
                                     const quint32 *alphaSource, qsizetype pixels);

    Convert bgra;
    Convert argb;
    /// The alpha as opaque grey: (a, a, a, 255) and (255, a, a, a).
    Convert key;
    Convert keyARGB;
    /// Cb, Y, Cr, Y as `convertBGRATo2vuy` computes them; an odd last pixel makes a pair with
    /// itself.
    Convert yuv;
    Convert keyYUV;
    /// The colour of one row with the alpha of another.
    ConvertMirrored mirrored;
    ConvertMirrored mirroredARGB;
};

/// The kernels for this processor. They write past the cache: rows are in memory, for other threads
/// and for the card, after `finishStreaming`.
const OutputKernels &outputKernels();
void finishStreaming();

} // namespace tessara
