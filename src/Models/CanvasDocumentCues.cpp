// The document's cues: what the next take will do to which layer.
#include "Models/CanvasDocument.h"

#include <algorithm>

namespace tessara {

void CanvasDocument::removeCue(const QUuid &id)
{
    removeCues({id});
}

void CanvasDocument::removeCues(const QList<QUuid> &ids)
{
    QMap<QUuid, bool> targets = m_cueTargets;
    for (const QUuid &id : ids)
        targets.remove(id);
    setCueTargets(targets);
}

void CanvasDocument::setCueTargets(const QMap<QUuid, bool> &targets)
{
    if (replaceValue(m_cueTargets, targets))
        emit cueTargetsChanged();
}

void CanvasDocument::toggleCue(const QUuid &id)
{
    if (const std::optional<QUuid> group = presetGroupID(id)) {
        toggleCueForPresetGroup(*group);
        return;
    }
    const Layer *cued = layer(id);
    if (!cued)
        return;
    QMap<QUuid, bool> targets = m_cueTargets;
    if (targets.remove(id) == 0)
        targets.insert(id, cued->isHidden());
    setCueTargets(targets);
}

std::optional<bool> CanvasDocument::cueTargetForPresetGroup(const QUuid &groupID) const
{
    std::optional<bool> common;
    for (const QUuid &id : layerIDsInPresetGroup(groupID)) {
        const auto target = m_cueTargets.constFind(id);
        if (target == m_cueTargets.constEnd() || (common && *common != *target))
            return std::nullopt;
        common = *target;
    }
    return common;
}

void CanvasDocument::toggleCueForPresetGroup(const QUuid &groupID)
{
    if (cueTargetForPresetGroup(groupID)) {
        clearCueForPresetGroup(groupID);
        return;
    }
    const QList<QUuid> ids = layerIDsInPresetGroup(groupID);
    const bool isAnyHidden = std::any_of(ids.begin(), ids.end(),
                                         [this](const QUuid &id) { return layer(id)->isHidden(); });
    QMap<QUuid, bool> targets = m_cueTargets;
    for (const QUuid &id : ids)
        targets.insert(id, isAnyHidden);
    setCueTargets(targets);
}

void CanvasDocument::clearCueForPresetGroup(const QUuid &groupID)
{
    removeCues(layerIDsInPresetGroup(groupID));
}

void CanvasDocument::takeCues()
{
    const QMap<QUuid, bool> targets = m_cueTargets;
    for (auto cue = targets.begin(); cue != targets.end(); ++cue) {
        const Layer *taken = layer(cue.key());
        if (!taken)
            continue;
        tellHooks(&DocumentHooks::takeRequested, cue.key(), taken->name(), cue.value());
        m_takes.setLayerOnAir(cue.key(), cue.value());
    }
    setCueTargets({});
}

} // namespace tessara
