// One layer of a document as a frame shows it.
#pragma once

#include "Rendering/FramePath/RowComposer.h"
#include "Rendering/FramePath/SpriteCache.h"

#include <QPointF>
#include <QUuid>

#include <optional>

namespace tessara {

/// One drawing operation: its raster, and what is applied when it is blended.
struct ScenePart
{
    PlacedSprite placed;            // without a sprite as long as it is being made
    QRectF reach;                   // px, what the operation could cover
    std::optional<RGBAColor> color; // none for a picture
    Fading fading;
};

/// Never made over: what a layer is drawn with next are other parts.
using SceneParts = std::vector<ScenePart>;

/// Where a sprite belongs that is made later. It dies with the part, whatever comes in its place.
class PartToken
{
public:
    PartToken(const std::shared_ptr<SceneParts> &parts, std::size_t index)
        : m_parts(parts)
        , m_index(index)
    {
    }

    void give(const std::shared_ptr<const Sprite> &sprite) const
    {
        if (const std::shared_ptr<SceneParts> parts = m_parts.lock())
            (*parts)[m_index].placed = {sprite, QPoint()};
    }

private:
    std::weak_ptr<SceneParts> m_parts;
    std::size_t m_index;
};

struct SceneLayer
{
    enum class Content {
        stale,    // the parts are not what would be drawn
        current,  // their sprites may still be missing
        forgotten // the sprites took too much room while nobody saw them
    };

    std::optional<QUuid> id; // none once the layer has gone: another may come under its id
    Content content = Content::stale;
    bool isPlaced = false; // the items are what the document shows
    double opacity = 0;    // when it was last looked at
    QPointF slide{};       // px, likewise
    quint64 lastSeen = 0;  // update
    std::shared_ptr<SceneParts> parts = std::make_shared<SceneParts>();
    std::vector<DrawItem> items{};

    bool isSeen() const { return opacity > 0; }
    void replaceParts(Content state)
    {
        parts = std::make_shared<SceneParts>();
        content = state;
    }
};

} // namespace tessara
