// The document as sprites, kept up to date.
#pragma once

#include "Base/ForkJoin.h"
#include "Models/CanvasLayerItem.h"
#include "Rendering/FramePath/RowComposer.h"
#include "Rendering/FramePath/SpriteCache.h"
#include "Rendering/FramePath/SpriteMaker.h"
#include "Rendering/FramePath/TileDamage.h"
#include "Rendering/LayerPrimitives.h"
#include "Rendering/TextBlockCache.h"

#include <QObject>
#include <QPointer>

namespace tessara {

class CanvasDocument;

/// How a document becomes pixels.
struct FrameGeometry
{
    QSize pixels;
    QTransform canvasToDevice; // a scale and a shift
    DrawingStyle style = DrawingStyle::frame;

    bool operator==(const FrameGeometry &) const = default;
};

/// Follows the notices of one document: a layer whose drawing has changed gets new sprites when it
/// is next seen, one that fades or slides only other numbers. What stands still costs nothing.
class FrameScene
{
    Q_DISABLE_COPY_MOVE(FrameScene)

public:
    explicit FrameScene(ForkJoin &workers);
    ~FrameScene();

    /// Brings the items to the state of the document and adds what looks otherwise to `damage`,
    /// which is of the geometry's size. With another document or another geometry the caller takes
    /// the whole frame for damaged.
    void update(const CanvasDocument &document, const FrameGeometry &geometry, TileDamage &damage);
    /// Has the sprites made, beside this thread, that the update would lack; false as long as there
    /// are any. The damage is that of the update to come.
    bool prepare(const CanvasDocument &document, const FrameGeometry &geometry, TileDamage &damage);
    /// Nothing has changed since the last update; only then is there nothing to do.
    bool isUpToDate(const CanvasDocument &document, const FrameGeometry &geometry) const;
    /// The last update was for these, whatever has changed since.
    bool isFor(const CanvasDocument &document, const FrameGeometry &geometry) const
    {
        return m_document == &document && m_geometry == geometry;
    }

    /// Makes all sprites of the document at once, those of hidden layers too, as far as there is
    /// room for them. The damage is that of the update to come.
    void makeAll(const CanvasDocument &document, const FrameGeometry &geometry, TileDamage &damage);
    /// Makes the sprites of a layer that isn't seen yet, beside this thread, so that a take finds
    /// them; one layer at a time, to be called once a frame after the update.
    void prepareHidden();

    /// From the lowest to the highest; valid until the next update.
    std::span<const DrawItem> items() const { return m_items; }

private:
    struct Part
    {
        PlacedSprite placed;
        QRectF reach;                   // px, what the primitive could cover
        std::optional<QPointF> corner;  // px, of a picture that only goes to whole pixels
        std::optional<RGBAColor> color; // none for a picture
        Fading fading;
    };
    struct SceneLayer
    {
        CanvasLayerItem item;
        QUuid id;
        bool isContentStale = true; // `parts` are not what would be drawn
        bool isStateStale = true;
        bool isForgotten = false; // its sprites took too much room while it was hidden
        double opacity = 0;
        quint64 lastSeen = 0; // update
        quint64 revision = 0; // of the parts
        std::vector<Part> parts;
        std::vector<DrawItem> items;
    };
    struct Raster // to be made
    {
        SpriteKey key;
        Primitive primitive;
        QRect area;
        std::size_t part; // of the layer
        SceneLayer *layer;
        std::shared_ptr<const Sprite> similar; // or none
        std::shared_ptr<const Sprite> sprite;
    };
    /// A raster in the maker's hands, whose layer may be gone when it is done.
    struct Preparation
    {
        SpriteKey key;
        QUuid layer;
        quint64 revision;
        std::size_t part;
    };
    using Layers = std::vector<std::unique_ptr<SceneLayer>>;

    void watch(const CanvasDocument &document);
    void follow(const CanvasDocument &document, const FrameGeometry &geometry, TileDamage &damage);
    /// False where it isn't seen, or is as it is to be.
    bool rebuildSeen(SceneLayer &layer);
    static bool isHiddenAndUnmade(const std::unique_ptr<SceneLayer> &layer);
    void orderRasters();
    void markAll();
    void syncOrder(TileDamage &damage);
    QPointF slideOf(const SceneLayer &layer) const;
    /// How far a part has been slid from where its sprite is.
    struct Shift
    {
        QPoint whole;    // px
        QPoint fraction; // 256ths of a pixel more
    };
    static Shift shiftOf(const Part &part, QPointF slide);
    bool fits(const PlacedSprite &placed, const QRectF &reach, QPointF slide) const;
    bool isComplete(const SceneLayer &layer, QPointF slide) const;
    void rebuildParts(SceneLayer &layer, QPointF slide);
    void takePrepared();
    void forgetHidden();
    SceneLayer *find(const QUuid &id) const;
    void makeRasters();
    void rebuildItems(SceneLayer &layer, QPointF slide, TileDamage &damage);

    ForkJoin &m_workers;
    QPointer<const CanvasDocument> m_document;
    std::vector<QMetaObject::Connection> m_connections;
    FrameGeometry m_geometry;
    bool m_isStale = true;
    bool m_isOrderStale = true;
    TextBlockCache m_texts;
    SpriteCache m_sprites;
    Layers m_layers;
    std::vector<Raster> m_rasters;
    SpriteMaker m_maker;
    std::vector<Preparation> m_preparations;
    bool m_mayPrepare = true; // some hidden layer may lack sprites
    quint64 m_updates = 0;
    std::vector<DrawItem> m_items;
};

} // namespace tessara
