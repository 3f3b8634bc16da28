#include "Base/Pixels/Resample.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "Base/Pixels/VectorClones.h"

namespace tessara {
namespace {

constexpr int channels = 4;
constexpr int alphaChannel = 3;

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

/// Which source pixels make one target pixel, and by how much; the weights add up to 1.
struct Taps
{
    int first = 0;
    std::vector<float> weights;
};

Taps tapsFor(int target, int sourceLength, int targetLength)
{
    const double scale = double(sourceLength) / targetLength;
    // When shrinking, the kernel covers as much of the source as the target pixel does.
    const double stretch = std::max(scale, 1.0);
    const double centre = (target + 0.5) * scale - 0.5;
    const int first = std::max(0, int(std::floor(centre - 2 * stretch)) + 1);
    const int last = std::min(sourceLength - 1, int(std::ceil(centre + 2 * stretch)) - 1);
    std::vector<double> weights;
    double sum = 0;
    for (int source = first; source <= last; ++source) {
        weights.push_back(cubic((source - centre) / stretch));
        sum += weights.back();
    }
    Taps taps{first, {}};
    for (const double weight : weights)
        taps.weights.push_back(float(weight / sum));
    return taps;
}

/// All taps of one direction, equally many for each target pixel so that loops know their length.
struct Filter
{
    int tapCount = 0;
    std::vector<int> first;
    std::vector<float> weights; // tapCount for each target pixel, unused ones are 0
};

Filter filterFor(int sourceLength, int targetLength)
{
    std::vector<Taps> all;
    Filter filter;
    for (int target = 0; target < targetLength; ++target) {
        all.push_back(tapsFor(target, sourceLength, targetLength));
        filter.tapCount = std::max(filter.tapCount, int(all.back().weights.size()));
    }
    filter.weights.resize(std::size_t(targetLength) * std::size_t(filter.tapCount));
    auto place = filter.weights.begin();
    for (const Taps &taps : all) {
        // Never beyond the last source pixel, not even with a weight of 0.
        const int first = std::min(taps.first, sourceLength - filter.tapCount);
        std::ranges::copy(taps.weights, place + (taps.first - first));
        filter.first.push_back(first);
        place += filter.tapCount;
    }
    return filter;
}

TESSARA_VECTOR_CLONES
void addWeightedRow(const quint8 *__restrict source, float weight, float *__restrict sum,
                    qsizetype values)
{
    for (qsizetype index = 0; index < values; ++index)
        sum[index] += weight * float(source[index]);
}

TESSARA_VECTOR_CLONES
void addWeightedRows(const quint8 *__restrict one, const quint8 *__restrict two, float weightOne,
                     float weightTwo, float *__restrict sum, qsizetype values)
{
    for (qsizetype index = 0; index < values; ++index)
        sum[index] += weightOne * float(one[index]) + weightTwo * float(two[index]);
}

/// One row of the target's height and still of the source's width.
void filterVertically(SourceRows source, const Taps &taps, std::vector<float> &row)
{
    std::ranges::fill(row, 0.0f);
    const auto count = std::ssize(taps.weights);
    const auto values = qsizetype(row.size());
    qsizetype tap = 0;
    for (; tap + 1 < count; tap += 2)
        addWeightedRows(source.row(taps.first + tap), source.row(taps.first + tap + 1),
                        taps.weights[std::size_t(tap)], taps.weights[std::size_t(tap + 1)],
                        row.data(), values);
    if (tap < count)
        addWeightedRow(source.row(taps.first + tap), taps.weights[std::size_t(tap)], row.data(),
                       values);
}

// Four channels in one register.
using Pixel = float __attribute__((vector_size(16)));

template <int knownTapCount>
void filterHorizontally(const float *row, const Filter &filter, float *target)
{
    const int tapCount = knownTapCount > 0 ? knownTapCount : filter.tapCount;
    const float *weight = filter.weights.data();
    for (const int first : filter.first) {
        const float *source = row + qsizetype(first) * channels;
        Pixel sum = {};
        for (int tap = 0; tap < tapCount; ++tap) {
            Pixel pixel;
            std::memcpy(&pixel, source + tap * channels, sizeof pixel);
            sum += weight[tap] * pixel;
        }
        std::memcpy(target, &sum, sizeof sum);
        target += channels;
        weight += tapCount;
    }
}

void filterHorizontally(const float *row, const Filter &filter, float *target)
{
    switch (filter.tapCount) {
    case 4: // when enlarging
        return filterHorizontally<4>(row, filter, target);
    case 8: // to one half
        return filterHorizontally<8>(row, filter, target);
    default:
        return filterHorizontally<0>(row, filter, target);
    }
}

/// The kernel's negative lobes overshoot at edges; a premultiplied colour ends at its alpha.
TESSARA_VECTOR_CLONES
void storeRow(const float *__restrict row, quint8 *__restrict target, qsizetype pixels)
{
    for (qsizetype x = 0; x < pixels; ++x) {
        const float *values = row + x * channels;
        const float limited = std::min(std::max(values[alphaChannel], 0.0f), 255.0f);
        const int alpha = int(limited + 0.5f);
        for (int channel = 0; channel < alphaChannel; ++channel) {
            const float colour = std::min(std::max(values[channel], 0.0f), 255.0f);
            target[x * channels + channel] = quint8(std::min(int(colour + 0.5f), alpha));
        }
        target[x * channels + alphaChannel] = quint8(alpha);
    }
}

} // namespace

// Row by row of the target: what is worked on stays in the cache, and the pass that runs along the
// rows, where vector units are at their best, does the heavier part when shrinking.
void resample(SourceRows source, QSize sourceSize, TargetRows target, QSize targetSize)
{
    const Filter columns = filterFor(sourceSize.width(), targetSize.width());
    std::vector<float> row(std::size_t(sourceSize.width()) * channels);
    std::vector<float> result(std::size_t(targetSize.width()) * channels);
    for (int y = 0; y < targetSize.height(); ++y) {
        filterVertically(source, tapsFor(y, sourceSize.height(), targetSize.height()), row);
        filterHorizontally(row.data(), columns, result.data());
        storeRow(result.data(), target.row(y), targetSize.width());
    }
}

} // namespace tessara
