#include "bench/FrameMakers.h"

namespace tessara {

FrameTarget targetOf(QSize size, FrameContent content, FrameFormat format)
{
    return {content, format, size, rowBytesOf(format, size.width())};
}

PathFrames::PathFrames(int threads, std::vector<FrameTarget> targets)
    : m_path(threads)
    , m_targets(std::move(targets))
{
}

void PathFrames::make(const CanvasDocument &document)
{
    FramePath::Result frames = m_path.render(document, std::nullopt, m_targets);
    if (!frames)
        qFatal("%s", qPrintable(text(frames.error())));
    m_held[m_made++ % m_held.size()] = std::move(*frames);
}

DrawnFrames::DrawnFrames(QSize size)
    : m_size(size)
{
}

void DrawnFrames::make(const CanvasDocument &document)
{
    const tl::expected<QImage, RenderEngineError> image = m_engine.render(document, std::nullopt);
    if (!image)
        qFatal("%s", qPrintable(text(image.error())));
    DeckLinkFrameBuffer::Result frame =
        DeckLinkFrameBuffer::make(*image, m_size.width(), m_size.height());
    if (!frame)
        qFatal("%s", qPrintable(text(frame.error())));
    m_held[m_made++ % m_held.size()] = std::move(*frame);
}

} // namespace tessara
