#include "Rendering/FramePath/FrameScene.h"

#include "Models/CanvasDocument.h"
#include "Rendering/FramePath/ScenePlacing.h"
#include "Rendering/LayerDrawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessara {

namespace {

constexpr double longestSlide = 140; // canvas units

QRect frameRect(const FrameGeometry &geometry)
{
    return {QPoint(), geometry.pixels};
}

/// All that a slide can bring into the frame, in canvas units.
QRectF seenOf(const FrameGeometry &geometry)
{
    const double margin = longestSlide * geometry.canvasToDevice.m11() + 4; // px
    const QRectF seen = QRectF(frameRect(geometry)).adjusted(-margin, -margin, margin, margin);
    return geometry.canvasToDevice.inverted().mapRect(seen);
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

// A layer that slides is made as wide as it will be seen, so that it is made once.
QRect areaFor(QPointF slide, const FrameGeometry &geometry)
{
    if (slide.isNull())
        return frameRect(geometry);
    const int margin = int(std::ceil(longestSlide * geometry.canvasToDevice.m11())) + 2;
    return frameRect(geometry).adjusted(-margin, -margin, margin, margin);
}

} // namespace

// Whatever was wanted before has been made or is being made: the ways in may follow in any order.
void FrameScene::follow(const CanvasDocument &document, const FrameGeometry &geometry)
{
    Q_ASSERT(m_supply.wanted() == 0);
    const bool isOther = !isFor(document, geometry);
    if (m_order.document() != &document)
        m_order.watch(document);
    if (isOther) {
        m_geometry = geometry;
        m_changed = m_damage = TileDamage(geometry.pixels);
        m_damage.addAll();
        m_order.markAll();
    }
    m_order.sync(m_damage);
}

const TileDamage &FrameScene::update(const CanvasDocument &document, const FrameGeometry &geometry)
{
    follow(document, geometry);
    m_supply.takeMade();
    ++m_updates;
    for (SceneLayer &layer : m_order.layers()) {
        if (layer.isPlaced)
            continue;
        lookAt(layer);
        if (!layer.isSeen())
            continue;
        layer.lastSeen = m_updates;
        if (!isComplete(layer))
            rebuildParts(layer);
    }
    m_supply.makeNow();
    SpriteSupply::forgetHidden(m_order.layers());
    m_items.clear();
    for (SceneLayer &layer : m_order.layers()) {
        if (!layer.isPlaced)
            placeItems(layer, m_damage);
        layer.isPlaced = true;
        m_items.insert(m_items.end(), layer.items.begin(), layer.items.end());
    }
    Q_ASSERT(m_order.isCurrent() && m_supply.wanted() == 0);
    std::swap(m_changed, m_damage);
    m_damage.clear();
    return m_changed;
}

bool FrameScene::prepare(const CanvasDocument &document, const FrameGeometry &geometry)
{
    constexpr std::size_t mostLayers = 4; // whose outlines take the caller's time
    if (isUpToDate(document, geometry))
        return true;
    follow(document, geometry);
    if (!m_supply.takeMade())
        return false;
    std::size_t rebuilt = 0;
    for (SceneLayer &layer : m_order.layers()) {
        if (layer.isPlaced || rebuilt == mostLayers)
            continue;
        lookAt(layer);
        if (!layer.isSeen() || isComplete(layer))
            continue;
        rebuildParts(layer);
        ++rebuilt;
    }
    const bool isPrepared = m_supply.wanted() == 0 && rebuilt < mostLayers;
    m_supply.makeBeside();
    return isPrepared;
}

void FrameScene::makeAll(const CanvasDocument &document, const FrameGeometry &geometry)
{
    constexpr std::size_t batch = 16; // sprites; more is more memory before any is given up
    using enum SceneLayer::Content;
    follow(document, geometry);
    for (SceneLayer &layer : m_order.layers()) {
        lookAt(layer);
        if (layer.isSeen() ? !isComplete(layer) : layer.content == stale)
            rebuildParts(layer);
        if (m_supply.wanted() < batch)
            continue;
        m_supply.makeNow();
        SpriteSupply::forgetHidden(m_order.layers());
    }
    m_supply.makeNow();
    SpriteSupply::forgetHidden(m_order.layers());
}

void FrameScene::prepareHidden()
{
    if (!m_order.document() || !m_supply.takeMade())
        return;
    follow(*m_order.document(), m_geometry);
    for (SceneLayer &layer : m_order.layers()) {
        if (layer.isSeen() || layer.content != SceneLayer::Content::stale)
            continue;
        rebuildParts(layer);
        return m_supply.makeBeside();
    }
}

void FrameScene::lookAt(SceneLayer &layer) const
{
    const CanvasDocument &document = *m_order.document();
    const std::optional<CanvasLayerItem> item = document.layerItem(*layer.id);
    layer.opacity = item ? runOpacity(document, *item) : 0;
    layer.slide = {};
    if (!item || std::holds_alternative<CountdownLayer *>(*item)) // it fades and never slides
        return;
    const QSizeF offset = document.effectiveTransitionOffset(*layer.id, layerOf(*item)->isHidden());
    layer.slide = QPointF(offset.width(), offset.height()) * m_geometry.canvasToDevice.m11();
}

bool FrameScene::isComplete(const SceneLayer &layer) const
{
    return layer.content == SceneLayer::Content::current
           && std::ranges::all_of(*layer.parts, [&](const ScenePart &part) {
                  return part.placed.sprite && fits(part.placed, part.reach, layer.slide);
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

// Those of a hidden layer are made for where it rests.
void FrameScene::rebuildParts(SceneLayer &layer)
{
    const std::optional<CanvasLayerItem> item = m_order.document()->layerItem(*layer.id);
    const std::shared_ptr<SceneParts> before = layer.parts;
    layer.replaceParts(SceneLayer::Content::current);
    if (!item)
        return;
    const QPointF slide = layer.isSeen() ? layer.slide : QPointF();
    const QTransform &toDevice = m_geometry.canvasToDevice;
    std::vector<Primitive> primitives = primitivesOf(
        *item, {QPointF(), m_geometry.style, toDevice.m11(), seenOf(m_geometry)}, m_texts);
    layer.parts->resize(primitives.size());
    for (std::size_t index = 0; index < primitives.size(); ++index) {
        Primitive &primitive = primitives[index];
        ScenePart &part = (*layer.parts)[index];
        part.reach = reachOf(primitive, toDevice);
        part.fading = primitive.fading;
        if (const auto *fill = std::get_if<FilledPath>(&primitive.what))
            part.color = fill->color;
        const SpriteKey key(primitive, toDevice);
        const auto known = m_supply.find(
            key, [&](const PlacedSprite &placed) { return fits(placed, part.reach, slide); });
        if (known) {
            part.placed = *known;
            continue;
        }
        m_supply.want({key,
                       {layer.parts, index},
                       std::move(primitive),
                       toDevice,
                       areaFor(slide, m_geometry),
                       index < before->size() ? (*before)[index].placed.sprite : nullptr});
    }
}

} // namespace tessara
