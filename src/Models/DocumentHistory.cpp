#include "Models/DocumentHistory.h"

#include "Models/LayerFactory.h"
#include "Models/LayerPropertyLabels.h"

#include <algorithm>

namespace tessara {

DocumentHistory::DocumentHistory(CanvasDocument &document, Clock &clock,
                                 std::function<bool()> isMacroRunning)
    : m_document(document)
    , m_clock(clock)
    , m_isMacroRunning(std::move(isMacroRunning))
{
    m_document.addHooks(this);
}

DocumentHistory::~DocumentHistory()
{
    m_document.removeHooks(this);
}

void DocumentHistory::quietly(const std::function<void()> &change)
{
    m_suppressUndoPush = true;
    change();
    m_suppressUndoPush = false;
}

// Properties

void DocumentHistory::startUndoObserving(const CanvasLayerItem &item)
{
    const QUuid id = layerOf(item)->id();
    QMap<QString, QString> &committed = m_undoCommittedProps[id] = {};
    for (const LayerPropertyRow &row : layerPropertyRows(item))
        committed.insert(row.key, row.encode(*layerOf(item)));
    m_undoObservers[id] = std::make_shared<LayerWatch>(
        m_clock, item, [this] { return !m_isMacroRunning() && !m_document.isClockWriting(); },
        [this, id](const LayerPropertyRow &row, const QString &value) {
            propertyChanged(id, row, value);
        });
}

// The write of an undo comes in here as well, after its quiet time: it is known by its value.
void DocumentHistory::propertyChanged(const QUuid &id, const LayerPropertyRow &row,
                                      const QString &value)
{
    if (m_suppressUndoPush)
        return;
    const QString key = row.key;
    QMap<QString, QString> &committed = m_undoCommittedProps[id];
    const QString old = committed.value(key, value);
    if (old == value)
        return;
    committed[key] = value;
    m_undoStack.push(
        row.undoName, [=, this] { applyProperty(id, key, old); },
        [=, this] { applyProperty(id, key, value); });
}

void DocumentHistory::commitWaitingEdits()
{
    for (;;) {
        std::shared_ptr<LayerWatch> oldest;
        for (const std::shared_ptr<LayerWatch> &watch : std::as_const(m_undoObservers)) {
            const std::optional<quint64> waiting = watch->oldestWaiting();
            if (waiting && (!oldest || *waiting < *oldest->oldestWaiting()))
                oldest = watch;
        }
        if (!oldest)
            return;
        oldest->tellOldest();
    }
}

void DocumentHistory::applyProperty(const QUuid &id, const QString &key, const QString &value)
{
    quietly([&] { m_document.applyLayerPropertyMacro(id, key, value); });
    if (const auto committed = m_undoCommittedProps.find(id);
        committed != m_undoCommittedProps.end())
        committed->insert(key, value);
}

// No entry, but what the next edit by hand is compared with.
void DocumentHistory::clockWritten(const TextLayer &layer)
{
    if (const auto committed = m_undoCommittedProps.find(layer.id());
        committed != m_undoCommittedProps.end())
        committed->insert(QStringLiteral("text"), layer.text());
}

// Layers that come and go

void DocumentHistory::layerAdded(const CanvasLayerItem &item)
{
    if (m_suppressUndoPush || m_isMacroRunning())
        return;
    const QUuid id = layerOf(item)->id();
    const auto added = std::make_shared<AddedLayer>();
    m_undoStack.push(
        QStringLiteral("Add ") + layerTypeName(layerTypeOf(item)),
        [=, this] { takeAway(id, *added); }, [=, this] { bringBack(*added); });
}

void DocumentHistory::takeAway(const QUuid &id, AddedLayer &added)
{
    const std::optional<CanvasLayerItem> present = m_document.layerItem(id);
    if (!present)
        return;
    added.item = LayerFactory(m_clock, m_document.size()).replica(*present);
    added.layer.reset(layerOf(added.item));
    added.layer->setIsHidden(!m_document.takes().standsOnAir(id));
    added.runSettings = m_document.runSettings(id);
    quietly([&] { m_document.removeLayerCore(id); });
}

void DocumentHistory::bringBack(AddedLayer &added)
{
    if (!added.layer || m_document.layerItem(added.layer->id()))
        return;
    const std::optional<QUuid> group = presetGroupID(added.item);
    if (group && !m_document.presetGroupNames().contains(*group)) // it has been taken apart
        setPresetGroupID(added.item, std::nullopt);
    m_document.takes().setRunSettings(added.layer->id(), added.runSettings);
    added.layer.release(); // to the document
    quietly([&] { m_document.addLayer(added.item); });
}

void DocumentHistory::layerWillBeRemoved(const CanvasLayerItem &item, qsizetype orderIndex)
{
    if (m_suppressUndoPush)
        return;
    const QUuid id = layerOf(item)->id();
    const auto deleted = std::make_shared<DeletedLayer>(deletedLayer(item));
    m_undoStack.push(
        QStringLiteral("Delete Layer"),
        [=, this] {
            bringBack(id, *deleted);
            if (!m_document.layerItem(id)) // its picture's file has gone
                return;
            quietly([&] {
                m_document.moveInLayerOrder(id, orderIndex);
                m_document.setSelectedLayerIDs({id});
            });
        },
        [=, this] { takeAway(id, *deleted); });
}

DocumentHistory::DeletedLayer DocumentHistory::deletedLayer(const CanvasLayerItem &item) const
{
    return {captureLayerProps(item), m_document.takes().standsOnAir(layerOf(item)->id())};
}

// As it is by now: a change right after a layer has come back has no entry of its own.
void DocumentHistory::takeAway(const QUuid &id, DeletedLayer &deleted)
{
    if (const std::optional<CanvasLayerItem> present = m_document.layerItem(id))
        deleted = deletedLayer(*present);
    quietly([&] { m_document.removeLayerCore(id); });
}

void DocumentHistory::bringBack(const QUuid &id, const DeletedLayer &deleted)
{
    if (m_document.layerItem(id))
        return;
    const CapturedLayer &captured = deleted.captured;
    const auto made = makeLayerFromProps(m_clock, id, captured.type, captured.props);
    if (!made)
        return;
    layerOf(*made)->setIsHidden(!deleted.stoodOnAir);
    quietly([&] { m_document.addLayer(*made); });
}

void DocumentHistory::layerRemoved(const QUuid &id)
{
    m_undoObservers.remove(id);
    m_undoCommittedProps.remove(id);
}

// Names and order

// The name is watched like any other property; this entry stands for that one.
void DocumentHistory::layerRenamed(const QUuid &id, const QString &from, const QString &to)
{
    const QString key = QStringLiteral("name");
    if (const auto committed = m_undoCommittedProps.find(id);
        committed != m_undoCommittedProps.end())
        committed->insert(key, to);
    m_undoStack.push(
        QStringLiteral("Rename Layer"), [=, this] { applyProperty(id, key, from); },
        [=, this] { applyProperty(id, key, to); });
}

void DocumentHistory::layersReordered(const QList<QUuid> &from, const QList<QUuid> &to)
{
    m_undoStack.push(
        QStringLiteral("Reorder Layers"), [=, this] { m_document.restoreLayerOrder(from); },
        [=, this] { m_document.restoreLayerOrder(to); });
}

} // namespace tessara
