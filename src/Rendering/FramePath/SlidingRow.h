// A row of a sprite that lies between two pixels.
#pragma once

#include "Base/Pixels/RowBlending.h"
#include "Rendering/FramePath/Sprite.h"

#include <array>
#include <span>
#include <vector>

namespace tessara {

/// Between two pixels lies what both of them have in it, each by its share. Where nothing changes
/// along the slide, a run stays what it was.
class SlidingRow
{
public:
    SlidingRow();

    /// Makes room for the rows of `sprite`, so that no row has to.
    void reserve(const Sprite &sprite);

    /// What lies in `row` when the sprite has slid to the right or down by 256ths of a pixel, one
    /// of them 0: runs without rims, good until the next call. One row and one column more than the
    /// sprite has. What lies beside `from` and `to`, px from the sprite's left, may be missing.
    std::span<const SpriteRun> runs(const Sprite &sprite, int row, int slideX, int slideY, int from,
                                    int to);

private:
    static constexpr int mostBytesPerPixel = 4;
    using Pixel = std::array<quint8, mostBytesPerPixel>;

    void slideAcross(std::span<const SpriteRun> runs, int from, int to);
    void slideDown(std::span<const SpriteRun> upper, std::span<const SpriteRun> lower, int from,
                   int to);
    void mixAcross(const SpriteRun &run);
    void mixFirstCell(int x, const quint8 *pixels);
    void spill(int x);
    const quint8 *pixelsOf(const SpriteRun *run, int x, quint8 *room) const;
    void put(int x, int pixels, bool isFull, const quint8 *data);
    quint8 *mixedAt(int x) { return m_mixed.data() + qsizetype(x) * m_bytesPerPixel; }

    const RowKernels &m_kernels;
    int m_bytesPerPixel = 1;
    int m_weight = 0; // of the neighbour, 256ths
    Pixel m_before{}; // the last pixel of the run before, if no gap lies between
    std::vector<SpriteRun> m_runs;
    std::vector<quint8> m_mixed;
    std::vector<quint8> m_whole; // rims with their coverage multiplied in
    std::vector<quint8> m_wholeBelow;
    std::vector<quint8> m_nothing; // as many bytes as a row has
    std::vector<quint8> m_full;
};

} // namespace tessara
