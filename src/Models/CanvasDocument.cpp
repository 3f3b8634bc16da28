#include "Models/CanvasDocument.h"

#include "Models/LayerFactory.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QPolygonF>
#include <QScopedValueRollback>

#include <algorithm>

namespace tessara {

namespace {

// Rough by intent, and independent of the text: who needs the drawn bounds measures them.
QSizeF roughTextSize(const TextLayer &text)
{
    constexpr double width = 320;
    constexpr double leastHeight = 44;
    constexpr double lineHeight = 1.2; // of the font size
    return {width, std::max(text.fontSize() * lineHeight, leastHeight)};
}

QSizeF frameSize(const CanvasLayerItem &item)
{
    return std::visit(Overloaded{[](const TextLayer *text) { return roughTextSize(*text); },
                                 [](const SizedLayer *layer) { return layer->size(); }},
                      item);
}

} // namespace

CanvasDocument::CanvasDocument(Clock &clock, QSizeF size)
    : m_clock(clock)
    , m_size(size)
    , m_takes(*this, clock)
{
    forwardOwnNotices();
}

CanvasDocument::~CanvasDocument() = default;

void CanvasDocument::addHooks(DocumentHooks *hooks)
{
    m_hooks.append(hooks);
}

void CanvasDocument::removeHooks(DocumentHooks *hooks)
{
    m_hooks.removeOne(hooks);
}

void CanvasDocument::forwardOwnNotices()
{
    for (const auto notice :
         {&CanvasDocument::sizeChanged, &CanvasDocument::layerOrderChanged,
          &CanvasDocument::selectedLayerIDsChanged, &CanvasDocument::isDrawingCustomShapeChanged,
          &CanvasDocument::cueTargetsChanged, &CanvasDocument::layerRunSettingsChanged,
          &CanvasDocument::layerVisibilityChanged, &CanvasDocument::presetGroupsChanged})
        connect(this, notice, this, &CanvasDocument::changed);
    for (const auto notice :
         {&CanvasDocument::selectedLayerIDsChanged, &CanvasDocument::presetGroupsChanged})
        connect(this, notice, this, &CanvasDocument::selectedGroupChanged);
}

void CanvasDocument::setSize(QSizeF size)
{
    if (replaceValue(m_size, size))
        emit sizeChanged();
}

// The layers

QList<CanvasLayerItem> CanvasDocument::orderedLayers() const
{
    QList<CanvasLayerItem> items;
    items.reserve(m_layerOrder.size());
    for (const QUuid &id : m_layerOrder) {
        if (const auto item = m_itemsByID.constFind(id); item != m_itemsByID.constEnd())
            items.append(*item);
    }
    return items;
}

std::optional<CanvasLayerItem> CanvasDocument::layerItem(const QUuid &id) const
{
    const auto item = m_itemsByID.constFind(id);
    return item == m_itemsByID.constEnd() ? std::nullopt : std::optional(*item);
}

Layer *CanvasDocument::layer(const QUuid &id) const
{
    const std::optional<CanvasLayerItem> item = layerItem(id);
    return item ? layerOf(*item) : nullptr;
}

QRectF CanvasDocument::layerFrame(const CanvasLayerItem &item) const
{
    return {layerOf(item)->position(), frameSize(item)};
}

QRectF CanvasDocument::layerFrame(const QUuid &id) const
{
    const std::optional<CanvasLayerItem> item = layerItem(id);
    return item ? layerFrame(*item) : QRectF();
}

LayerFactory CanvasDocument::factory() const
{
    return {m_clock, m_size};
}

TextLayer *CanvasDocument::addTextLayer()
{
    return added(factory().text(nextNumber<TextLayer>()));
}

CanvasDocument::AddImageResult CanvasDocument::addImageLayer(const QUrl &url)
{
    const tl::expected<Picture, CanvasDocumentError> picture = Picture::load(url.toLocalFile());
    if (!picture)
        return tl::unexpected(picture.error());
    return added(factory().image(*picture, url));
}

ShapeLayer *CanvasDocument::addTemplateShapeLayer(ShapeKind kind)
{
    return added(factory().templateShape(kind, nextNumber<ShapeLayer>()));
}

ShapeLayer *CanvasDocument::addCustomShapeLayer(QPointF position, QSizeF size,
                                                const QList<QPointF> &normalizedPoints)
{
    return added(factory().customShape(position, size, normalizedPoints, nextNumber<ShapeLayer>()));
}

WebLayer *CanvasDocument::addWebLayer()
{
    return added(factory().web(nextNumber<WebLayer>()));
}

WindowCaptureLayer *CanvasDocument::addWindowCaptureLayer()
{
    return added(factory().windowCapture(nextNumber<WindowCaptureLayer>()));
}

CountdownLayer *CanvasDocument::addCountdownLayer()
{
    return added(factory().countdown(nextNumber<CountdownLayer>()));
}

Model3DLayer *CanvasDocument::addModel3DLayer(const QUrl &url)
{
    return added(factory().model3D(url, nextNumber<Model3DLayer>()));
}

ScoreLayer *CanvasDocument::addScoreLayer(ScoreTemplate scoreTemplate, ScoreSportPreset sportPreset)
{
    return added(factory().score(scoreTemplate, sportPreset, nextNumber<ScoreLayer>()));
}

void CanvasDocument::addLayer(const CanvasLayerItem &item)
{
    Layer *layer = layerOf(item);
    layer->setParent(this);
    std::visit(
        [this](auto *kind) {
            std::get<QList<std::remove_reference_t<decltype(kind)>>>(m_layers).append(kind);
        },
        item);
    m_itemsByID.insert(layer->id(), item);
    registerLayerObservation(item);
    appendAndSelect(layer->id(), layer->isHidden());
}

void CanvasDocument::appendAndSelect(const QUuid &id, bool isHidden)
{
    m_layerOrder.append(id);
    m_takes.setupLayer(id, isHidden);
    emit layerAdded(id);
    emit layerOrderChanged();
    setSelectedLayerIDs({id});
    if (const std::optional<CanvasLayerItem> item = layerItem(id)) {
        tellHooks(&DocumentHooks::startMacroObserving, *item);
        tellHooks(&DocumentHooks::startUndoObserving, *item);
        tellHooks(&DocumentHooks::layerAdded, *item);
    }
}

// Every notice of every property comes in by one door.
void CanvasDocument::registerLayerObservation(const CanvasLayerItem &item)
{
    Layer *layer = layerOf(item);
    const QMetaObject *kind = layer->metaObject();
    const QMetaMethod door =
        staticMetaObject.method(staticMetaObject.indexOfMethod("notifyLayerChanged()"));
    for (int index = 0; index < kind->propertyCount(); ++index) {
        const QMetaProperty property = kind->property(index);
        if (property.hasNotifySignal())
            connect(layer, property.notifySignal(), this, door, Qt::UniqueConnection);
    }
}

void CanvasDocument::notifyLayerChanged()
{
    if (const auto *layer = qobject_cast<Layer *>(sender()))
        emit layerChanged(layer->id());
    emit changed();
}

Layer *CanvasDocument::duplicateLayer(const QUuid &id)
{
    const std::optional<CanvasLayerItem> source = layerItem(id);
    if (!source)
        return nullptr;
    const CanvasLayerItem copy = factory().duplicate(*source);
    m_takes.setRunSettings(layerOf(copy)->id(), runSettings(id));
    addLayer(copy);
    return layerOf(copy);
}

void CanvasDocument::removeLayerCore(const QUuid &id)
{
    const std::optional<CanvasLayerItem> item = layerItem(id);
    if (!item)
        return;
    if (const auto *countdown = std::get_if<CountdownLayer *>(&*item))
        (*countdown)->pause();
    Layer *layer = layerOf(*item);
    layer->disconnect(this);
    std::visit(
        [this](auto *kind) {
            std::get<QList<std::remove_reference_t<decltype(kind)>>>(m_layers).removeOne(kind);
        },
        *item);
    m_itemsByID.remove(id);
    tellHooks(&DocumentHooks::layerRemoved, id);
    m_layerOrder.removeOne(id);
    m_takes.removeLayer(id);
    removeCue(id);
    QSet<QUuid> selection = m_selectedLayerIDs;
    selection.remove(id);
    if (selection.isEmpty() && !m_layerOrder.isEmpty())
        selection.insert(m_layerOrder.last());
    setSelectedLayerIDs(selection);
    emit layerRemoved(id);
    emit layerOrderChanged();
    layer->deleteLater(); // a view may still be in one of its signals
}

void CanvasDocument::removeLayer(const QUuid &id)
{
    if (const std::optional<CanvasLayerItem> item = layerItem(id))
        tellHooks(&DocumentHooks::layerWillBeRemoved, *item, m_layerOrder.indexOf(id));
    removeLayerCore(id);
}

void CanvasDocument::removeSelectedLayers()
{
    const QSet<QUuid> ids = m_selectedLayerIDs;
    for (const QUuid &id : ids)
        removeLayer(id);
}

void CanvasDocument::removePresetGroup(const QUuid &groupID)
{
    const QList<QUuid> ids = layerIDsInPresetGroup(groupID);
    for (const QUuid &id : ids)
        removeLayer(id);
    if (m_presetGroupNames.remove(groupID) > 0)
        emit presetGroupsChanged();
}

void CanvasDocument::moveLayer(const QUuid &id, QPointF point)
{
    if (Layer *moved = layer(id))
        moved->setPosition(point);
}

void CanvasDocument::renameLayer(const QUuid &id, const QString &name)
{
    const QString trimmed = name.trimmed();
    Layer *renamed = layer(id);
    if (trimmed.isEmpty() || !renamed)
        return;
    const QString old = renamed->name();
    renamed->setName(trimmed);
    if (old != trimmed)
        tellHooks(&DocumentHooks::layerRenamed, id, old, trimmed);
}

void CanvasDocument::setLayerLocked(const QUuid &id, bool locked)
{
    if (Layer *changed = layer(id))
        changed->setIsLocked(locked);
}

void CanvasDocument::toggleLayerLocked(const QUuid &id)
{
    if (Layer *changed = layer(id))
        changed->setIsLocked(!changed->isLocked());
}

void CanvasDocument::reorderLayers(const QList<QUuid> &ids)
{
    const QList<QUuid> order(ids.rbegin(), ids.rend());
    // A list that lacks a layer would take it out of the picture.
    const bool isComplete =
        std::is_permutation(order.begin(), order.end(), m_layerOrder.begin(), m_layerOrder.end());
    if (!isComplete || order == m_layerOrder)
        return;
    const QList<QUuid> old = std::exchange(m_layerOrder, order);
    emit layerOrderChanged();
    tellHooks(&DocumentHooks::layersReordered, old, order);
}

void CanvasDocument::commitCustomShapeDraw(const QList<QPointF> &canvasPoints)
{
    setIsDrawingCustomShape(false);
    if (canvasPoints.size() < 3)
        return;
    const QRectF bounds = QPolygonF(canvasPoints).boundingRect();
    const QSizeF size(std::max(bounds.width(), 1.0), std::max(bounds.height(), 1.0));
    QList<QPointF> normalized;
    for (const QPointF &point : canvasPoints)
        normalized.append(
            {(point.x() - bounds.x()) / size.width(), (point.y() - bounds.y()) / size.height()});
    addCustomShapeLayer(bounds.topLeft(), size, normalized);
}

void CanvasDocument::setRealtimeTimerText(const QString &text)
{
    const QScopedValueRollback writing(m_isClockWriting, true);
    for (TextLayer *layer : layersOf<TextLayer>()) {
        if (layer->fieldKind() != TemplateFieldKind::timer || layer->text() == text)
            continue;
        layer->setText(text);
        tellHooks(&DocumentHooks::clockWritten, *layer);
    }
}

// Selection

void CanvasDocument::setSelectedLayerIDs(const QSet<QUuid> &ids)
{
    if (replaceValue(m_selectedLayerIDs, ids))
        emit selectedLayerIDsChanged();
}

std::optional<QUuid> CanvasDocument::selectedLayerID() const
{
    const auto first =
        std::find_if(m_layerOrder.begin(), m_layerOrder.end(),
                     [this](const QUuid &id) { return m_selectedLayerIDs.contains(id); });
    return first == m_layerOrder.end() ? std::nullopt : std::optional(*first);
}

void CanvasDocument::toggleLayerSelection(const QUuid &id)
{
    QSet<QUuid> selection = m_selectedLayerIDs;
    if (!selection.remove(id))
        selection.insert(id);
    setSelectedLayerIDs(selection);
}

} // namespace tessara
