// High-quality scaling of premultiplied images.
#pragma once

#include <QSize>

#include <memory>

#include "Base/Pixels/PixelConversion.h"
#include "Base/Pixels/ResampleKernels.h"
#include "Base/Pixels/ResampleTaps.h"

namespace tessara {

/// Rows from `first` to the one before `last`.
struct RowRange
{
    int first = 0;
    int last = 0;

    bool operator==(const RowRange &) const = default;
};

/// Stretches four-channel pixels, alpha last and colour premultiplied, from one size to another:
/// bicubic, widened when shrinking, so that fine detail turns even instead of flickering. No colour
/// comes out above its alpha, and every machine makes the same bytes.
class Resampler
{
public:
    /// The memory that one call of rows() works in, at the same time as no other.
    class Scratch
    {
    public:
        explicit Scratch(const Resampler &resampler);

    private:
        friend class Resampler;

        struct alignas(64) Chunk
        {
            PixelPair pixelPairs[4];
        };
        std::vector<Chunk> m_chunks;
        std::vector<SourceRowPair> m_pairs;
    };

    /// Both sizes are at least one by one.
    Resampler(QSize sourceSize, QSize targetSize);

    QSize sourceSize() const { return m_sourceSize; }
    QSize targetSize() const { return m_targetSize; }

    /// Makes the target rows from `firstRow` to the one before `lastRow`, the same bytes in however
    /// many calls, and allocates nothing. `source` and `target` are the whole pictures; any number
    /// of threads may make rows at once, each with a scratch of its own.
    void rows(SourceRows source, TargetRows target, int firstRow, int lastRow,
              Scratch &scratch) const;
    /// The source rows that `targetRow` is made of.
    RowRange sourceRowsOf(int targetRow) const;

private:
    int fillPairs(SourceRows source, int firstRow, int rowCount,
                  std::vector<SourceRowPair> &pairs) const;

    QSize m_sourceSize;
    QSize m_targetSize;
    ResampleTaps m_rows;
    ResampleColumns m_columns;
};

/// Stretches one whole picture; for more than one of the same sizes, a Resampler is faster.
void resample(SourceRows source, QSize sourceSize, TargetRows target, QSize targetSize);

} // namespace tessara
