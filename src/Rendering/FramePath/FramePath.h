// The way of a frame from the document to the bytes that a device takes.
#pragma once

#include "Rendering/FramePath/FrameOutput.h"
#include "Rendering/FramePath/FrameRing.h"
#include "Rendering/FramePath/FrameScene.h"
#include "Rendering/FramePath/ScaledFrame.h"
#include "Rendering/RenderEngine.h"

#include <array>
#include <span>

namespace tessara {

/// Gives the pixels that `RenderEngine` gives, at a fraction of its cost: what is drawn is kept as
/// sprites, a frame is composed row by row in the cache and written once in the device's format,
/// and of a frame that is kept only what has changed is composed anew.
class FramePath
{
    Q_DISABLE_COPY_MOVE(FramePath)

public:
    static constexpr std::size_t mostTargets = 2; // a fill and a key

    /// `threads` share the work, the caller's included.
    explicit FramePath(int threads = ForkJoin::standardThreads());

    /// One frame for each target, in their order; the others are null. Nobody may write to them:
    /// they are kept, and written again when the last copy outside has gone.
    using Frames = std::array<FrameBytes, mostTargets>;
    using Result = tl::expected<Frames, RenderEngineError>;

    /// The frame of canvas size (fractions cut), as `RenderEngine::render` draws it.
    Result render(const CanvasDocument &document, const std::optional<QColor> &background,
                  std::span<const FrameTarget> targets);
    /// Before frames are due: all sprites of the document, so that the first frames and takes find
    /// them.
    void makeSprites(const CanvasDocument &document);
    /// After the first frame: the memory of those that go round, see `FrameRing`.
    void makeFramesAhead();
    /// After a frame that leaves time: the sprites of layers that are not seen yet, so that a take
    /// finds them. They are made beside this thread.
    void prepareHidden() { m_scene.prepareHidden(); }
    /// True when `render` would find all that is seen as sprites. What is missing is being made
    /// beside this thread: ask again.
    [[nodiscard]] bool prepare(const CanvasDocument &document, const FrameGeometry &geometry)
    {
        return m_scene.prepare(document, geometry);
    }
    /// `render` for a geometry of one's own: an upright canvas at the size of a view.
    Result render(const CanvasDocument &document, const FrameGeometry &geometry,
                  const std::optional<QColor> &background, std::span<const FrameTarget> targets);

private:
    struct Output
    {
        FrameTarget target;
        FrameRing ring;
        int scaled = -1; // in m_scaled; below 0 for a target of the frame's own size
    };
    struct Thread
    {
        explicit Thread(int width)
            : composer(width)
            , mirrored(width, RowComposer::Order::upward)
        {
        }

        RowComposer composer;
        RowComposer mirrored;
        std::vector<const DrawItem *> items;
        std::vector<const DrawItem *> mirroredItems;
    };
    /// Where the rows of one pass go.
    using Destinations = std::vector<FrameOutput>;

    bool isSetUpFor(const FrameGeometry &geometry, quint32 background,
                    std::span<const FrameTarget> targets) const;
    bool setUp(const FrameGeometry &geometry, quint32 background,
               std::span<const FrameTarget> targets);
    void reserveItems();
    bool composeOutputs();
    bool composeScaledOutputs();
    void compose(const Destinations &destinations, const TileDamage &stale);
    void composeBand(const Destinations &destinations, int band, quint64 tiles, Thread &thread);
    void composeMirrored(const FrameOutput &destination, const TileDamage &stale);
    void collect(int top, int bottom, std::vector<const DrawItem *> &items) const;
    void write(const ScaledFrame &source, const FrameOutput &destination, const TileDamage &stale);
    Frames frames() const;

    ForkJoin m_workers;
    FrameScene m_scene;
    FrameGeometry m_geometry;
    quint32 m_background = 0; // premultiplied
    TileDamage m_damage;      // of one frame
    std::vector<Output> m_outputs;
    TileDamage m_stale; // of all outputs together
    Destinations m_destinations;
    FrameBytes m_canvasFrame; // what is scaled; null as long as nothing is
    std::vector<ScaledFrame> m_scaled;
    std::vector<Thread> m_threads;
    std::vector<int> m_bands;
};

} // namespace tessara
