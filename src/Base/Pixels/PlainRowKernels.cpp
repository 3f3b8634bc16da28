#include "Base/Pixels/PlainRowKernels.h"

#include <algorithm>
#include <cstring>

namespace tessara {
namespace {

/// Two channels of a pixel at a time, each with 16 bits to itself.
inline quint32 scale(quint32 pixel, quint32 factor)
{
    constexpr quint32 channels = 0x00FF00FF;
    constexpr quint32 halves = 0x00800080;
    const auto scaled = [&](quint32 pair) {
        const quint32 product = pair * factor;
        return product + (product >> 8 & channels) + halves;
    };
    return (scaled(pixel & channels) >> 8 & channels) | (scaled(pixel >> 8 & channels) & ~channels);
}

inline quint32 alphaOf(quint32 pixel)
{
    return pixel >> 24;
}

inline quint32 over(quint32 source, quint32 target)
{
    return source + scale(target, 255 - alphaOf(source));
}

void fill(quint32 *target, quint32 color, qsizetype pixels)
{
    std::fill_n(target, pixels, color);
}

void blendSolid(quint32 *target, quint32 color, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = over(color, target[x]);
}

void storeMask(quint32 *__restrict target, const quint8 *__restrict mask, quint32 color,
               qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = scale(color, mask[x]);
}

void blendMask(quint32 *__restrict target, const quint8 *__restrict mask, quint32 color,
               qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = over(scale(color, mask[x]), target[x]);
}

void storePicture(quint32 *target, const quint32 *source, qsizetype pixels)
{
    std::memcpy(target, source, std::size_t(pixels) * sizeof(quint32));
}

void blendPicture(quint32 *__restrict target, const quint32 *__restrict source, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = over(source[x], target[x]);
}

void storePictureAt(quint32 *__restrict target, const quint32 *__restrict source, int opacity,
                    qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = scale(source[x], quint32(opacity));
}

void blendPictureAt(quint32 *__restrict target, const quint32 *__restrict source, int opacity,
                    qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = over(scale(source[x], quint32(opacity)), target[x]);
}

void blendPictureThrough(quint32 *__restrict target, const quint32 *__restrict source,
                         const quint8 *__restrict mask, int opacity, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x)
        target[x] = over(scale(source[x], mask[x] * quint32(opacity + 1) >> 8), target[x]);
}

void mixRows(quint8 *__restrict target, const quint8 *__restrict first,
             const quint8 *__restrict second, int weight, qsizetype bytes)
{
    const auto ofFirst = quint16(256 - weight);
    const auto ofSecond = quint16(weight);
    for (qsizetype x = 0; x < bytes; ++x)
        target[x] = quint8(quint16(first[x] * ofFirst + second[x] * ofSecond + 128) >> 8);
}

} // namespace

const RowKernels &plainRowKernels()
{
    static constexpr RowKernels kernels{
        fill,           blendSolid,          storeMask,      blendMask,
        storePicture,   blendPicture,        storePictureAt, blendPictureAt,
        blendPictureAt, blendPictureThrough, mixRows};
    return kernels;
}

} // namespace tessara
