// What the document tells of itself to those above it: recording, history, live views.
#pragma once

#include "Models/CanvasLayerItem.h"

namespace tessara {

/// Every notice is silent by default. Whoever records macros, keeps the history or caches live
/// views overrides what it wants to hear.
class DocumentHooks
{
public:
    virtual ~DocumentHooks() = default;

    /// Watch the layer's properties for macro steps.
    virtual void startMacroObserving(const CanvasLayerItem &) {}
    /// Watch the layer's properties for history entries.
    virtual void startUndoObserving(const CanvasLayerItem &) {}

    /// The operator takes a layer on or off air.
    virtual void takeRequested(const QUuid & /*id*/, const QString & /*name*/, bool /*onAir*/) {}

    virtual void layerAdded(const CanvasLayerItem &) {}
    /// The layer still exists, at `orderIndex`.
    virtual void layerWillBeRemoved(const CanvasLayerItem &, qsizetype /*orderIndex*/) {}
    /// Whatever is kept outside the document under the id goes now.
    virtual void layerRemoved(const QUuid & /*id*/) {}
    virtual void layerRenamed(const QUuid & /*id*/, const QString & /*from*/,
                              const QString & /*to*/)
    {
    }
    /// The layer shows another time of day.
    virtual void clockWritten(const TextLayer &) {}
    virtual void layersReordered(const QList<QUuid> & /*from*/, const QList<QUuid> & /*to*/) {}
};

} // namespace tessara
