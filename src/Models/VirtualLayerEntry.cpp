#include "Models/VirtualLayerEntry.h"

namespace tessara {

QUuid VirtualLayerEntry::id() const
{
    return std::visit(
        Overloaded{[](const SingleEntry &single) { return layerOf(single.item)->id(); },
                   [](const GroupEntry &group) { return group.groupID; }},
        content);
}

QString VirtualLayerEntry::name() const
{
    return std::visit(
        Overloaded{[](const SingleEntry &single) { return layerOf(single.item)->name(); },
                   [](const GroupEntry &group) { return group.name; }},
        content);
}

QList<CanvasLayerItem> VirtualLayerEntry::items() const
{
    return std::visit(
        Overloaded{[](const SingleEntry &single) { return QList<CanvasLayerItem>{single.item}; },
                   [](const GroupEntry &group) { return group.items; }},
        content);
}

QList<QUuid> VirtualLayerEntry::layerIDs() const
{
    QList<QUuid> ids;
    for (const CanvasLayerItem &item : items())
        ids.append(layerOf(item)->id());
    return ids;
}

QList<VirtualLayerEntry> virtualEntries(const QList<CanvasLayerItem> &layers,
                                        const QMap<QUuid, QString> &presetGroupNames)
{
    QList<VirtualLayerEntry> entries;
    QHash<QUuid, qsizetype> rowOfGroup;
    for (const CanvasLayerItem &item : layers) {
        const std::optional<QUuid> group = presetGroupID(item);
        if (!group) {
            entries.append({SingleEntry{item}});
        } else if (const auto row = rowOfGroup.constFind(*group); row != rowOfGroup.constEnd()) {
            std::get<GroupEntry>(entries[*row].content).items.append(item);
        } else {
            rowOfGroup.insert(*group, entries.size());
            const QString name = presetGroupNames.value(*group, QStringLiteral("Preset Group"));
            entries.append({GroupEntry{*group, name, {item}}});
        }
    }
    return entries;
}

} // namespace tessara
