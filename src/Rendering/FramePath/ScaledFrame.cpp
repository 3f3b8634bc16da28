#include "Rendering/FramePath/ScaledFrame.h"

#include <algorithm>

namespace tessara {

ScaledFrame::ScaledFrame(QSize source, QSize size, int threads)
    : m_resampler(source, size)
    // Output rows are read a little past their end.
    , m_bytes(FrameBytes::zeroed(qsizetype(size.width()) * size.height() * 4 + 64))
    , m_changed(size)
    , m_scratch(std::size_t(threads), Resampler::Scratch(m_resampler))
{
}

const TileDamage &ScaledFrame::update(const quint8 *source, const TileDamage &changed,
                                      ForkJoin &workers)
{
    const int height = size().height();
    m_changed.clear();
    m_bands.clear();
    const auto isChanged = [&](int targetRow) {
        const RowRange rows = m_resampler.sourceRowsOf(targetRow);
        for (int band = rows.first / TileDamage::bandRows;
             band <= (rows.last - 1) / TileDamage::bandRows; ++band) {
            if (changed.band(band) != 0)
                return true;
        }
        return false;
    };
    for (int band = 0; band < m_changed.bands(); ++band) {
        const int top = band * TileDamage::bandRows;
        const int bottom = std::min(top + TileDamage::bandRows, height);
        bool isStale = false;
        for (int y = top; y < bottom && !isStale; ++y)
            isStale = isChanged(y);
        if (!isStale)
            continue;
        m_bands.push_back(band);
        m_changed.add(QRect(0, top, size().width(), bottom - top));
    }
    const SourceRows from{source, qsizetype(m_resampler.sourceSize().width()) * 4};
    const TargetRows to{m_bytes.writableData(), qsizetype(size().width()) * 4};
    workers.run(int(m_bands.size()), workers.threads() - 1, [&](int piece, int thread) {
        const int top = m_bands[std::size_t(piece)] * TileDamage::bandRows;
        m_resampler.rows(from, to, top, std::min(top + TileDamage::bandRows, height),
                         m_scratch[std::size_t(thread)]);
    });
    return m_changed;
}

} // namespace tessara
