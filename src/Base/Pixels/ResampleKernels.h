// The inner loops of Resampler, compiled for each generation of vector units.
#pragma once

#include "Base/Pixels/PixelConversion.h"
#include "Base/Pixels/ResampleTaps.h"

#include <array>
#include <span>

namespace tessara {

/// More target rows than this are never made at once, whatever the machine.
constexpr int mostRowsAtOnce = 4;

/// Two source rows, and what they add to each target row of a group.
struct SourceRowPair
{
    std::array<const quint8 *, 2> rows = {};
    std::array<qint32, mostRowsAtOnce> weights = {}; // see packedWeights()
    quint32 users = 0; // bit by bit: the target rows to which the weights aren't 0
};

/// Two neighbouring pixels of one row: B B G G R R A A, with resampledRowBits behind the point.
struct alignas(16) PixelPair
{
    std::array<qint16, 8> values;
};

/// Target rows that are made together.
struct ResampleGroup
{
    std::span<const SourceRowPair> pairs;
    int sourceWidth = 0;
    int rowWeightBits = 0;
    const ResampleColumns *columns = nullptr;
    PixelPair *pixelPairs = nullptr; // room for pixelPairsFor(sourceWidth)
    std::array<quint8 *, mostRowsAtOnce> targets = {};
    int targetCount = 0;
    int targetWidth = 0;
    SourceRows upcoming; // what the next group will read as well
    int upcomingCount = 0;
};

/// Aligned to 64 bytes.
std::size_t pixelPairsFor(int sourceWidth);

struct ResampleKernel
{
    int rowsAtOnce = 0;
    void (*makeRows)(const ResampleGroup &group) = nullptr;
};

/// For the vector units of this machine; all of them make the same bytes.
ResampleKernel resampleKernel();

} // namespace tessara
