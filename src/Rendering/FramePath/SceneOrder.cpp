#include "Rendering/FramePath/SceneOrder.h"

#include "Models/CanvasDocument.h"

#include <algorithm>

namespace tessara {

void SceneOrder::watch(const CanvasDocument &document)
{
    m_document = &document;
    m_layers.clear();
    m_isSorted = false;
    m_listener = std::make_unique<QObject>();
    const auto hear = [&](auto notice, auto act) {
        QObject::connect(&document, notice, m_listener.get(), act);
    };
    hear(&CanvasDocument::layerChanged, [this](const QUuid &id) {
        if (SceneLayer *layer = find(id)) {
            layer->content = SceneLayer::Content::stale;
            layer->isPlaced = false;
        }
    });
    hear(&CanvasDocument::visibilityChanged, [this](const QUuid &id) {
        if (SceneLayer *layer = find(id))
            layer->isPlaced = false;
    });
    hear(&CanvasDocument::layerRunSettingsChanged, [this] {
        for (SceneLayer &layer : m_layers)
            layer.isPlaced = false;
    });
    hear(&CanvasDocument::layerRemoved, [this](const QUuid &id) {
        if (SceneLayer *layer = find(id))
            layer->id.reset();
    });
    hear(&CanvasDocument::layerOrderChanged, [this] { m_isSorted = false; });
    hear(&CanvasDocument::sizeChanged, [this] { markAll(); });
}

void SceneOrder::markAll()
{
    for (SceneLayer &layer : m_layers) {
        layer.content = SceneLayer::Content::stale;
        layer.isPlaced = false;
    }
}

SceneLayer *SceneOrder::find(const QUuid &id)
{
    const auto layer = std::ranges::find(m_layers, id, &SceneLayer::id);
    return layer == m_layers.end() ? nullptr : &*layer;
}

bool SceneOrder::isCurrent() const
{
    return m_document && m_isSorted && std::ranges::all_of(m_layers, &SceneLayer::isPlaced);
}

// Whoever keeps its neighbours on both ends of the order keeps its place; the others are taken off
// the frame and come back where they belong.
void SceneOrder::sync(TileDamage &damage)
{
    if (m_isSorted)
        return;
    const QList<QUuid> &order = m_document->layerOrder();
    const auto [known, kept] = std::ranges::mismatch(m_layers, order, {}, &SceneLayer::id);
    const auto [knownEnd, keptEnd] =
        std::mismatch(m_layers.rbegin(), std::make_reverse_iterator(known), order.rbegin(),
                      std::make_reverse_iterator(kept),
                      [](const SceneLayer &layer, const QUuid &id) { return layer.id == id; });
    for (auto layer = known; layer != knownEnd.base(); ++layer) {
        for (const DrawItem &item : layer->items)
            damage.add(item.bounds());
        layer->items.clear();
        layer->isPlaced = false;
    }
    std::vector<SceneLayer> sorted;
    sorted.reserve(std::size_t(order.size()));
    for (const QUuid &id : order) {
        SceneLayer *layer = find(id);
        sorted.push_back(layer ? std::move(*layer) : SceneLayer{.id = id});
    }
    m_layers = std::move(sorted);
    m_isSorted = true;
}

} // namespace tessara
