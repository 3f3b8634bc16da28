// The ways from a document to the bytes of a frame, with a card that holds the last two.
#pragma once

#include "DeckLink/DeckLinkFrameBuffer.h"
#include "Models/CanvasDocument.h"
#include "Rendering/FramePath/FramePath.h"
#include "Rendering/LayerPrimitives.h"
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

/// What the platform's painter can do with the same sprites: every drawing operation of the
/// document as a picture that was made before, blended at its place and its opacity. What the
/// document shows may fade from then on, and nothing else.
class PaintedFrames
{
public:
    PaintedFrames(const CanvasDocument &document, QSize size);

    /// To be called before a frame, with the document that this was made for.
    void readOpacities(const CanvasDocument &document);
    void make();
    const QImage &frame() const { return m_frame; }

private:
    struct Sprite
    {
        CanvasLayerItem item;
        Fading fading;
        QImage picture; // a mask's with its colour
        QPoint place;   // px
        double opacity = 0;
    };

    std::vector<Sprite> m_sprites;
    QImage m_frame;
};

} // namespace tessara
