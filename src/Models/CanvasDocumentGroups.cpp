// The document's groups: the layers that share one id, and a name.
#include "Models/CanvasDocument.h"

#include <algorithm>

namespace tessara {

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

// A model may belong to a group, but is not grouped by hand.
void CanvasDocument::setPresetGroup(const QUuid &id, const std::optional<QUuid> &groupID)
{
    const std::optional<CanvasLayerItem> item = layerItem(id);
    if (item && !std::holds_alternative<Model3DLayer *>(*item))
        tessara::setPresetGroupID(*item, groupID);
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

} // namespace tessara
