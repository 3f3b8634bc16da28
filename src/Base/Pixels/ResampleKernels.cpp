#include "Base/Pixels/ResampleKernels.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Base/Pixels/ResampleKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#include <hwy/cache_control.h>

HWY_BEFORE_NAMESPACE();
namespace tessara {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr int pixelBytes = 4;

#if HWY_TARGET == HWY_SCALAR

// The same arithmetic number by number, for machines without any of the vector units below.
constexpr int rowsAtOnce = 1;

using PixelSum = std::array<int, pixelBytes>;

/// One pixel of all the rows, at the height of the target.
PixelSum filteredRows(const ResampleGroup &group, qsizetype offset)
{
    const int shift = group.rowWeightBits - resampledRowBits;
    PixelSum sum = {};
    for (const SourceRowPair &pair : group.pairs) {
        const qint16 weights[] = {qint16(pair.weights[0]), qint16(pair.weights[0] >> 16)};
        for (std::size_t channel = 0; channel < pixelBytes; ++channel)
            sum[channel] += pair.rows[0][offset + qsizetype(channel)] * weights[0]
                            + pair.rows[1][offset + qsizetype(channel)] * weights[1];
    }
    for (int &value : sum)
        value = (value + (1 << (shift - 1))) >> shift;
    return sum;
}

PixelSum filteredColumns(const ResampleGroup &group, int x)
{
    const ResampleColumns &columns = *group.columns;
    const int shift = columns.weightBits + resampledRowBits;
    const PixelPair *pair = group.pixelPairs + columns.firstPair[std::size_t(x)];
    const qint32 *packed = columns.weights.data() + qsizetype(x) * columns.pairCount;
    PixelSum sum = {};
    for (int index = 0; index < columns.pairCount; ++index) {
        const qint16 weights[] = {qint16(packed[index]), qint16(packed[index] >> 16)};
        for (std::size_t channel = 0; channel < pixelBytes; ++channel)
            sum[channel] += pair[index].values[2 * channel] * weights[0]
                            + pair[index].values[2 * channel + 1] * weights[1];
    }
    for (int &value : sum)
        value = std::clamp((value + (1 << (shift - 1))) >> shift, 0, 255);
    return sum;
}

void makeRows(const ResampleGroup &group)
{
    for (int x = 0; x < group.sourceWidth; ++x) {
        const PixelSum pixel = filteredRows(group, qsizetype(x) * pixelBytes);
        const int place = x + group.columns->origin;
        PixelPair &pair = group.pixelPairs[place / 2];
        for (std::size_t channel = 0; channel < pixelBytes; ++channel)
            pair.values[2 * channel + std::size_t(place % 2)] = qint16(pixel[channel]);
    }
    for (int x = 0; x < group.targetWidth; ++x) {
        const PixelSum pixel = filteredColumns(group, x);
        quint8 *target = group.targets[0] + qsizetype(x) * pixelBytes;
        for (std::size_t channel = 0; channel < pixelBytes; ++channel)
            target[channel] = quint8(std::min(pixel[channel], pixel[3]));
    }
}

#else

// Vector units work in blocks of 16 bytes. Along a row, each target row of a group has a block of
// its own in every vector: all of them use the same weights, and no pixel has to be moved across.
constexpr int blockBytes = 16;

const hn::CappedTag<quint8, blockBytes * mostRowsAtOnce> bytesTag;
const hn::Repartition<qint16, decltype(bytesTag)> shortsTag;
const hn::Repartition<qint32, decltype(bytesTag)> intsTag;
using Bytes = hn::Vec<decltype(bytesTag)>;
using Shorts = hn::Vec<decltype(shortsTag)>;
using Ints = hn::Vec<decltype(intsTag)>;

constexpr int vectorBytes = int(hn::MaxLanes(decltype(bytesTag)()));
constexpr int vectorPixels = vectorBytes / pixelBytes;
constexpr int rowsAtOnce = vectorBytes / blockBytes;

/// For each number, two products of shorts.
HWY_INLINE Ints addProducts(Ints sum, Shorts values, qint32 weights)
{
    Ints rest = hn::Zero(intsTag);
    const Shorts factors = hn::BitCast(shortsTag, hn::Set(intsTag, weights));
    sum = hn::ReorderWidenMulAccumulate(intsTag, values, factors, sum, rest);
    return hn::RearrangeToOddPlusEven(sum, rest);
}

/// One pixel in each block, four times: the first of each block, the second, ...
struct PixelSums
{
    Ints first;
    Ints second;
    Ints third;
    Ints fourth;
};

HWY_INLINE void addRows(PixelSums &sums, const std::array<Shorts, 4> &pixels, qint32 weights)
{
    sums.first = addProducts(sums.first, pixels[0], weights);
    sums.second = addProducts(sums.second, pixels[1], weights);
    sums.third = addProducts(sums.third, pixels[2], weights);
    sums.fourth = addProducts(sums.fourth, pixels[3], weights);
}

template <class Tag>
HWY_INLINE void storeBlocks(Tag tag, hn::Vec<Tag> vector, PixelPair *target, int distance)
{
    if constexpr (hn::MaxLanes(Tag()) * sizeof(qint16) == blockBytes) {
        hn::Store(vector, tag, target->values.data());
    } else {
        const hn::Half<Tag> half;
        constexpr int blocks = int(hn::MaxLanes(half) * sizeof(qint16)) / blockBytes;
        storeBlocks(half, hn::LowerHalf(half, vector), target, distance);
        storeBlocks(half, hn::UpperHalf(half, vector), target + blocks * distance, distance);
    }
}

/// Two pixels turn into one pair, without the bits that are no longer needed.
HWY_INLINE Shorts pairOf(Ints earlier, Ints later, int shift)
{
    const Ints lowerHalves = hn::ShiftRightSame(earlier, shift);
    const Ints upperHalves = hn::ShiftLeftSame(later, 16 - shift);
    return hn::OddEven(hn::BitCast(shortsTag, upperHalves), hn::BitCast(shortsTag, lowerHalves));
}

HWY_INLINE void storePairs(const PixelSums &sums, int shift, PixelPair *target)
{
    constexpr int distance = 2 * rowsAtOnce;
    storeBlocks(shortsTag, pairOf(sums.first, sums.second, shift), target, distance);
    storeBlocks(shortsTag, pairOf(sums.third, sums.fourth, shift), target + rowsAtOnce, distance);
}

/// The columns of a row that stand in one vector; beyond the row's ends there is nothing.
struct RowPart
{
    qsizetype offset = 0;
    qsizetype rowBytes = 0;

    bool isInside() const { return offset >= 0 && offset + vectorBytes <= rowBytes; }

    HWY_INLINE Bytes load(const quint8 *row) const
    {
        if (HWY_LIKELY(isInside()))
            return hn::LoadU(bytesTag, row + offset);
        HWY_ALIGN quint8 part[vectorBytes] = {};
        const qsizetype begin = std::max<qsizetype>(offset, 0);
        const qsizetype end = std::min<qsizetype>(offset + vectorBytes, rowBytes);
        std::memcpy(part + (begin - offset), row + begin, std::size_t(end - begin));
        return hn::Load(bytesTag, part);
    }
};

HWY_INLINE void filterPart(const ResampleGroup &group, RowPart part, PixelPair *target)
{
    const int shift = group.rowWeightBits - resampledRowBits;
    const Ints half = hn::Set(intsTag, 1 << (shift - 1));
    const Bytes zero = hn::Zero(bytesTag);
    PixelSums sums[rowsAtOnce];
#pragma GCC unroll 4
    for (int row = 0; row < rowsAtOnce; ++row)
        sums[row] = {half, half, half, half};
    for (const SourceRowPair &pair : group.pairs) {
        const Bytes upper = part.load(pair.rows[0]);
        const Bytes lower = part.load(pair.rows[1]);
        const Bytes early = hn::InterleaveLower(bytesTag, upper, lower);
        const Bytes late = hn::InterleaveUpper(bytesTag, upper, lower);
        const std::array<Shorts, 4> pixels = {
            hn::BitCast(shortsTag, hn::InterleaveLower(bytesTag, early, zero)),
            hn::BitCast(shortsTag, hn::InterleaveUpper(bytesTag, early, zero)),
            hn::BitCast(shortsTag, hn::InterleaveLower(bytesTag, late, zero)),
            hn::BitCast(shortsTag, hn::InterleaveUpper(bytesTag, late, zero))};
#pragma GCC unroll 4
        for (int row = 0; row < rowsAtOnce; ++row) {
            if (pair.users & 1u << row)
                addRows(sums[row], pixels, pair.weights[std::size_t(row)]);
        }
    }
#pragma GCC unroll 4
    for (int row = 0; row < rowsAtOnce; ++row)
        storePairs(sums[row], shift, target + row);
}

/// One target pixel of all rows of the group.
template <int knownPairCount>
HWY_INLINE Ints filterPixel(const ResampleColumns &columns, const PixelPair *pixelPairs, int x)
{
    const int pairCount = knownPairCount > 0 ? knownPairCount : columns.pairCount;
    const int shift = columns.weightBits + resampledRowBits;
    const PixelPair *pair = pixelPairs + qsizetype(columns.firstPair[std::size_t(x)]) * rowsAtOnce;
    const qint32 *weights = columns.weights.data() + qsizetype(x) * pairCount;
    Ints sum = hn::Set(intsTag, 1 << (shift - 1));
    for (int index = 0; index < pairCount; ++index) {
        sum = addProducts(sum, hn::Load(shortsTag, pair->values.data()), weights[index]);
        pair += rowsAtOnce;
    }
    return hn::ShiftRightSame(sum, shift);
}

/// The kernel's negative lobes overshoot at edges; a premultiplied colour ends at its alpha.
HWY_INLINE Bytes limited(Shorts firstTwo, Shorts lastTwo)
{
    alignas(blockBytes) constexpr quint8 orderOfPixels[] = {0, 2, 4, 6, 8, 10, 12, 14,
                                                            1, 3, 5, 7, 9, 11, 13, 15};
    alignas(blockBytes) constexpr quint8 alphas[] = {3,  3,  3,  3,  7,  7,  7,  7,
                                                     11, 11, 11, 11, 15, 15, 15, 15};
    const Shorts zero = hn::Zero(shortsTag);
    const Shorts most = hn::Set(shortsTag, 255);
    const Shorts early = hn::Min(hn::Max(firstTwo, zero), most);
    const Shorts late = hn::Min(hn::Max(lastTwo, zero), most);
    const Bytes mixed = hn::BitCast(bytesTag, hn::Or(early, hn::ShiftLeft<8>(late)));
    const Bytes pixels = hn::TableLookupBytes(mixed, hn::LoadDup128(bytesTag, orderOfPixels));
    return hn::Min(pixels, hn::TableLookupBytes(pixels, hn::LoadDup128(bytesTag, alphas)));
}

template <int knownPairCount>
HWY_INLINE void makePixels(const ResampleGroup &group, int x)
{
    const auto pixel = [&group](int column) HWY_ATTR {
        return filterPixel<knownPairCount>(*group.columns, group.pixelPairs, column);
    };
    const Shorts firstTwo = hn::ReorderDemote2To(shortsTag, pixel(x), pixel(x + 1));
    const Shorts lastTwo = hn::ReorderDemote2To(shortsTag, pixel(x + 2), pixel(x + 3));
    HWY_ALIGN quint8 blocks[vectorBytes];
    hn::Store(limited(firstTwo, lastTwo), bytesTag, blocks);
    const int pixels = std::min(resampledPixelsAtOnce, group.targetWidth - x);
    const int rows = std::min(rowsAtOnce, group.targetCount);
    for (int row = 0; row < rows; ++row) {
        quint8 *target = group.targets[std::size_t(row)] + qsizetype(x) * pixelBytes;
        if (HWY_LIKELY(pixels == resampledPixelsAtOnce))
            std::memcpy(target, blocks + row * blockBytes, blockBytes);
        else
            std::memcpy(target, blocks + row * blockBytes, std::size_t(pixels * pixelBytes));
    }
}

/// Hardware prefetches within a page only, and a row is several.
HWY_INLINE void prefetchPart(const ResampleGroup &group, qsizetype offset)
{
    constexpr int cacheLine = 64;
    if (offset / cacheLine == (offset - vectorBytes) / cacheLine)
        return;
    for (int row = 0; row < group.upcomingCount; ++row)
        hwy::Prefetch(group.upcoming.row(row) + offset);
}

/// Both directions take turns, so that what one leaves is still in the nearest cache.
template <int knownPairCount>
HWY_INLINE void makeRowsOf(const ResampleGroup &group)
{
    constexpr int partsInTurn = 8;
    constexpr int pairsInPart = vectorPixels / 2;
    const ResampleColumns &columns = *group.columns;
    const qsizetype rowBytes = qsizetype(group.sourceWidth) * pixelBytes;
    const int pairCount = (group.sourceWidth + columns.origin + 1) / 2;
    int x = 0;
    for (int pair = 0; pair < pairCount;) {
        for (int part = 0; part < partsInTurn && pair < pairCount; ++part) {
            const qsizetype offset = (qsizetype(pair) * 2 - columns.origin) * pixelBytes;
            prefetchPart(group, std::max<qsizetype>(offset, 0));
            filterPart(group, {offset, rowBytes}, group.pixelPairs + qsizetype(pair) * rowsAtOnce);
            pair += pairsInPart;
        }
        while (x < group.targetWidth
               && columns.firstPair[std::size_t(x + resampledPixelsAtOnce - 1)] + columns.pairCount
                      <= pair) {
            makePixels<knownPairCount>(group, x);
            x += resampledPixelsAtOnce;
        }
    }
}

void makeRows(const ResampleGroup &group)
{
    switch (group.columns->pairCount) {
    case 3: // when enlarging
        return makeRowsOf<3>(group);
    case 4: // to one half
        return makeRowsOf<4>(group);
    default:
        return makeRowsOf<0>(group);
    }
}

#endif // HWY_SCALAR

ResampleKernel kernel()
{
    return {rowsAtOnce, &makeRows};
}

} // namespace HWY_NAMESPACE
} // namespace tessara
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace tessara {

HWY_EXPORT(kernel);

std::size_t pixelPairsFor(int sourceWidth)
{
    // The last vector may be filled to its end, and all may begin a column early.
    constexpr int widestVector = 16; // pixels
    const int pixels = (sourceWidth + 1 + widestVector - 1) / widestVector * widestVector;
    return std::size_t(pixels) / 2 * mostRowsAtOnce;
}

ResampleKernel resampleKernel()
{
    return HWY_DYNAMIC_DISPATCH(kernel)();
}

} // namespace tessara
#endif
