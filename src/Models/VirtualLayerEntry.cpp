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

const CanvasLayerItem *VirtualLayerEntry::begin() const
{
    return std::visit(Overloaded{[](const SingleEntry &single) { return &single.item; },
                                 [](const GroupEntry &group) { return group.items.constData(); }},
                      content);
}

const CanvasLayerItem *VirtualLayerEntry::end() const
{
    const auto *group = std::get_if<GroupEntry>(&content);
    return begin() + (group ? group->items.size() : 1);
}

QList<QUuid> VirtualLayerEntry::layerIDs() const
{
    QList<QUuid> ids;
    for (const CanvasLayerItem &item : *this)
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
