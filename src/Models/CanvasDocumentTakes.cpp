// The document's operations on what is on air; the engine behind them is `LayerTakes`.
#include "Models/CanvasDocument.h"

namespace tessara {

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
    tellHooks(&DocumentHooks::takeRequested, id, taken->name(), onAir);
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
    removeCues(ids);
    for (const QUuid &id : ids)
        tellHooks(&DocumentHooks::takeRequested, id, layer(id)->name(), onAir);
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

LayerRunSettings CanvasDocument::presetGroupRunSettings(const QUuid &groupID) const
{
    const QList<QUuid> ids = layerIDsInPresetGroup(groupID);
    return ids.isEmpty() ? LayerRunSettings{} : runSettings(ids.first());
}

void CanvasDocument::setPresetGroupRunTransitionStyle(LayerRunTransitionStyle style,
                                                      const QUuid &groupID)
{
    for (const QUuid &id : layerIDsInPresetGroup(groupID))
        setRunTransitionStyle(style, id);
}

void CanvasDocument::setPresetGroupRunDissolveDuration(double seconds, const QUuid &groupID)
{
    for (const QUuid &id : layerIDsInPresetGroup(groupID))
        setRunDissolveDuration(seconds, id);
}

void CanvasDocument::setPresetGroupRunAutoOutDuration(double seconds, const QUuid &groupID)
{
    for (const QUuid &id : layerIDsInPresetGroup(groupID))
        setRunAutoOutDuration(seconds, id);
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
