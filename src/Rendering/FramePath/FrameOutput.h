// Composed rows on their way into a device's frame.
#pragma once

#include "Base/Pixels/RowOutput.h"
#include "Rendering/FramePath/FrameTarget.h"

namespace tessara {

/// The place of one frame in memory, and how it is written.
class FrameOutput
{
public:
    FrameOutput(const FrameTarget &target, quint8 *bytes);

    bool isMirrored() const { return m_isMirrored; }
    /// The pixels from `from` to below `to` of row `y`; `row` begins at pixel 0. `from` is even.
    void write(int y, const quint32 *row, int from, int to) const
    {
        m_convert(place(y, from), row + from, to - from);
    }
    /// The same with the alpha of another row.
    void write(int y, const quint32 *row, const quint32 *alphaRow, int from, int to) const
    {
        m_mirror(place(y, from), row + from, alphaRow + from, to - from);
    }

private:
    quint8 *place(int y, int from) const
    {
        return m_bytes + y * m_rowBytes + qsizetype(from) * m_bytesPerPixel;
    }

    quint8 *m_bytes;
    qsizetype m_rowBytes;
    int m_bytesPerPixel;
    bool m_isMirrored;
    OutputKernels::Convert m_convert;
    OutputKernels::ConvertMirrored m_mirror;
};

} // namespace tessara
