#include "Models/CanvasDocument.h"

#include "Models/LayerFactory.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QPolygonF>

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

void CanvasDocument::setHooks(DocumentHooks *hooks)
{
    m_hooks = hooks ? hooks : &m_silentHooks;
}

void CanvasDocument::forwardOwnNotices()
{
    for (const auto notice :
         {&CanvasDocument::sizeChanged, &CanvasDocument::layerOrderChanged,
          &CanvasDocument::selectedLayerIDsChanged, &CanvasDocument::isDrawingCustomShapeChanged,
          &CanvasDocument::cueTargetsChanged, &CanvasDocument::layerRunSettingsChanged,
          &CanvasDocument::layerVisibilityChanged, &CanvasDocument::presetGroupsChanged})
        connect(this, notice, this, &CanvasDocument::changed);
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
    return added(
        factory().customShape(position, size, normalizedPoints, nextNumber<ShapeLayer>()));
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

ScoreLayer *CanvasDocument::addScoreLayer(ScoreTemplate scoreTemplate,
                                          ScoreSportPreset sportPreset)
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
        m_hooks->startMacroObserving(*item);
        m_hooks->startUndoObserving(*item);
        m_hooks->layerAdded(*item);
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
    m_hooks->layerRemoved(id);
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
        m_hooks->layerWillBeRemoved(*item, m_layerOrder.indexOf(id));
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
        m_hooks->layerRenamed(id, old, trimmed);
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
    const bool isComplete = std::is_permutation(order.begin(), order.end(), m_layerOrder.begin(),
                                                m_layerOrder.end());
    if (!isComplete || order == m_layerOrder)
        return;
    const QList<QUuid> old = std::exchange(m_layerOrder, order);
    emit layerOrderChanged();
    m_hooks->layersReordered(old, order);
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
        normalized.append({(point.x() - bounds.x()) / size.width(),
                           (point.y() - bounds.y()) / size.height()});
    addCustomShapeLayer(bounds.topLeft(), size, normalized);
}

void CanvasDocument::setRealtimeTimerText(const QString &text)
{
    for (TextLayer *layer : layersOf<TextLayer>()) {
        if (layer->fieldKind() == TemplateFieldKind::timer)
            layer->setText(text);
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

// Groups

std::optional<QUuid> CanvasDocument::presetGroupID(const QUuid &id) const
{
    const std::optional<CanvasLayerItem> item = layerItem(id);
    return item ? tessara::presetGroupID(*item) : std::nullopt;
}

QList<QUuid> CanvasDocument::layerIDsInPresetGroup(const QUuid &groupID) const
{
    QList<QUuid> ids;
    for (const QUuid &id : m_layerOrder) {
        if (presetGroupID(id) == groupID)
            ids.append(id);
    }
    return ids;
}

std::optional<QUuid> CanvasDocument::selectedPresetGroupID() const
{
    std::optional<QUuid> common;
    for (const QUuid &id : m_selectedLayerIDs) {
        const std::optional<QUuid> group = presetGroupID(id);
        if (!group || (common && common != group))
            return std::nullopt;
        common = group;
    }
    return common;
}

bool CanvasDocument::canGroupSelection() const
{
    return m_selectedLayerIDs.size() >= 2
           && std::none_of(m_selectedLayerIDs.begin(), m_selectedLayerIDs.end(),
                           [this](const QUuid &id) { return presetGroupID(id).has_value(); });
}

// Only these kinds are grouped by hand; a model joins a group by a preset alone.
void CanvasDocument::setPresetGroup(const QUuid &id, const std::optional<QUuid> &groupID)
{
    const std::optional<CanvasLayerItem> item = layerItem(id);
    if (!item)
        return;
    std::visit(Overloaded{[&](TextLayer *text) { text->setPresetGroupID(groupID); },
                          [&](ImageLayer *image) { image->setPresetGroupID(groupID); },
                          [&](ShapeLayer *shape) { shape->setPresetGroupID(groupID); },
                          [&](WebLayer *web) { web->setPresetGroupID(groupID); },
                          [](ScoreLayer *) {},
                          [](Model3DLayer *) {},
                          [](WindowCaptureLayer *) {},
                          [](CountdownLayer *) {}},
               *item);
}

void CanvasDocument::groupLayers(const QList<QUuid> &ids, const QString &name)
{
    if (ids.isEmpty())
        return;
    const QUuid groupID = QUuid::createUuid();
    const QString trimmed = name.trimmed();
    m_presetGroupNames.insert(groupID, trimmed.isEmpty() ? QStringLiteral("Group") : trimmed);
    for (const QUuid &id : ids)
        setPresetGroup(id, groupID);
    selectPresetGroup(groupID);
    emit presetGroupsChanged();
}

void CanvasDocument::ungroupPreset(const QUuid &groupID)
{
    const QList<QUuid> ids = layerIDsInPresetGroup(groupID);
    for (const QUuid &id : ids)
        setPresetGroup(id, std::nullopt);
    m_presetGroupNames.remove(groupID);
    emit presetGroupsChanged();
}

void CanvasDocument::selectPresetGroup(const QUuid &groupID)
{
    const QList<QUuid> ids = layerIDsInPresetGroup(groupID);
    if (!ids.isEmpty())
        setSelectedLayerIDs(QSet<QUuid>(ids.begin(), ids.end()));
}

// Takes

void CanvasDocument::removeCue(const QUuid &id)
{
    if (m_cueTargets.remove(id) > 0)
        emit cueTargetsChanged();
}

void CanvasDocument::setCueTargets(const QMap<QUuid, bool> &targets)
{
    if (replaceValue(m_cueTargets, targets))
        emit cueTargetsChanged();
}

void CanvasDocument::setLayerRunSettings(const QMap<QUuid, LayerRunSettings> &settings)
{
    m_takes.replaceRunSettings(settings);
}

void CanvasDocument::setLayerVisibility(const QMap<QUuid, double> &visibility)
{
    m_takes.replaceVisibility(visibility);
}

void CanvasDocument::requestTake(const QUuid &id, bool onAir, TakeOptions options)
{
    removeCue(id);
    const Layer *taken = layer(id);
    if (!taken)
        return;
    m_hooks->takeRequested(id, taken->name(), onAir);
    m_takes.setLayerOnAir(id, onAir, options);
}

void CanvasDocument::takeLayerNow(const QUuid &id, bool onAir)
{
    if (const std::optional<QUuid> group = presetGroupID(id))
        takePresetGroupNow(*group, onAir);
    else
        requestTake(id, onAir, {});
}

void CanvasDocument::takePresetGroupNow(const QUuid &groupID, bool onAir)
{
    const QList<QUuid> ids = layerIDsInPresetGroup(groupID);
    for (const QUuid &id : ids)
        removeCue(id);
    for (const QUuid &id : ids)
        m_hooks->takeRequested(id, layer(id)->name(), onAir);
    m_groupTakes.setGroupOnAir(groupID, onAir, true);
}

void CanvasDocument::takeLayerInNow(const QUuid &id)
{
    takeLayerNow(id, true);
}

void CanvasDocument::takeLayerOutNow(const QUuid &id)
{
    takeLayerNow(id, false);
}

void CanvasDocument::takePresetGroupInNow(const QUuid &groupID)
{
    takePresetGroupNow(groupID, true);
}

void CanvasDocument::takePresetGroupOutNow(const QUuid &groupID)
{
    takePresetGroupNow(groupID, false);
}

void CanvasDocument::toggleLayerInRunlist(const QUuid &id)
{
    if (const std::optional<QUuid> group = presetGroupID(id))
        togglePresetGroupInRunlist(*group);
    else if (layer(id))
        requestTake(id, !m_takes.isOnAir(id), {});
}

void CanvasDocument::togglePresetGroupInRunlist(const QUuid &groupID)
{
    takePresetGroupNow(groupID, !m_groupTakes.isOnAir(groupID));
}

void CanvasDocument::setLayerHidden(const QUuid &id, bool hidden)
{
    requestTake(id, !hidden, {.useRunTransition = false});
}

void CanvasDocument::toggleLayerHidden(const QUuid &id)
{
    if (const Layer *toggled = layer(id))
        setLayerHidden(id, !toggled->isHidden());
    else
        removeCue(id);
}

void CanvasDocument::setRunTransitionStyle(LayerRunTransitionStyle style, const QUuid &id)
{
    if (layer(id))
        m_takes.setTransitionStyle(id, style);
}

void CanvasDocument::setRunDissolveDuration(double seconds, const QUuid &id)
{
    if (layer(id))
        m_takes.setDissolveDuration(id, seconds);
}

void CanvasDocument::setRunAutoOutDuration(double seconds, const QUuid &id)
{
    if (layer(id))
        m_takes.setAutoOutDuration(id, seconds);
}

double CanvasDocument::effectiveVisibility(const QUuid &id, bool isHidden) const
{
    return m_takes.effectiveVisibility(id, isHidden);
}

QSizeF CanvasDocument::effectiveTransitionOffset(const QUuid &id, bool isHidden) const
{
    return m_takes.effectiveTransitionOffset(id, isHidden);
}

void CanvasDocument::applyLayerHiddenState(const QUuid &id, bool hidden)
{
    if (Layer *written = layer(id))
        written->setIsHidden(hidden);
}

} // namespace tessara
