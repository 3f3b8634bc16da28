// A finished frame at another size, kept like the frames themselves.
#pragma once

#include "Base/ForkJoin.h"
#include "Base/Pixels/FrameBytes.h"
#include "Base/Pixels/Resample.h"
#include "Rendering/FramePath/TileDamage.h"

namespace tessara {

class ScaledFrame
{
public:
    ScaledFrame(QSize source, QSize size, int threads);

    bool isNull() const { return m_bytes.isNull(); }
    QSize size() const { return m_resampler.targetSize(); }
    const quint32 *row(int y) const
    {
        return reinterpret_cast<const quint32 *>(m_bytes.data()) + qsizetype(y) * size().width();
    }

    /// Scales the rows anew that `changed` of the source reaches, and tells which those are.
    const TileDamage &update(const quint8 *source, const TileDamage &changed, ForkJoin &workers);

private:
    Resampler m_resampler;
    FrameBytes m_bytes; // rows without padding
    TileDamage m_changed;
    std::vector<Resampler::Scratch> m_scratch; // one a thread
    std::vector<int> m_bands;
};

} // namespace tessara
