// The inner loops that compose a frame row by row, in the widest registers of this processor.
#pragma once

#include <QtGlobal>

namespace tessara {

/// Rows are composed in whole cells of this many pixels.
constexpr int cellWidth = 8;

/// Pixels are premultiplied B, G, R, A bytes, a word with the alpha on top, and no channel of one
/// exceeds its alpha. `pixels` is a positive multiple of `cellWidth`. Pixels may begin at any
/// multiple of 4 bytes and masks anywhere; what is read and what is written never overlap.
///
/// `blend...` puts a source over the target. `store...` does so over a transparent one, which it
/// doesn't read. Every product is rounded as QPainter rounds it: t = x * a, then
/// (t + (t >> 8) + 128) >> 8.
struct RowKernels
{
    /// One colour, over whatever was there.
    void (*fill)(quint32 *target, quint32 color, qsizetype pixels);
    void (*blendSolid)(quint32 *target, quint32 color, qsizetype pixels);

    /// One colour through a mask of a byte a pixel.
    void (*storeMask)(quint32 *target, const quint8 *mask, quint32 color, qsizetype pixels);
    void (*blendMask)(quint32 *target, const quint8 *mask, quint32 color, qsizetype pixels);

    void (*storePicture)(quint32 *target, const quint32 *source, qsizetype pixels);
    void (*blendPicture)(quint32 *target, const quint32 *source, qsizetype pixels);

    /// `opacity` is 0 to 255.
    void (*storePictureAt)(quint32 *target, const quint32 *source, int opacity, qsizetype pixels);
    void (*blendPictureAt)(quint32 *target, const quint32 *source, int opacity, qsizetype pixels);
    /// The same result, faster, for a source whose every alpha is 255.
    void (*blendOpaquePictureAt)(quint32 *target, const quint32 *source, int opacity,
                                 qsizetype pixels);
    /// Through a mask of a byte a pixel. A painter multiplies it with the opacity first, and cuts
    /// the fraction: (mask * (opacity + 1)) >> 8 is what fades the pixel.
    void (*blendPictureThrough)(quint32 *target, const quint32 *source, const quint8 *mask,
                                int opacity, qsizetype pixels);

    /// Of every byte (first * (256 - weight) + second * weight + 128) >> 8: a row of pixels or of a
    /// mask between two others. `weight` is 0 to 256, `bytes` a positive multiple of 8.
    void (*mixRows)(quint8 *target, const quint8 *first, const quint8 *second, int weight,
                    qsizetype bytes);
};

/// The kernels for this processor; fetched once a frame, they cost one load a call.
const RowKernels &rowKernels();

/// Asks for a row ahead of its use, a cache line at a time.
inline void prefetchRow(const void *row, qsizetype bytes)
{
    constexpr qsizetype cacheLine = 64;
    const auto *place = static_cast<const char *>(row);
    for (qsizetype offset = 0; offset < bytes; offset += cacheLine)
        __builtin_prefetch(place + offset);
}

} // namespace tessara
