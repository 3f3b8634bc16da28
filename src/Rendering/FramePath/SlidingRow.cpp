#include "Rendering/FramePath/SlidingRow.h"

#include <algorithm>
#include <cstring>

namespace tessara {

namespace {

int endOf(const SpriteRun &run)
{
    return run.x + run.pixels;
}

// Runs of one row, from the left.
class Cursor
{
public:
    explicit Cursor(std::span<const SpriteRun> runs)
        : m_runs(runs)
    {
    }

    /// The run at `x`, or nothing; never back to the left.
    const SpriteRun *at(int x)
    {
        while (m_index < m_runs.size() && endOf(m_runs[m_index]) <= x)
            ++m_index;
        const bool isInside = m_index < m_runs.size() && m_runs[m_index].x <= x;
        return isInside ? &m_runs[m_index] : nullptr;
    }
    /// Where the next change comes behind the place asked for last; `end` where none does.
    int nextChange(int x, int end) const
    {
        if (m_index == m_runs.size())
            return end;
        const SpriteRun &run = m_runs[m_index];
        return run.x > x ? run.x : endOf(run);
    }

private:
    std::span<const SpriteRun> m_runs;
    std::size_t m_index = 0;
};

} // namespace

SlidingRow::SlidingRow()
    : m_kernels(rowKernels())
{
}

void SlidingRow::reserve(const Sprite &sprite)
{
    constexpr int beside = 2; // cells: the pixel more, and what hangs over
    const int cells = sprite.bounds().width() / cellWidth + 1 + beside;
    const auto bytes = std::size_t(cells) * cellWidth * mostBytesPerPixel;
    if (m_mixed.size() >= bytes)
        return;
    m_runs.reserve(std::size_t(cells));
    for (std::vector<quint8> *buffer : {&m_mixed, &m_whole, &m_wholeBelow, &m_nothing})
        buffer->resize(bytes);
    m_full.resize(bytes, 255);
}

std::span<const SpriteRun> SlidingRow::runs(const Sprite &sprite, int row, int slideX, int slideY,
                                            int from, int to)
{
    m_runs.clear();
    m_bytesPerPixel = sprite.bytesPerPixel();
    m_weight = slideX + slideY;
    const auto rowAt = [&](int at) {
        const bool isInside = at >= 0 && at < sprite.bounds().height();
        return isInside ? sprite.row(at) : std::span<const SpriteRun>();
    };
    if (slideY == 0)
        slideAcross(rowAt(row), from, to);
    else
        slideDown(rowAt(row - 1), rowAt(row), from, to);
    return m_runs;
}

/// Pixels that have all of their coverage in them, from `x` within the run; `room` is for those
/// that have not.
const quint8 *SlidingRow::pixelsOf(const SpriteRun *run, int x, quint8 *room) const
{
    if (!run)
        return m_nothing.data();
    if (!run->data)
        return m_full.data();
    const qsizetype skipped = x - run->x;
    if (!run->isRim)
        return run->data + skipped * m_bytesPerPixel;
    const qsizetype pixels = run->pixels - skipped;
    std::memset(room, 0, std::size_t(pixels) * mostBytesPerPixel);
    m_kernels.blendPictureThrough(reinterpret_cast<quint32 *>(room),
                                  reinterpret_cast<const quint32 *>(run->data) + skipped,
                                  run->coverage() + skipped, 255, pixels);
    return room;
}

void SlidingRow::put(int x, int pixels, bool isFull, const quint8 *data)
{
    if (!isFull && !m_runs.empty()) {
        SpriteRun &last = m_runs.back();
        if (!last.isFull && endOf(last) == x) {
            last.pixels = quint16(last.pixels + pixels);
            return;
        }
    }
    m_runs.push_back({data, quint16(x), quint16(pixels), isFull});
}

void SlidingRow::slideDown(std::span<const SpriteRun> upper, std::span<const SpriteRun> lower,
                           int from, int to)
{
    const auto endOfRow = [](std::span<const SpriteRun> runs) {
        return runs.empty() ? 0 : endOf(runs.back());
    };
    const int last = std::min(std::max(endOfRow(upper), endOfRow(lower)), to);
    const int end = (last + cellWidth - 1) / cellWidth * cellWidth;
    Cursor above(upper);
    Cursor below(lower);
    for (int x = std::max(0, from / cellWidth * cellWidth); x < end;) {
        const SpriteRun *up = above.at(x);
        const SpriteRun *down = below.at(x);
        const int next = std::min({above.nextChange(x, end), below.nextChange(x, end), end});
        const int pixels = next - x;
        const bool isFull = up && down && up->isFull && down->isFull;
        if (isFull && m_bytesPerPixel == 1) {
            put(x, pixels, true, nullptr);
        } else if (up || down) {
            m_kernels.mixRows(mixedAt(x), pixelsOf(down, x, m_wholeBelow.data()),
                              pixelsOf(up, x, m_whole.data()), m_weight,
                              qsizetype(pixels) * m_bytesPerPixel);
            put(x, pixels, isFull, mixedAt(x));
        }
        x = next;
    }
}

void SlidingRow::slideAcross(std::span<const SpriteRun> runs, int from, int to)
{
    m_before = {};
    int end = 0;
    for (const SpriteRun &run : runs) {
        if (endOf(run) + cellWidth <= from)
            continue;
        if (run.x >= to)
            break;
        if (run.x != end)
            spill(end);
        mixAcross(run);
        end = endOf(run);
    }
    spill(end);
}

/// What has slid out of a run, into the first pixel behind it.
void SlidingRow::spill(int x)
{
    if (m_before != Pixel{})
        mixFirstCell(x, m_nothing.data());
    m_before = {};
}

void SlidingRow::mixFirstCell(int x, const quint8 *pixels)
{
    quint8 neighbours[(1 + cellWidth) * mostBytesPerPixel];
    std::memcpy(neighbours, m_before.data(), std::size_t(m_bytesPerPixel));
    std::memcpy(neighbours + m_bytesPerPixel, pixels, std::size_t(cellWidth * m_bytesPerPixel));
    m_kernels.mixRows(mixedAt(x), neighbours + m_bytesPerPixel, neighbours, m_weight,
                      qsizetype(cellWidth) * m_bytesPerPixel);
    put(x, cellWidth, false, mixedAt(x));
}

void SlidingRow::mixAcross(const SpriteRun &run)
{
    const quint8 *pixels = pixelsOf(&run, run.x, m_whole.data());
    mixFirstCell(run.x, pixels);
    const int left = run.pixels - cellWidth;
    if (left > 0 && !run.data) {
        put(run.x + cellWidth, left, true, nullptr);
    } else if (left > 0) {
        const quint8 *rest = pixels + cellWidth * m_bytesPerPixel;
        quint8 *mixed = mixedAt(run.x + cellWidth);
        m_kernels.mixRows(mixed, rest, rest - m_bytesPerPixel, m_weight,
                          qsizetype(left) * m_bytesPerPixel);
        put(run.x + cellWidth, left, run.isFull, mixed);
    }
    const quint8 *last =
        run.data ? pixels + qsizetype(run.pixels - 1) * m_bytesPerPixel : m_full.data();
    std::memcpy(m_before.data(), last, std::size_t(m_bytesPerPixel));
}

} // namespace tessara
