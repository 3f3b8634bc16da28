// The document as sprites, kept up to date.
#pragma once

#include "Models/CanvasLayerItem.h"
#include "Rendering/FramePath/SceneOrder.h"
#include "Rendering/FramePath/SpriteSupply.h"
#include "Rendering/LayerPrimitives.h"
#include "Rendering/TextBlockCache.h"

namespace tessara {

/// How a document becomes pixels.
struct FrameGeometry
{
    QSize pixels;
    QTransform canvasToDevice; // a scale and a shift
    DrawingStyle style = DrawingStyle::frame;

    bool operator==(const FrameGeometry &) const = default;
};

/// Follows one document: a layer whose drawing has changed gets new sprites when it is next seen,
/// one that fades or slides only other numbers. What stands still costs nothing.
///
/// `update` is what a frame is made of. The others make sprites before they are needed, may come at
/// any time, and change nothing of what `items` shows.
class FrameScene
{
    Q_DISABLE_COPY_MOVE(FrameScene)

public:
    explicit FrameScene(ForkJoin &workers)
        : m_supply(workers)
    {
    }

    /// Brings the items to the state of the document. Answers what looks otherwise than after the
    /// last update: everything, for another document or another geometry.
    const TileDamage &update(const CanvasDocument &document, const FrameGeometry &geometry);
    /// Nothing has changed since the last update; only then is there nothing to do.
    bool isUpToDate(const CanvasDocument &document, const FrameGeometry &geometry) const
    {
        return isFor(document, geometry) && m_order.isCurrent() && m_damage.isEmpty();
    }
    /// From the lowest to the highest; valid until the next update.
    std::span<const DrawItem> items() const { return m_items; }

    /// Has the sprites made, beside this thread, that an update would lack; false as long as there
    /// are any.
    bool prepare(const CanvasDocument &document, const FrameGeometry &geometry);
    /// Makes all sprites of the document at once, those of hidden layers too, as far as there is
    /// room for them.
    void makeAll(const CanvasDocument &document, const FrameGeometry &geometry);
    /// Has the sprites made, beside this thread, of one layer that isn't seen yet, so that a take
    /// finds them. To be called once a frame; nothing before the first update.
    void prepareHidden();

private:
    bool isFor(const CanvasDocument &document, const FrameGeometry &geometry) const
    {
        return m_order.document() == &document && m_geometry == geometry;
    }
    void follow(const CanvasDocument &document, const FrameGeometry &geometry);
    void lookAt(SceneLayer &layer) const;
    bool isComplete(const SceneLayer &layer) const;
    bool fits(const PlacedSprite &placed, const QRectF &reach, QPointF slide) const;
    void rebuildParts(SceneLayer &layer);

    SceneOrder m_order;
    FrameGeometry m_geometry;
    TextBlockCache m_texts;
    SpriteSupply m_supply;
    TileDamage m_damage;  // since the last update
    TileDamage m_changed; // by it
    quint64 m_updates = 0;
    std::vector<DrawItem> m_items;
};

} // namespace tessara
