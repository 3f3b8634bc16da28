// Which source pixels make a target pixel, and by how much, in whole numbers.
#pragma once

#include <QtGlobal>

#include <vector>

namespace tessara {

/// A row of the source's width and the target's height keeps this many bits behind the point.
constexpr int resampledRowBits = 6;

/// One direction: as many weights for each target pixel, unused ones at the end are 0.
struct ResampleTaps
{
    int sourceLength = 0;
    int tapCount = 0;
    int weightBits = 0;          // a target pixel's weights add up to 1 << weightBits
    std::vector<int> first;      // of the source, for each target pixel; like end(), never falling
    std::vector<int> count;      // of weights that matter, for each target pixel
    std::vector<qint16> weights; // tapCount for each target pixel

    int end(int target) const { return first[std::size_t(target)] + count[std::size_t(target)]; }
    int weight(int target, int source) const; ///< 0 for a source pixel that doesn't matter
};

/// Weights get as many bits as the largest of them leaves, and `mostWeightBits` at most.
ResampleTaps resampleTaps(int sourceLength, int targetLength, int mostWeightBits);

/// The taps along a row, two neighbours at a time, as the vector units multiply them.
struct ResampleColumns
{
    int origin = 0;    // 1 if the first pair is the column before the first and the first
    int pairCount = 0; // for each target pixel
    int weightBits = 0;
    std::vector<int> firstPair;  // for each target pixel, and for some more after the last
    std::vector<qint32> weights; // pairCount for each target pixel, see packedWeights()
};

/// In blocks of this many target pixels, the last of them filled with pixels of no weight.
constexpr int resampledPixelsAtOnce = 4;

ResampleColumns resampleColumns(const ResampleTaps &taps);

/// Two weights as one number, that of the earlier pixel in the lower half.
constexpr qint32 packedWeights(int earlier, int later)
{
    return qint32(quint32(quint16(earlier)) | quint32(quint16(later)) << 16);
}

} // namespace tessara
