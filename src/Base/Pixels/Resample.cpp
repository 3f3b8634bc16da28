#include "Base/Pixels/Resample.h"

#include <algorithm>
#include <cstring>

namespace tessara {
namespace {

constexpr int pixelBytes = 4;

// More bits, and a sum of products might no longer fit into 32 of them.
constexpr int mostRowWeightBits = 22;
constexpr int mostColumnWeightBits = 16;

} // namespace

Resampler::Scratch::Scratch(const Resampler &resampler)
    : m_chunks(pixelPairsFor(resampler.m_sourceSize.width()) / std::size(Chunk().pixelPairs))
{
    const int height = resampler.m_targetSize.height();
    int longest = 0;
    for (int row = 0; row < height; ++row) {
        const int last = std::min(row + mostRowsAtOnce, height) - 1;
        longest = std::max(longest,
                           resampler.m_rows.end(last) - resampler.m_rows.first[std::size_t(row)]);
    }
    m_pairs.resize(std::size_t(longest + 1) / 2);
}

Resampler::Resampler(QSize sourceSize, QSize targetSize)
    : m_sourceSize(sourceSize)
    , m_targetSize(targetSize)
    , m_rows(resampleTaps(sourceSize.height(), targetSize.height(), mostRowWeightBits))
    , m_columns(resampleColumns(
          resampleTaps(sourceSize.width(), targetSize.width(), mostColumnWeightBits)))
{
}

RowRange Resampler::sourceRowsOf(int targetRow) const
{
    return {m_rows.first[std::size_t(targetRow)], m_rows.end(targetRow)};
}

/// All source rows that some of the target rows need, two by two, each once.
int Resampler::fillPairs(SourceRows source, int firstRow, int rowCount,
                         std::vector<SourceRowPair> &pairs) const
{
    const int first = sourceRowsOf(firstRow).first;
    const int last = sourceRowsOf(firstRow + rowCount - 1).last;
    int count = 0;
    for (int row = first; row < last; row += 2) {
        SourceRowPair pair;
        pair.rows = {source.row(row), source.row(std::min(row + 1, last - 1))};
        for (int target = 0; target < rowCount; ++target) {
            const qint32 weights = packedWeights(m_rows.weight(firstRow + target, row),
                                                 m_rows.weight(firstRow + target, row + 1));
            pair.weights[std::size_t(target)] = weights;
            pair.users |= quint32(weights != 0) << target;
        }
        pairs[std::size_t(count++)] = pair;
    }
    return count;
}

// A few rows of the target at a time: what is worked on stays in the cache, and a source row is
// fetched once for all of them.
void Resampler::rows(SourceRows source, TargetRows target, int firstRow, int lastRow,
                     Scratch &scratch) const
{
    if (m_sourceSize == m_targetSize) {
        for (int y = firstRow; y < lastRow; ++y)
            std::memcpy(target.row(y), source.row(y),
                        std::size_t(m_targetSize.width()) * pixelBytes);
        return;
    }
    const ResampleKernel kernel = resampleKernel();
    ResampleGroup group;
    group.sourceWidth = m_sourceSize.width();
    group.rowWeightBits = m_rows.weightBits;
    group.columns = &m_columns;
    group.pixelPairs = scratch.m_chunks.data()->pixelPairs;
    group.targetWidth = m_targetSize.width();
    for (int y = firstRow; y < lastRow; y += group.targetCount) {
        group.targetCount = std::min(kernel.rowsAtOnce, lastRow - y);
        for (int row = 0; row < group.targetCount; ++row)
            group.targets[std::size_t(row)] = target.row(y + row);
        const int pairs = fillPairs(source, y, group.targetCount, scratch.m_pairs);
        group.pairs = std::span(scratch.m_pairs).first(std::size_t(pairs));
        const int read = sourceRowsOf(y + group.targetCount - 1).last;
        const int next = std::min(y + 2 * group.targetCount, lastRow) - 1;
        group.upcoming = {source.row(read), source.rowBytes};
        group.upcomingCount = sourceRowsOf(next).last - read;
        kernel.makeRows(group);
    }
}

void resample(SourceRows source, QSize sourceSize, TargetRows target, QSize targetSize)
{
    const Resampler resampler(sourceSize, targetSize);
    Resampler::Scratch scratch(resampler);
    resampler.rows(source, target, 0, targetSize.height(), scratch);
}

} // namespace tessara
