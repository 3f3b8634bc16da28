// Both ways from a document to the bytes of a frame, with a card that holds the last two.
#pragma once

#include "DeckLink/DeckLinkFrameBuffer.h"
#include "Models/CanvasDocument.h"
#include "Rendering/FramePath/FramePath.h"
#include "Rendering/RenderEngine.h"

#include <array>
#include <vector>

namespace tessara {

constexpr std::size_t framesOnTheCard = 2;

struct FrameSize
{
    int width;
    int height;

    QSize pixels() const { return {width, height}; }
    QSizeF canvas() const { return QSizeF(pixels()); }
    qsizetype bytes() const { return qsizetype(width) * height * 4; }
    double scale() const { return width / 1920.0; } // of what is laid out for a canvas 1920 wide
};

FrameTarget targetOf(QSize size, FrameContent content = FrameContent::fill,
                     FrameFormat format = FrameFormat::bgra);

/// The frame path.
class PathFrames
{
public:
    PathFrames(int threads, std::vector<FrameTarget> targets);

    void make(const CanvasDocument &document);

private:
    FramePath m_path;
    std::vector<FrameTarget> m_targets;
    std::array<FramePath::Frames, framesOnTheCard> m_held;
    std::size_t m_made = 0;
};

/// The reference: every frame drawn from nothing, then converted.
class DrawnFrames
{
public:
    explicit DrawnFrames(QSize size);

    void make(const CanvasDocument &document);

private:
    RenderEngine m_engine;
    QSize m_size;
    std::array<DeckLinkFrameBuffer, framesOnTheCard> m_held;
    std::size_t m_made = 0;
};

} // namespace tessara
