#include "Base/Pixels/ResampleTaps.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {
namespace {

/// The cubic kernel of Catmull and Rom: sharp, and exact at the source's own pixels.
double cubic(double distance)
{
    constexpr double a = -0.5;
    const double x = std::abs(distance);
    if (x < 1)
        return ((a + 2) * x - (a + 3)) * x * x + 1;
    if (x < 2)
        return ((a * x - 5 * a) * x + 8 * a) * x - 4 * a;
    return 0;
}

struct ExactTaps
{
    int first = 0;
    std::vector<double> weights; // they add up to 1
};

ExactTaps exactTaps(int target, int sourceLength, int targetLength)
{
    const double scale = double(sourceLength) / targetLength;
    // When shrinking, the kernel covers as much of the source as the target pixel does.
    const double stretch = std::max(scale, 1.0);
    const double centre = (target + 0.5) * scale - 0.5;
    const int first = std::max(0, int(std::floor(centre - 2 * stretch)) + 1);
    const int last = std::min(sourceLength - 1, int(std::ceil(centre + 2 * stretch)) - 1);
    ExactTaps taps{first, {}};
    double sum = 0;
    for (int source = first; source <= last; ++source) {
        taps.weights.push_back(cubic((source - centre) / stretch));
        sum += taps.weights.back();
    }
    for (double &weight : taps.weights)
        weight /= sum;
    return taps;
}

struct RoundedTaps
{
    int first = 0;
    std::vector<qint16> weights; // they add up to 1 << bits

    int end() const { return first + int(weights.size()); }
};

/// Without the zeros at both ends. What the weights before were rounded by is made up for at once:
/// they add up exactly, and a long row of small weights doesn't lean to one side.
RoundedTaps rounded(const ExactTaps &taps, int bits)
{
    RoundedTaps result{taps.first, {}};
    double exact = 0;
    int taken = 0;
    for (const double weight : taps.weights) {
        exact += weight;
        const int upToHere = int(std::lround(std::ldexp(exact, bits)));
        result.weights.push_back(qint16(upToHere - taken));
        taken = upToHere;
    }
    const auto begin = std::ranges::find_if(result.weights, [](int weight) { return weight != 0; });
    result.first += int(begin - result.weights.begin());
    result.weights.erase(result.weights.begin(), begin);
    while (result.weights.back() == 0)
        result.weights.pop_back();
    return result;
}

/// A target pixel right on a source pixel needs nothing else, unlike its neighbours: it gets as
/// many zeros as it takes to neither begin after the next one nor end before the one before.
void makeRising(std::vector<RoundedTaps> &rows)
{
    int least = rows.back().first;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        least = std::min(least, row->first);
        row->weights.insert(row->weights.begin(), std::size_t(row->first - least), 0);
        row->first = least;
    }
    int most = 0;
    for (RoundedTaps &row : rows) {
        most = std::max(most, row.end());
        row.weights.resize(std::size_t(most - row.first));
    }
}

int weightBitsFor(const std::vector<ExactTaps> &all, int mostWeightBits)
{
    double largest = 0;
    for (const ExactTaps &taps : all)
        largest = std::max(largest, std::ranges::max(taps.weights));
    int bits = mostWeightBits;
    while (std::ldexp(largest, bits) > std::numeric_limits<qint16>::max() - 1)
        --bits;
    return bits;
}

/// In pairs from `origin` on, the longest row of taps takes that many.
int pairCountFrom(int origin, const ResampleTaps &taps)
{
    int longest = 0;
    for (int target = 0; target < std::ssize(taps.first); ++target) {
        const int first = taps.first[std::size_t(target)] + origin;
        longest = std::max(longest, (taps.end(target) - 1 + origin) / 2 - first / 2 + 1);
    }
    return longest;
}

} // namespace

int ResampleTaps::weight(int target, int source) const
{
    const int tap = source - first[std::size_t(target)];
    const bool matters = tap >= 0 && tap < count[std::size_t(target)];
    return matters ? weights[std::size_t(target) * std::size_t(tapCount) + std::size_t(tap)] : 0;
}

ResampleTaps resampleTaps(int sourceLength, int targetLength, int mostWeightBits)
{
    std::vector<ExactTaps> all;
    for (int target = 0; target < targetLength; ++target)
        all.push_back(exactTaps(target, sourceLength, targetLength));
    ResampleTaps taps;
    taps.sourceLength = sourceLength;
    taps.weightBits = weightBitsFor(all, mostWeightBits);
    std::vector<RoundedTaps> rows;
    for (const ExactTaps &exact : all)
        rows.push_back(rounded(exact, taps.weightBits));
    makeRising(rows);
    for (const RoundedTaps &row : rows)
        taps.tapCount = std::max(taps.tapCount, int(row.weights.size()));
    for (RoundedTaps &row : rows) {
        taps.first.push_back(row.first);
        taps.count.push_back(int(row.weights.size()));
        row.weights.resize(std::size_t(taps.tapCount));
        taps.weights.insert(taps.weights.end(), row.weights.begin(), row.weights.end());
    }
    return taps;
}

ResampleColumns resampleColumns(const ResampleTaps &taps)
{
    ResampleColumns columns;
    columns.weightBits = taps.weightBits;
    columns.origin = pairCountFrom(1, taps) < pairCountFrom(0, taps) ? 1 : 0;
    columns.pairCount = pairCountFrom(columns.origin, taps);
    const int pairs = (taps.sourceLength + columns.origin + 1) / 2;
    const int targetLength = int(taps.first.size());
    for (int target = 0; target < targetLength; ++target) {
        // Never beyond the last pair, not even with a weight of 0.
        const int first = std::min((taps.first[std::size_t(target)] + columns.origin) / 2,
                                   pairs - columns.pairCount);
        columns.firstPair.push_back(first);
        for (int pair = first; pair < first + columns.pairCount; ++pair) {
            const int source = 2 * pair - columns.origin;
            columns.weights.push_back(
                packedWeights(taps.weight(target, source), taps.weight(target, source + 1)));
        }
    }
    while (columns.firstPair.size() % resampledPixelsAtOnce != 0) {
        columns.firstPair.push_back(columns.firstPair.back());
        columns.weights.insert(columns.weights.end(), std::size_t(columns.pairCount), 0);
    }
    return columns;
}

} // namespace tessara
