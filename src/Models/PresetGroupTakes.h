// Takes a preset group on and off air as one graphic.
#pragma once

#include <QList>
#include <QUuid>

namespace tessara {

class CanvasDocument;

/// A group has no state of its own: each of its layers goes through the take engine, started one
/// after the other where its style is a preset reveal.
class PresetGroupTakes
{
public:
    explicit PresetGroupTakes(CanvasDocument &document)
        : m_document(document)
    {
    }

    void setGroupOnAir(const QUuid &groupID, bool onAir, bool useRunTransition);
    /// At least one layer of the group is to be seen.
    bool isOnAir(const QUuid &groupID) const;
    /// The order in which a group reveals: from a point in the middle, 32 % of the way down.
    double transitionOrderingMetric(const QUuid &id) const;

private:
    QList<QUuid> inTakeOrder(QList<QUuid> ids) const;

    CanvasDocument &m_document;
};

} // namespace tessara
