#include "Rendering/FramePath/FrameOutput.h"

namespace tessara {

namespace {

OutputKernels::Convert conversion(const OutputKernels &kernels, const FrameTarget &target)
{
    const bool isKey = target.content == FrameContent::key;
    switch (target.format) {
    case FrameFormat::bgra:
        return isKey ? kernels.key : kernels.bgra;
    case FrameFormat::argb:
        return isKey ? kernels.keyARGB : kernels.argb;
    case FrameFormat::yuv:
        return isKey ? kernels.keyYUV : kernels.yuv;
    }
    Q_UNREACHABLE();
}

} // namespace

FrameOutput::FrameOutput(const FrameTarget &target, quint8 *bytes)
    : m_bytes(bytes)
    , m_rowBytes(target.rowBytes)
    , m_bytesPerPixel(target.format == FrameFormat::yuv ? 2 : 4)
    // Without an alpha there is none to be mirrored.
    , m_isMirrored(target.content == FrameContent::fillWithMirroredAlpha
                   && target.format != FrameFormat::yuv)
    , m_convert(conversion(outputKernels(), target))
    , m_mirror(target.format == FrameFormat::argb ? outputKernels().mirroredARGB
                                                  : outputKernels().mirrored)
{
}

} // namespace tessara
