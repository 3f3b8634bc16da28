#include "Base/Pixels/RowOutput.h"

#include <cstring>

#include "Base/Pixels/YUVPair.h"

// This file is compiled once for each generation of vector units, each in a namespace of its own.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Base/Pixels/RowOutput.cpp"
#include <hwy/cache_control.h>
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace tessara {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr quint32 alphaMask = 0xFF000000;

// Each conversion tells one word of the target, and below it, where there are vectors, as many as
// fit one. A word is a pixel, or a pair of pixels in '2vuy'.

#if HWY_TARGET != HWY_SCALAR

using Words = hn::ScalableTag<quint32>;
using Bytes = hn::Repartition<quint8, Words>;
using Lanes = hn::Repartition<quint16, Words>;
using WordVector = hn::VFromD<Words>;
using LaneVector = hn::VFromD<Lanes>;
constexpr qsizetype vectorWords = hn::MaxLanes(Words());

constexpr quint8 zero = 0x80;

HWY_INLINE WordVector shuffled(WordVector words, const quint8 (&table)[16])
{
    const auto from = hn::LoadDup128(Bytes(), table);
    return hn::BitCast(Words(), hn::TableLookupBytesOr0(hn::BitCast(Bytes(), words), from));
}

HWY_INLINE LaneVector shuffledLanes(const quint32 *source, const quint8 (&table)[16])
{
    return hn::BitCast(Lanes(), shuffled(hn::LoadU(Words(), source), table));
}

HWY_INLINE LaneVector lanes(int value)
{
    return hn::Set(Lanes(), quint16(value));
}

/// To multiply by. A compiler that knew the value would rather shift and add, which takes longer;
/// so it is set up once a row and out of its sight.
HWY_INLINE LaneVector factor(int value)
{
    asm("" : "+r"(value));
    return lanes(value);
}

/// Words that were computed in blocks of four pixels of the first and four of the second half,
/// in their order.
HWY_INLINE WordVector inOrder(WordVector words)
{
    if constexpr (vectorWords == 4) {
        return words;
    } else {
        alignas(64) static constexpr qint32 of8[16] = {0, 1, 4, 5, 2, 3, 6, 7};
        alignas(64) static constexpr qint32 of16[16] = {0, 1, 4, 5, 8,  9,  12, 13,
                                                        2, 3, 6, 7, 10, 11, 14, 15};
        const auto &order = vectorWords == 8 ? of8 : of16;
        return hn::TableLookupLanes(words, hn::SetTableIndices(Words(), order));
    }
}

alignas(16) constexpr quint8 reversed[16] = {3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12};

#endif

struct ToBGRA
{
    const quint32 *source;

    quint32 word(qsizetype x) const { return source[x]; }
#if HWY_TARGET != HWY_SCALAR
    HWY_INLINE WordVector words(qsizetype x) const
    {
        return hn::LoadU(Words(), source + x);
    }
#endif
};

template <class Inner>
struct Reversed
{
    Inner inner;

    quint32 word(qsizetype x) const { return __builtin_bswap32(inner.word(x)); }
#if HWY_TARGET != HWY_SCALAR
    HWY_INLINE WordVector words(qsizetype x) const
    {
        return shuffled(inner.words(x), reversed);
    }
#endif
};

struct ToKey
{
    const quint32 *source;

    quint32 word(qsizetype x) const { return alphaMask | (source[x] >> 24) * 0x010101; }
#if HWY_TARGET != HWY_SCALAR
    HWY_INLINE WordVector words(qsizetype x) const
    {
        alignas(16) static constexpr quint8 alphas[16] = {3,  3,  3,  zero, 7,  7,  7,  zero,
                                                          11, 11, 11, zero, 15, 15, 15, zero};
        const WordVector grey = shuffled(hn::LoadU(Words(), source + x), alphas);
        return hn::Or(grey, hn::Set(Words(), alphaMask));
    }
#endif
};

struct ToKeyARGB
{
    const quint32 *source;

    quint32 word(qsizetype x) const { return 0xFF | (source[x] >> 24) * 0x01010100; }
#if HWY_TARGET != HWY_SCALAR
    HWY_INLINE WordVector words(qsizetype x) const
    {
        alignas(16) static constexpr quint8 alphas[16] = {zero, 3,  3,  3,  zero, 7,  7,  7,
                                                          zero, 11, 11, 11, zero, 15, 15, 15};
        const WordVector grey = shuffled(hn::LoadU(Words(), source + x), alphas);
        return hn::Or(grey, hn::Set(Words(), quint32(0xFF)));
    }
#endif
};

struct ToMirrored
{
    const quint32 *color;
    const quint32 *alphaSource;

    quint32 word(qsizetype x) const
    {
        return (color[x] & ~alphaMask) | (alphaSource[x] & alphaMask);
    }
#if HWY_TARGET != HWY_SCALAR
    HWY_INLINE WordVector words(qsizetype x) const
    {
        const WordVector mask = hn::Set(Words(), alphaMask);
        const WordVector alpha = hn::LoadU(Words(), alphaSource + x);
        return hn::OrAnd(hn::AndNot(mask, hn::LoadU(Words(), color + x)), alpha, mask);
    }
#endif
};

struct ToYUV
{
    const quint32 *source;

    quint32 word(qsizetype pair) const { return yuvPair(source[2 * pair], source[2 * pair + 1]); }
#if HWY_TARGET != HWY_SCALAR
    LaneVector of25 = factor(25);
    LaneVector of66 = factor(66);
    LaneVector of220 = factor(220);
    LaneVector of112 = factor(112);
    LaneVector of38 = factor(38);
    LaneVector of18 = factor(18);

    HWY_INLINE WordVector words(qsizetype pair) const
    {
        alignas(16) static constexpr quint8 blueAndGreen[16] = {
            0, zero, 4, zero, 8, zero, 12, zero, 1, zero, 5, zero, 9, zero, 13, zero};
        alignas(16) static constexpr quint8 redBelow[16] = {
            2, zero, 6, zero, 10, zero, 14, zero, zero, zero, zero, zero, zero, zero, zero, zero};
        alignas(16) static constexpr quint8 redAbove[16] = {
            zero, zero, zero, zero, zero, zero, zero, zero, 2, zero, 6, zero, 10, zero, 14, zero};
        const hn::Repartition<uint64_t, Words> halves;
        const quint32 *first = source + 2 * pair;
        const quint32 *second = first + vectorWords;
        const auto ofFirst = hn::BitCast(halves, shuffledLanes(first, blueAndGreen));
        const auto ofSecond = hn::BitCast(halves, shuffledLanes(second, blueAndGreen));
        const auto blue = hn::BitCast(Lanes(), hn::InterleaveLower(halves, ofFirst, ofSecond));
        const auto green = hn::BitCast(Lanes(), hn::InterleaveUpper(halves, ofFirst, ofSecond));
        const auto red = hn::Or(shuffledLanes(first, redBelow), shuffledLanes(second, redAbove));

        // The coefficients of chroma add up to 0 and those of luma to 220, so that green can be
        // taken off the others. Sums wrap round on their way to where they fit 16 bits.
        const auto b = hn::Sub(blue, green);
        const auto r = hn::Sub(red, green);
        const auto luma = hn::Add(hn::Add(hn::Mul(b, of25), hn::Mul(r, of66)),
                                  hn::Add(hn::Mul(green, of220), lanes(128 + (16 << 8))));
        // 128 is added to the chroma of each pixel, so that shifts need no sign.
        const auto offset = lanes(128 + (128 << 8));
        const auto u =
            hn::ShiftRight<8>(hn::Add(hn::Sub(hn::Mul(b, of112), hn::Mul(r, of38)), offset));
        const auto v =
            hn::ShiftRight<8>(hn::Add(hn::Sub(hn::Mul(r, of112), hn::Mul(b, of18)), offset));
        // Neighbours are in one word: u below the other's v, and the other two exchanged.
        alignas(16) static constexpr quint8 exchanged[16] = {2,  3,  0, 1, 6,  7,  4,  5,
                                                             10, 11, 8, 9, 14, 15, 12, 13};
        const auto oneOfEach = hn::OddEven(v, u);
        const auto others = shuffled(hn::BitCast(Words(), hn::OddEven(u, v)), exchanged);
        const auto chroma = hn::ShiftRight<1>(hn::Add(oneOfEach, hn::BitCast(Lanes(), others)));
        return inOrder(hn::BitCast(Words(), hn::OrAnd(chroma, luma, lanes(0xFF00))));
    }
#endif
};

struct ToKeyYUV
{
    const quint32 *source;

    quint32 word(qsizetype pair) const
    {
        const auto grey = [this](qsizetype x) { return (source[x] >> 24) * 0x010101; };
        return yuvPair(grey(2 * pair), grey(2 * pair + 1));
    }
#if HWY_TARGET != HWY_SCALAR
    LaneVector of220 = factor(66 + 129 + 25);

    /// The coefficients of grey add up to 220 for luma, and to 0 for chroma, which stays at 128.
    HWY_INLINE WordVector words(qsizetype pair) const
    {
        alignas(16) static constexpr quint8 alphaBelow[16] = {
            3, zero, 7, zero, 11, zero, 15, zero, zero, zero, zero, zero, zero, zero, zero, zero};
        alignas(16) static constexpr quint8 alphaAbove[16] = {
            zero, zero, zero, zero, zero, zero, zero, zero, 3, zero, 7, zero, 11, zero, 15, zero};
        const quint32 *first = source + 2 * pair;
        const auto grey = hn::Or(shuffledLanes(first, alphaBelow),
                                 shuffledLanes(first + vectorWords, alphaAbove));
        const auto luma = hn::Add(hn::Mul(grey, of220), lanes(128 + (16 << 8)));
        return inOrder(hn::BitCast(Words(), hn::OrAnd(lanes(128), luma, lanes(0xFF00))));
    }
#endif
};

HWY_INLINE void storeWord(quint8 *target, quint32 word)
{
    std::memcpy(target, &word, sizeof word);
}

#if HWY_TARGET == HWY_SCALAR

template <class Conversion>
void writeRow(quint8 *target, qsizetype words, const Conversion &conversion)
{
    for (qsizetype x = 0; x < words; ++x)
        storeWord(target + 4 * x, conversion.word(x));
}

#else

template <class Conversion>
HWY_INLINE void storeVector(quint8 *target, qsizetype x, const Conversion &conversion)
{
    hn::StoreU(hn::BitCast(Bytes(), conversion.words(x)), Bytes(), target + 4 * x);
}

/// Where the row isn't made of whole aligned vectors, its first and its last overlap another. Past
/// the cache, since the card reads a frame and nobody else: everything dissolving takes 0.77 of the
/// time of plain stores at 2160p, with a key as well 0.68, and at 1080p 0.73 and 0.56. Asking for
/// the memory ahead came between the two, and the smallest changes take 1.04 at most.
template <class Conversion>
HWY_INLINE void writeRow(quint8 *target, qsizetype words, const Conversion &conversion)
{
    if (words < vectorWords) {
        for (qsizetype x = 0; x < words; ++x)
            storeWord(target + 4 * x, conversion.word(x));
        return;
    }
    qsizetype x = 0;
    const auto address = reinterpret_cast<quintptr>(target);
    if (address % 4 == 0) {
        x = qsizetype((0 - address) / 4 % vectorWords);
        if (x > 0)
            storeVector(target, 0, conversion);
        for (; x + vectorWords <= words; x += vectorWords)
            hn::Stream(hn::BitCast(Bytes(), conversion.words(x)), Bytes(), target + 4 * x);
    } else {
        for (; x + vectorWords <= words; x += vectorWords)
            storeVector(target, x, conversion);
    }
    if (x < words)
        storeVector(target, words - vectorWords, conversion);
}

#endif

template <class Conversion>
void convert(quint8 *target, const quint32 *source, qsizetype pixels)
{
    writeRow(target, pixels, Conversion{source});
}

void convertReversed(quint8 *target, const quint32 *source, qsizetype pixels)
{
    writeRow(target, pixels, Reversed<ToBGRA>{{source}});
}

template <class Conversion>
void convertPairs(quint8 *target, const quint32 *source, qsizetype pixels)
{
    const qsizetype pairs = pixels / 2;
    writeRow(target, pairs, Conversion{source});
    if (pixels % 2 != 0) {
        const quint32 last[2] = {source[pixels - 1], source[pixels - 1]};
        storeWord(target + 4 * pairs, Conversion{last}.word(0));
    }
}

void mirror(quint8 *target, const quint32 *color, const quint32 *alphaSource, qsizetype pixels)
{
    writeRow(target, pixels, ToMirrored{color, alphaSource});
}

void mirrorReversed(quint8 *target, const quint32 *color, const quint32 *alphaSource,
                    qsizetype pixels)
{
    writeRow(target, pixels, Reversed<ToMirrored>{{color, alphaSource}});
}

const OutputKernels &kernels()
{
    static constexpr OutputKernels kernels{
        convert<ToBGRA>,     convertReversed,        convert<ToKey>, convert<ToKeyARGB>,
        convertPairs<ToYUV>, convertPairs<ToKeyYUV>, mirror,         mirrorReversed};
    return kernels;
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace tessara
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tessara {

HWY_EXPORT(kernels);

const OutputKernels &outputKernels()
{
    return HWY_DYNAMIC_DISPATCH(kernels)();
}

void finishStreaming()
{
    hwy::FlushStream();
}

} // namespace tessara
#endif
