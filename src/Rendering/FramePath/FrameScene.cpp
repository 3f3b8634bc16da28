#include "Rendering/FramePath/FrameScene.h"

#include "Models/CanvasDocument.h"
#include "Rendering/LayerDrawing.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessara {

namespace {

constexpr double longestSlide = 140; // canvas units
constexpr int longestOrdering = 2;   // ms that outlines may take of the caller's time

QRect frameRect(const FrameGeometry &geometry)
{
    return {QPoint(), geometry.pixels};
}

QRectF reachOf(const Primitive &primitive, const QTransform &canvasToDevice)
{
    constexpr double far = 1e6; // px
    const QTransform toDevice = primitive.toCanvas * canvasToDevice;
    const auto *fill = std::get_if<FilledPath>(&primitive.what);
    QRectF reach = toDevice.mapRect(fill ? boxOf(fill->path, fill->parts)
                                         : std::get<PlacedPicture>(primitive.what).box);
    if (const auto *picture = std::get_if<PlacedPicture>(&primitive.what); picture && picture->mask)
        reach &= toDevice.mapRect(picture->mask->controlPointRect());
    if (primitive.clip)
        reach &= QRectF(clipInPixels(*primitive.clip, canvasToDevice));
    return reach & QRectF(-far, -far, 2 * far, 2 * far);
}

// Nothing that is seen slides further.
double limited(double pixels)
{
    constexpr double far = 4e5;
    return std::clamp(pixels, -far, far);
}

// The mask of a picture slides between pixels, whatever the picture does.
std::optional<QPointF> cornerOf(const Primitive &primitive, const QTransform &toDevice)
{
    const auto *picture = std::get_if<PlacedPicture>(&primitive.what);
    const QTransform boxToDevice = primitive.toCanvas * toDevice;
    if (!picture || picture->mask || !isPixelForPixel(*picture, boxToDevice))
        return std::nullopt;
    return boxToDevice.map(picture->box.topLeft());
}

/// The only rows in which `item` may look otherwise than `old`, which was drawn in its place;
/// nothing is told of two that were made apart.
std::optional<OutlineRows> rowsBetween(const DrawItem &old, const DrawItem &item)
{
    const std::optional<Sprite::Kinship> &kinship = item.sprite->kinship();
    if (!kinship || kinship->serial != old.serial || old.slides() || item.slides()
        || old.color != item.color)
        return std::nullopt;
    const QPoint shift = item.place.topLeft() - item.sprite->bounds().topLeft();
    if (shift != old.place.topLeft() - kinship->bounds.topLeft())
        return std::nullopt;
    return OutlineRows{kinship->changed.top + shift.y(), kinship->changed.bottom + shift.y()};
}

void addChange(TileDamage &damage, const DrawItem &old, const DrawItem &item)
{
    const std::optional<OutlineRows> rows = rowsBetween(old, item);
    for (const QRect &bounds : {old.bounds(), item.bounds()})
        damage.add(rows ? bounds
                              & QRect(QPoint(bounds.left(), rows->top),
                                      QPoint(bounds.right(), rows->bottom))
                        : bounds);
}

} // namespace

FrameScene::FrameScene(ForkJoin &workers)
    : m_workers(workers)
{
}

FrameScene::~FrameScene()
{
    for (const QMetaObject::Connection &connection : m_connections)
        QObject::disconnect(connection);
}

void FrameScene::watch(const CanvasDocument &document)
{
    for (const QMetaObject::Connection &connection : m_connections)
        QObject::disconnect(connection);
    m_document = &document;
    m_connections = {
        QObject::connect(&document, &CanvasDocument::layerChanged,
                         [this](const QUuid &id) {
                             if (SceneLayer *layer = find(id)) {
                                 layer->isContentStale = layer->isStateStale = true;
                                 m_isStale = true;
                             }
                         }),
        QObject::connect(&document, &CanvasDocument::visibilityChanged,
                         [this](const QUuid &id) {
                             if (SceneLayer *layer = find(id))
                                 layer->isStateStale = m_isStale = true;
                         }),
        // Another may come under its id, even at its address.
        QObject::connect(&document, &CanvasDocument::layerRemoved,
                         [this](const QUuid &id) {
                             if (SceneLayer *layer = find(id))
                                 layer->id = QUuid();
                         }),
        QObject::connect(&document, &CanvasDocument::layerOrderChanged,
                         [this] { m_isOrderStale = m_isStale = true; }),
        QObject::connect(&document, &CanvasDocument::layerRunSettingsChanged,
                         [this] {
                             for (const auto &layer : m_layers)
                                 layer->isStateStale = true;
                             m_isStale = true;
                         }),
        QObject::connect(&document, &CanvasDocument::layerVisibilityChanged,
                         [this] { m_isStale = true; }),
        QObject::connect(&document, &CanvasDocument::sizeChanged, [this] { markAll(); }),
    };
    m_layers.clear();
    markAll();
    m_isOrderStale = true;
}

FrameScene::SceneLayer *FrameScene::find(const QUuid &id) const
{
    const auto layer = std::find_if(m_layers.begin(), m_layers.end(),
                                    [&](const auto &each) { return each->id == id; });
    return layer == m_layers.end() ? nullptr : layer->get();
}

void FrameScene::markAll()
{
    for (const auto &layer : m_layers)
        layer->isContentStale = layer->isStateStale = true;
    m_isStale = true;
}

bool FrameScene::isUpToDate(const CanvasDocument &document, const FrameGeometry &geometry) const
{
    return !m_isStale && isFor(document, geometry);
}

void FrameScene::follow(const CanvasDocument &document, const FrameGeometry &geometry,
                        TileDamage &damage)
{
    if (m_document != &document)
        watch(document);
    if (!(m_geometry == geometry)) {
        m_geometry = geometry;
        markAll();
    }
    if (m_isOrderStale)
        syncOrder(damage);
}

void FrameScene::update(const CanvasDocument &document, const FrameGeometry &geometry,
                        TileDamage &damage)
{
    if (isUpToDate(document, geometry))
        return;
    follow(document, geometry, damage);
    ++m_updates;
    m_mayPrepare = true;
    for (const auto &layer : m_layers) {
        if (!layer->isStateStale)
            continue;
        rebuildSeen(*layer);
        if (layer->opacity > 0)
            layer->lastSeen = m_updates;
    }
    makeRasters();
    m_items.clear();
    for (const auto &layer : m_layers) {
        if (layer->isStateStale)
            rebuildItems(*layer, slideOf(*layer), damage);
        layer->isStateStale = false;
        m_items.insert(m_items.end(), layer->items.begin(), layer->items.end());
    }
    m_isStale = false;
}

bool FrameScene::prepare(const CanvasDocument &document, const FrameGeometry &geometry,
                         TileDamage &damage)
{
    if (isUpToDate(document, geometry))
        return true;
    follow(document, geometry, damage);
    takePrepared();
    if (!m_maker.isIdle())
        return false;
    QElapsedTimer time;
    time.start();
    bool isPrepared = true;
    for (const auto &layer : m_layers) {
        if (!layer->isStateStale || !rebuildSeen(*layer))
            continue;
        isPrepared = isPrepared && m_rasters.empty();
        if (time.elapsed() >= longestOrdering) {
            isPrepared = false;
            break;
        }
    }
    orderRasters();
    return isPrepared;
}

void FrameScene::makeAll(const CanvasDocument &document, const FrameGeometry &geometry,
                         TileDamage &damage)
{
    constexpr std::size_t batch = 16; // sprites; more is more memory before any is given up
    follow(document, geometry, damage);
    takePrepared();
    for (const auto &layer : m_layers) {
        const bool isRebuilt = rebuildSeen(*layer);
        if (!isRebuilt && isHiddenAndUnmade(layer))
            rebuildParts(*layer, QPointF());
        if (m_rasters.size() >= batch)
            makeRasters();
    }
    makeRasters();
}

bool FrameScene::isHiddenAndUnmade(const std::unique_ptr<SceneLayer> &layer)
{
    return layer->opacity <= 0 && layer->isContentStale && !layer->isForgotten;
}

bool FrameScene::rebuildSeen(SceneLayer &layer)
{
    layer.opacity = runOpacity(*m_document, layer.item);
    const QPointF slide = slideOf(layer);
    if (layer.opacity <= 0 || isComplete(layer, slide))
        return false;
    rebuildParts(layer, slide);
    return true;
}

// Whoever keeps its neighbours on both ends of the order keeps its place; the others are taken off
// the frame and come back where they belong.
void FrameScene::syncOrder(TileDamage &damage)
{
    const QList<CanvasLayerItem> ordered = m_document->orderedLayers();
    Layers old = std::exchange(m_layers, {});
    const auto isSame = [](const CanvasLayerItem &item, const std::unique_ptr<SceneLayer> &layer) {
        return layer && layerOf(item)->id() == layer->id && layer->item == item;
    };
    const auto remove = [&](SceneLayer &layer) {
        for (const DrawItem &item : layer.items)
            damage.add(item.bounds());
        layer.items.clear();
        layer.isStateStale = true;
    };
    std::size_t head = 0;
    while (head < old.size() && head < std::size_t(ordered.size())
           && isSame(ordered[qsizetype(head)], old[head]))
        ++head;
    std::size_t tail = 0;
    while (tail < old.size() - head && tail < std::size_t(ordered.size()) - head
           && isSame(ordered[ordered.size() - 1 - qsizetype(tail)], old[old.size() - 1 - tail]))
        ++tail;
    for (std::size_t index = head; index < old.size() - tail; ++index)
        remove(*old[index]);
    for (qsizetype index = 0; index < ordered.size(); ++index) {
        const CanvasLayerItem &item = ordered[index];
        const auto known = std::find_if(old.begin(), old.end(),
                                        [&](const auto &layer) { return isSame(item, layer); });
        if (known != old.end()) {
            m_layers.push_back(std::move(*known));
        } else {
            m_layers.push_back(std::make_unique<SceneLayer>());
            m_layers.back()->item = item;
            m_layers.back()->id = layerOf(item)->id();
        }
    }
    m_isOrderStale = false;
}

QPointF FrameScene::slideOf(const SceneLayer &layer) const
{
    if (std::holds_alternative<CountdownLayer *>(layer.item))
        return {}; // it fades and never slides
    const QSizeF offset =
        m_document->effectiveTransitionOffset(layer.id, layerOf(layer.item)->isHidden());
    return QPointF(offset.width(), offset.height()) * m_geometry.canvasToDevice.m11();
}

bool FrameScene::isComplete(const SceneLayer &layer, QPointF slide) const
{
    return !layer.isContentStale
           && std::all_of(layer.parts.begin(), layer.parts.end(), [&](const Part &part) {
                  return part.placed.sprite && fits(part.placed, part.reach, slide);
              });
}

// A sprite serves where it knows all that the frame shows of it. The platform rounds, and samples a
// picture, from where the frame begins: what reaches beyond must be made for the frame itself, as
// long as it rests.
bool FrameScene::fits(const PlacedSprite &placed, const QRectF &reach, QPointF slide) const
{
    const QRectF frame = frameRect(m_geometry);
    const QPointF low(std::floor(slide.x()), std::floor(slide.y()));
    const QPointF high(std::ceil(slide.x()), std::ceil(slide.y()));
    const QRectF seen = (frame.translated(-low) | frame.translated(-high)) & reach;
    if (seen.isEmpty())
        return true;
    if (slide.isNull() && !frame.contains(reach))
        return placed.area() == frameRect(m_geometry);
    return QRectF(placed.area()).contains(seen);
}

void FrameScene::rebuildParts(SceneLayer &layer, QPointF slide)
{
    const QTransform &toDevice = m_geometry.canvasToDevice;
    const std::vector<Primitive> primitives =
        primitivesOf(layer.item, {QPointF(), m_geometry.style, toDevice.m11()}, m_texts);
    const std::vector<Part> before = std::exchange(layer.parts, {});
    layer.parts.resize(primitives.size());
    for (std::size_t index = 0; index < primitives.size(); ++index) {
        const Primitive &primitive = primitives[index];
        Part &part = layer.parts[index];
        part.reach = reachOf(primitive, toDevice);
        part.corner = cornerOf(primitive, toDevice);
        part.fading = primitive.fading;
        if (const auto *fill = std::get_if<FilledPath>(&primitive.what))
            part.color = fill->color;
        const SpriteKey key(primitive, toDevice);
        const auto known = m_sprites.find(
            key, [&](const PlacedSprite &placed) { return fits(placed, part.reach, slide); });
        if (known) {
            part.placed = *known;
            continue;
        }
        const int margin = int(std::ceil(longestSlide * toDevice.m11())) + 2;
        const QRect frame = frameRect(m_geometry);
        m_rasters.push_back(
            {key, primitive,
             slide.isNull() ? frame : frame.adjusted(-margin, -margin, margin, margin), index,
             &layer, index < before.size() ? before[index].placed.sprite : nullptr, nullptr});
    }
    layer.isContentStale = false;
    layer.isForgotten = false;
    ++layer.revision;
}

void FrameScene::makeRasters()
{
    if (m_rasters.empty())
        return;
    m_workers.run(int(m_rasters.size()), m_workers.threads() - 1, [this](int piece, int) {
        Raster &raster = m_rasters[std::size_t(piece)];
        raster.sprite = Sprite::make(raster.primitive, m_geometry.canvasToDevice, raster.area,
                                     raster.similar.get());
    });
    for (Raster &raster : m_rasters) {
        raster.layer->parts[raster.part].placed = {raster.sprite, QPoint()};
        m_sprites.insert(raster.key, raster.sprite);
        raster.sprite.reset();
    }
    m_rasters.clear();
    forgetHidden();
}

void FrameScene::prepareHidden()
{
    takePrepared();
    if (!m_mayPrepare || !m_maker.isIdle())
        return;
    const auto next = std::find_if(m_layers.begin(), m_layers.end(), &isHiddenAndUnmade);
    m_mayPrepare = next != m_layers.end();
    if (!m_mayPrepare)
        return;
    rebuildParts(**next, QPointF());
    orderRasters();
}

void FrameScene::orderRasters()
{
    std::vector<SpriteMaker::Order> orders;
    for (Raster &raster : m_rasters) {
        orders.push_back({std::move(raster.primitive), m_geometry.canvasToDevice, raster.area});
        m_preparations.push_back(
            {raster.key, raster.layer->id, raster.layer->revision, raster.part});
    }
    m_rasters.clear();
    if (!orders.empty())
        m_maker.start(std::move(orders));
}

// What was made for a layer that has changed meanwhile may still serve another.
void FrameScene::takePrepared()
{
    if (!m_maker.isDone())
        return;
    const std::vector<std::shared_ptr<const Sprite>> sprites = m_maker.takeResults();
    for (std::size_t index = 0; index < sprites.size(); ++index) {
        const Preparation &preparation = m_preparations[index];
        m_sprites.insert(preparation.key, sprites[index]);
        SceneLayer *layer = find(preparation.layer);
        if (layer && layer->revision == preparation.revision && !layer->isForgotten)
            layer->parts[preparation.part].placed = {sprites[index], QPoint()};
    }
    m_preparations.clear();
    forgetHidden();
}

// Layers that were seen long ago give their sprites up first.
void FrameScene::forgetHidden()
{
    constexpr qsizetype room = 256LL << 20; // bytes
    const auto bytesOf = [](const SceneLayer &layer) {
        qsizetype bytes = 0;
        for (const Part &part : layer.parts)
            bytes += part.placed.sprite ? part.placed.sprite->bytes() : 0;
        return bytes;
    };
    qsizetype hidden = 0;
    for (const auto &layer : m_layers)
        hidden += layer->opacity > 0 ? 0 : bytesOf(*layer);
    while (hidden > room) {
        SceneLayer *oldest = nullptr;
        for (const auto &layer : m_layers) {
            if (layer->opacity <= 0 && !layer->parts.empty()
                && (!oldest || layer->lastSeen < oldest->lastSeen))
                oldest = layer.get();
        }
        hidden -= bytesOf(*oldest);
        oldest->parts.clear();
        oldest->isContentStale = oldest->isForgotten = true;
        ++oldest->revision;
    }
}

FrameScene::Shift FrameScene::shiftOf(const Part &part, QPointF slide)
{
    const auto shift = [](double pixels) { return int(std::round(limited(pixels) * 256)); };
    const auto step = [](double corner, double pixels) {
        return int(std::round(corner + limited(pixels)) - std::round(corner));
    };
    if (part.corner)
        return {{step(part.corner->x(), slide.x()), step(part.corner->y(), slide.y())}, {}};
    const QPoint all(shift(slide.x()), shift(slide.y()));
    return {{all.x() >> 8, all.y() >> 8}, {all.x() & 255, all.y() & 255}};
}

void FrameScene::rebuildItems(SceneLayer &layer, QPointF slide, TileDamage &damage)
{
    std::size_t count = 0;
    const auto put = [&](const DrawItem &item) {
        if (count == layer.items.size()) {
            layer.items.push_back(item);
            damage.add(item.bounds());
        } else if (DrawItem &old = layer.items[count]; !(old == item)) {
            addChange(damage, old, item);
            old = item;
        }
        ++count;
    };
    if (layer.opacity > 0) {
        for (const Part &part : layer.parts) {
            const QRect bounds = part.placed.bounds();
            const quint32 color =
                part.color ? blendedColor(*part.color, part.fading, layer.opacity) : 0;
            const int opacity = part.color ? 255 : blendedOpacity(part.fading, layer.opacity);
            const bool isSeen = part.color ? color != 0 : opacity > 0;
            if (!isSeen || bounds.isEmpty())
                continue;
            const Shift shift = shiftOf(part, slide);
            put({part.placed.sprite.get(), part.placed.sprite->serial(),
                 bounds.translated(shift.whole), shift.fraction.x(), shift.fraction.y(), color,
                 opacity});
        }
    }
    for (std::size_t index = count; index < layer.items.size(); ++index)
        damage.add(layer.items[index].bounds());
    layer.items.resize(count);
}

} // namespace tessara
