// The rows of the layers panel and of the runlist, front-most first.
#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QSet>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include "UI/Throttle.h"

namespace tessara {

class CanvasDocument;
class EntryRecord;
class Runlist;

/// Rows are inserted, moved and removed, never made anew, so that a list of hundreds stays smooth.
/// A change of one row is told by its record alone: the first at the next turn of the main loop, a
/// series as often as an eye can follow.
class EntryListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_MOC_INCLUDE("UI/EntryRecord.h")
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role { RecordRole = Qt::UserRole + 1 };

    EntryListModel(CanvasDocument &document, Runlist &runlist);

    int count() const { return int(m_records.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Null for an unknown id.
    EntryRecord *record(const QUuid &entryID) const { return m_recordsByID.value(entryID); }

signals:
    void countChanged();

private:
    void followEntries();
    void removeMissing(const QList<QUuid> &wanted);
    void noteChange(const QUuid &entryID);
    void noteVisibility(const QUuid &entryID);
    void tell();

    CanvasDocument &m_document;
    Runlist &m_runlist;
    QList<EntryRecord *> m_records;
    QHash<QUuid, EntryRecord *> m_recordsByID;
    QSet<QUuid> m_changed;
    QSet<QUuid> m_moving; // in a take
    Throttle m_telling;
};

} // namespace tessara
