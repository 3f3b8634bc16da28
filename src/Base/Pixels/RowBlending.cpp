#include "Base/Pixels/RowBlending.h"

#include <cstring>

#include "Base/Pixels/PlainRowKernels.h"

// This file is compiled once for each generation of vector units, each in a namespace of its own.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Base/Pixels/RowBlending.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tessara {
namespace HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_SCALAR

const RowKernels &kernels()
{
    return plainRowKernels();
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using Pixels = hn::ScalableTag<quint32>;
static_assert(hn::MaxLanes(Pixels()) <= 2 * cellWidth);
template <class D>
using BytesOf = hn::Repartition<quint8, D>;
template <class D>
using LanesOf = hn::Repartition<quint16, D>;
template <class D>
using VectorOf = hn::VFromD<D>;

/// Calls `step` for every vector of pixels, and once more where a cell is left over.
template <class Step>
HWY_INLINE void forCells(qsizetype pixels, const Step &step)
{
    const Pixels d;
    constexpr qsizetype width = hn::MaxLanes(Pixels());
    qsizetype x = 0;
    for (; x + width <= pixels; x += width)
        step(d, x);
    if constexpr (width > cellWidth) {
        if (x < pixels)
            step(hn::Half<Pixels>(), x);
    }
}

template <class D>
HWY_INLINE auto spread(D, VectorOf<D> pixels, const quint8 (&table)[16])
{
    const BytesOf<D> bytes;
    const auto from = hn::LoadDup128(bytes, table);
    return hn::BitCast(LanesOf<D>(), hn::TableLookupBytesOr0(hn::BitCast(bytes, pixels), from));
}

// A byte b as a 16-bit lane of 257 * b, the blue and red of each pixel, or the green and alpha.
alignas(16) constexpr quint8 blueAndRed[16] = {0, 0, 2,  2,  4,  4,  6,  6,
                                               8, 8, 10, 10, 12, 12, 14, 14};
alignas(16) constexpr quint8 greenAndAlpha[16] = {1, 1, 3,  3,  5,  5,  7,  7,
                                                  9, 9, 11, 11, 13, 13, 15, 15};
// A pixel's alpha as 256 * alpha in both of its lanes.
constexpr quint8 zero = 0x80;
alignas(16) constexpr quint8 alphaFactor[16] = {zero, 3,  zero, 3,  zero, 7,  zero, 7,
                                                zero, 11, zero, 11, zero, 15, zero, 15};
// The same of bytes that follow each other, four a block.
alignas(64) constexpr quint8 maskFactor[64] = {
    zero, 0,  zero, 0,  zero, 1,  zero, 1,  zero, 2,  zero, 2,  zero, 3,  zero, 3,
    zero, 4,  zero, 4,  zero, 5,  zero, 5,  zero, 6,  zero, 6,  zero, 7,  zero, 7,
    zero, 8,  zero, 8,  zero, 9,  zero, 9,  zero, 10, zero, 10, zero, 11, zero, 11,
    zero, 12, zero, 12, zero, 13, zero, 13, zero, 14, zero, 14, zero, 15, zero, 15};

/// What a product is added to, the two halves of it as `scaleOnto` takes them.
template <class D>
struct Onto
{
    VectorOf<LanesOf<D>> even; // 2 * value
    VectorOf<LanesOf<D>> odd;  // 256 * value + 128
};

template <class D>
HWY_INLINE Onto<D> ontoNothing(D)
{
    const LanesOf<D> lanes;
    return {hn::Zero(lanes), hn::Set(lanes, quint16(128))};
}

template <class D>
HWY_INLINE Onto<D> ontoColor(D d, quint32 color)
{
    const LanesOf<D> lanes;
    const auto pixels = hn::BitCast(lanes, hn::Set(d, color));
    const auto even = hn::And(pixels, hn::Set(lanes, quint16(0xFF)));
    const auto odd = hn::And(pixels, hn::Set(lanes, quint16(0xFF00)));
    return {hn::Add(even, even), hn::Add(odd, hn::Set(lanes, quint16(128)))};
}

/// onto + pixels * factor / 256, with `factor` 256 * 0 to 255 a lane. The rounding is the one that
/// is promised: with t = x * a, t + (t >> 8) is the upper half of 257 * x * 256 * a, and
/// (t + (t >> 8) + 128) >> 8 half of one more than the upper half of 257 * x * 2 * a.
template <class D>
HWY_INLINE VectorOf<D> scaleOnto(Onto<D> onto, D d, VectorOf<D> pixels, VectorOf<LanesOf<D>> factor)
{
    const LanesOf<D> lanes;
    const auto even = hn::AverageRound(
        hn::MulHigh(spread(d, pixels, blueAndRed), hn::ShiftRight<7>(factor)), onto.even);
    const auto odd = hn::Add(hn::MulHigh(spread(d, pixels, greenAndAlpha), factor), onto.odd);
    return hn::BitCast(d, hn::OrAnd(even, odd, hn::Set(lanes, quint16(0xFF00))));
}

template <class D>
HWY_INLINE VectorOf<D> scale(D d, VectorOf<D> pixels, VectorOf<LanesOf<D>> factor)
{
    return scaleOnto(ontoNothing(d), d, pixels, factor);
}

template <class D>
HWY_INLINE VectorOf<D> addBytes(D d, VectorOf<D> one, VectorOf<D> two)
{
    const BytesOf<D> bytes;
    return hn::BitCast(d, hn::Add(hn::BitCast(bytes, one), hn::BitCast(bytes, two)));
}

template <class D>
HWY_INLINE VectorOf<D> over(D d, VectorOf<D> source, VectorOf<D> target)
{
    const auto factor = spread(d, hn::Not(source), alphaFactor);
    return addBytes(d, source, scale(d, target, factor));
}

template <class D>
HWY_INLINE auto constantFactor(D, int factor)
{
    return hn::Set(LanesOf<D>(), quint16(factor << 8));
}

/// The mask bytes of a vector of pixels, as factors.
template <class D>
HWY_INLINE auto loadMask(D d, const quint8 *mask)
{
    const BytesOf<D> bytes;
    const auto from = hn::Load(bytes, maskFactor);
    const auto lookUp = [&](auto loaded) HWY_ATTR {
        return hn::BitCast(LanesOf<D>(), hn::TableLookupBytesOr0(loaded, from));
    };
    if constexpr (hn::MaxLanes(d) == 16) {
        return lookUp(hn::LoadDup128(bytes, mask));
    } else if constexpr (hn::MaxLanes(d) == 8) {
        uint64_t word;
        std::memcpy(&word, mask, sizeof word);
        return lookUp(hn::BitCast(bytes, hn::Set(hn::Repartition<uint64_t, D>(), word)));
    } else {
        static_assert(hn::MaxLanes(d) == 4);
        quint32 word;
        std::memcpy(&word, mask, sizeof word);
        return lookUp(hn::BitCast(bytes, hn::Set(d, word)));
    }
}

constexpr int alphaOf(quint32 color)
{
    return int(color >> 24);
}

void fill(quint32 *target, quint32 color, qsizetype pixels)
{
    forCells(pixels,
             [&](auto d, qsizetype x) HWY_ATTR { hn::StoreU(hn::Set(d, color), d, target + x); });
}

void blendSolid(quint32 *target, quint32 color, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const auto factor = constantFactor(d, 255 - alphaOf(color));
        const auto below = hn::LoadU(d, target + x);
        hn::StoreU(scaleOnto(ontoColor(d, color), d, below, factor), d, target + x);
    });
}

void storeMask(quint32 *target, const quint8 *mask, quint32 color, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        hn::StoreU(scale(d, hn::Set(d, color), loadMask(d, mask + x)), d, target + x);
    });
}

void blendMask(quint32 *target, const quint8 *mask, quint32 color, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const auto source = scale(d, hn::Set(d, color), loadMask(d, mask + x));
        hn::StoreU(over(d, source, hn::LoadU(d, target + x)), d, target + x);
    });
}

void storePicture(quint32 *target, const quint32 *source, qsizetype pixels)
{
    std::memcpy(target, source, std::size_t(pixels) * sizeof(quint32));
}

void blendPicture(quint32 *target, const quint32 *source, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const auto above = hn::LoadU(d, source + x);
        hn::StoreU(over(d, above, hn::LoadU(d, target + x)), d, target + x);
    });
}

void storePictureAt(quint32 *target, const quint32 *source, int opacity, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const auto factor = constantFactor(d, opacity);
        hn::StoreU(scale(d, hn::LoadU(d, source + x), factor), d, target + x);
    });
}

void blendPictureAt(quint32 *target, const quint32 *source, int opacity, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const auto factor = constantFactor(d, opacity);
        const auto above = scale(d, hn::LoadU(d, source + x), factor);
        hn::StoreU(over(d, above, hn::LoadU(d, target + x)), d, target + x);
    });
}

void blendOpaquePictureAt(quint32 *target, const quint32 *source, int opacity, qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const auto above = scale(d, hn::LoadU(d, source + x), constantFactor(d, opacity));
        const auto below = scale(d, hn::LoadU(d, target + x), constantFactor(d, 255 - opacity));
        hn::StoreU(addBytes(d, above, below), d, target + x);
    });
}

void blendPictureThrough(quint32 *target, const quint32 *source, const quint8 *mask, int opacity,
                         qsizetype pixels)
{
    forCells(pixels, [&](auto d, qsizetype x) HWY_ATTR {
        const LanesOf<decltype(d)> lanes;
        const auto share = hn::Set(lanes, quint16(opacity + 1));
        const auto factor = hn::ShiftLeft<8>(hn::MulHigh(loadMask(d, mask + x), share));
        const auto above = scale(d, hn::LoadU(d, source + x), factor);
        hn::StoreU(over(d, above, hn::LoadU(d, target + x)), d, target + x);
    });
}

/// first * (256 - weight) + second * weight is 256 * first + (second - first) * weight, where the
/// product may wrap round: the sum fits 16 bits.
template <class D>
HWY_INLINE auto mix(D bytes, VectorOf<D> first, VectorOf<D> second, int weight)
{
    const hn::Repartition<quint16, D> lanes;
    const auto factor = hn::Set(lanes, quint16(weight));
    const auto half = hn::Set(lanes, quint16(128));
    const auto low = hn::Set(lanes, quint16(0xFF));
    const auto high = hn::Set(lanes, quint16(0xFF00));
    const auto one = hn::BitCast(lanes, first);
    const auto two = hn::BitCast(lanes, second);
    const auto mixed = [&](auto a, auto b) HWY_ATTR {
        const auto difference = hn::Mul(hn::Sub(b, a), factor);
        return hn::Add(hn::Add(hn::ShiftLeft<8>(a), half), difference);
    };
    const auto even = mixed(hn::And(one, low), hn::And(two, low));
    const auto odd = mixed(hn::ShiftRight<8>(one), hn::ShiftRight<8>(two));
    return hn::BitCast(bytes, hn::OrAnd(hn::ShiftRight<8>(even), odd, high));
}

void mixRows(quint8 *target, const quint8 *first, const quint8 *second, int weight, qsizetype bytes)
{
    const auto step = [&](auto d, qsizetype x) HWY_ATTR {
        hn::StoreU(mix(d, hn::LoadU(d, first + x), hn::LoadU(d, second + x), weight), d,
                   target + x);
    };
    constexpr qsizetype width = hn::MaxLanes(BytesOf<Pixels>());
    qsizetype x = 0;
    for (; x + width <= bytes; x += width)
        step(BytesOf<Pixels>(), x);
    // What is left is less than a vector: halves of it, down to 8 bytes.
    const auto stepIfLeft = [&](auto d) HWY_ATTR {
        if (x + qsizetype(hn::MaxLanes(d)) <= bytes) {
            step(d, x);
            x += qsizetype(hn::MaxLanes(d));
        }
    };
    if constexpr (width > 32)
        stepIfLeft(hn::CappedTag<quint8, 32>());
    if constexpr (width > 16)
        stepIfLeft(hn::CappedTag<quint8, 16>());
    stepIfLeft(hn::CappedTag<quint8, 8>());
}

const RowKernels &kernels()
{
    static constexpr RowKernels kernels{fill,
                                        blendSolid,
                                        storeMask,
                                        blendMask,
                                        storePicture,
                                        blendPicture,
                                        storePictureAt,
                                        blendPictureAt,
                                        blendOpaquePictureAt,
                                        blendPictureThrough,
                                        mixRows};
    return kernels;
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace tessara
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tessara {

HWY_EXPORT(kernels);

const RowKernels &rowKernels()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

} // namespace tessara
#endif
