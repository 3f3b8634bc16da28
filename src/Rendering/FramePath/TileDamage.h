// Which parts of a frame are not as they should be.
#pragma once

#include <QRect>

#include <algorithm>
#include <vector>

namespace tessara {

/// A frame in tiles of 16 rows: 64 of them across at most, so that a word tells those of a band.
class TileDamage
{
public:
    static constexpr int bandRows = 16;

    TileDamage() = default;
    explicit TileDamage(QSize frame)
        : m_frame(frame)
        , m_tileWidth(std::max(1, (frame.width() + 64 * step - 1) / (64 * step)) * step)
        , m_bands(std::size_t((frame.height() + bandRows - 1) / bandRows))
    {
    }

    QSize frame() const { return m_frame; }
    int tileWidth() const { return m_tileWidth; }
    int bands() const { return int(m_bands.size()); }
    quint64 band(int index) const { return m_bands[std::size_t(index)]; }
    bool isEmpty() const
    {
        return std::all_of(m_bands.begin(), m_bands.end(), [](quint64 band) { return band == 0; });
    }
    int tiles() const
    {
        int count = 0;
        for (const quint64 band : m_bands)
            count += __builtin_popcountll(band);
        return count;
    }

    void clear() { std::fill(m_bands.begin(), m_bands.end(), 0); }
    void addAll() { add(QRect(QPoint(), m_frame)); }
    void add(const QRect &pixels)
    {
        const QRect inside = pixels.intersected(QRect(QPoint(), m_frame));
        if (inside.isEmpty())
            return;
        const int first = inside.left() / m_tileWidth;
        const int last = inside.right() / m_tileWidth;
        const quint64 tiles = ~quint64(0) >> (63 - (last - first)) << first;
        for (int band = inside.top() / bandRows; band <= inside.bottom() / bandRows; ++band)
            m_bands[std::size_t(band)] |= tiles;
    }
    void add(const TileDamage &other)
    {
        for (std::size_t band = 0; band < m_bands.size(); ++band)
            m_bands[band] |= other.m_bands[band];
    }

    /// Calls `work(from, to)` for each row of neighbours in `tiles`, in pixels across.
    template <typename Work>
    void forEachStretch(quint64 tiles, const Work &work) const
    {
        for (int first = 0; first < 64;) {
            const quint64 left = tiles >> first;
            if (left == 0)
                return;
            first += __builtin_ctzll(left);
            const quint64 gaps = ~(tiles >> first);
            const int count = gaps == 0 ? 64 : __builtin_ctzll(gaps);
            work(first * m_tileWidth, std::min((first + count) * m_tileWidth, m_frame.width()));
            first += count;
        }
    }

private:
    static constexpr int step = 16; // px; a tile begins at a cache line in every format

    QSize m_frame{0, 0};
    int m_tileWidth = step;
    std::vector<quint64> m_bands;
};

} // namespace tessara
