// What of a document can be undone.
#pragma once

#include <QHash>
#include <QMap>

#include "Models/CanvasDocument.h"
#include "Models/LayerCapture.h"
#include "Models/LayerWatch.h"
#include "Models/UndoStack.h"

namespace tessara {

/// Turns what happens in the document into entries of its undo stack: each watched property by
/// itself, and layers that come, go, change places or names. Takes and cues are none of it.
///
/// A layer that comes back is on air only if it stood there when it went. In the middle of a take,
/// or before an auto-out that nobody would run any more, it counts as off: better missed than seen.
class DocumentHistory : public DocumentHooks
{
public:
    /// `isMacroRunning` tells whether what happens is played: then it is no history.
    DocumentHistory(CanvasDocument &document, Clock &clock, std::function<bool()> isMacroRunning);
    ~DocumentHistory() override;

    UndoStack &undoStack() { return m_undoStack; }
    /// The texts of a layer's properties that history holds for the present ones.
    QMap<QString, QString> undoCommittedProps(const QUuid &id) const
    {
        return m_undoCommittedProps.value(id);
    }

    void startUndoObserving(const CanvasLayerItem &item) override;
    void layerAdded(const CanvasLayerItem &item) override;
    void layerWillBeRemoved(const CanvasLayerItem &item, qsizetype orderIndex) override;
    void layerRemoved(const QUuid &id) override;
    void layerRenamed(const QUuid &id, const QString &from, const QString &to) override;
    void clockWritten(const TextLayer &layer) override;
    void layersReordered(const QList<QUuid> &from, const QList<QUuid> &to) override;

private:
    /// A layer that the operator added, as it was when undo took it away; null while it is there.
    struct AddedLayer
    {
        std::unique_ptr<Layer> layer;
        CanvasLayerItem item;
        LayerRunSettings runSettings;
    };
    /// What comes back of a layer that the operator deleted.
    struct DeletedLayer
    {
        CapturedLayer captured;
        bool stoodOnAir = false;
    };

    void propertyChanged(const QUuid &id, const LayerPropertyRow &row, const QString &value);
    /// Edits that are still in their quiet time become entries, in the order of their writing.
    void commitWaitingEdits();
    void applyProperty(const QUuid &id, const QString &key, const QString &value);
    void takeAway(const QUuid &id, AddedLayer &added);
    void bringBack(AddedLayer &added);
    DeletedLayer deletedLayer(const CanvasLayerItem &item) const;
    void takeAway(const QUuid &id, DeletedLayer &deleted);
    void bringBack(const QUuid &id, const DeletedLayer &deleted);
    /// Marks what `change` does as history's own.
    void quietly(const std::function<void()> &change);

    CanvasDocument &m_document;
    Clock &m_clock;
    std::function<bool()> m_isMacroRunning;
    UndoStack m_undoStack{[this] { commitWaitingEdits(); }};
    bool m_suppressUndoPush = false;
    QHash<QUuid, QMap<QString, QString>> m_undoCommittedProps;
    QHash<QUuid, std::shared_ptr<LayerWatch>> m_undoObservers;
};

} // namespace tessara
