// One row of the lists that show a document: a layer, or a whole group.
#pragma once

#include "Models/CanvasLayerItem.h"

#include <QMap>

namespace tessara {

/// A layer that belongs to no group.
struct SingleEntry
{
    CanvasLayerItem item;

    bool operator==(const SingleEntry &) const = default;
};

/// All layers of one group, front-most first.
struct GroupEntry
{
    QUuid groupID;
    QString name;
    QList<CanvasLayerItem> items;

    bool operator==(const GroupEntry &) const = default;
};

struct VirtualLayerEntry
{
    std::variant<SingleEntry, GroupEntry> content;

    /// The layer's id, or the group's.
    QUuid id() const;
    QString name() const;
    /// The layer, or all of the group's, front-most first.
    const CanvasLayerItem *begin() const;
    const CanvasLayerItem *end() const;
    qsizetype size() const { return end() - begin(); }
    QList<QUuid> layerIDs() const;
    bool isGroup() const { return std::holds_alternative<GroupEntry>(content); }

    bool operator==(const VirtualLayerEntry &) const = default;
};

/// The runlist window's rows are of the same shape.
using RunlistEntry = VirtualLayerEntry;

/// The rows for `layers`, given front-most first: a group stands where its front-most layer is.
QList<VirtualLayerEntry> virtualEntries(const QList<CanvasLayerItem> &layers,
                                        const QMap<QUuid, QString> &presetGroupNames);

} // namespace tessara
