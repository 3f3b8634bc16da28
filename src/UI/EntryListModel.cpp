#include "UI/EntryListModel.h"

#include "Models/Runlist.h"
#include "UI/EntryRecord.h"

#include <utility>

namespace tessara {

EntryListModel::EntryListModel(CanvasDocument &document, Runlist &runlist)
    : m_document(document)
    , m_runlist(runlist)
{
    connect(&runlist, &Runlist::entriesChanged, this, &EntryListModel::followEntries);
    connect(&runlist, &Runlist::entryChanged, this, &EntryListModel::noteChange);
    connect(&runlist, &Runlist::visibilityChanged, this, &EntryListModel::noteVisibility);
    connect(&m_telling, &Throttle::due, this, &EntryListModel::tell);
    followEntries();
}

int EntryListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant EntryListModel::data(const QModelIndex &index, int role) const
{
    if (role != RecordRole || index.row() < 0 || index.row() >= count())
        return {};
    return QVariant::fromValue(m_records[index.row()]);
}

QHash<int, QByteArray> EntryListModel::roleNames() const
{
    return {{RecordRole, "record"}};
}

void EntryListModel::followEntries()
{
    const QList<QUuid> wanted = m_runlist.entryIDs();
    const int before = count();
    removeMissing(wanted);
    for (int row = 0; row < int(wanted.size()); ++row) {
        EntryRecord *known = record(wanted[row]);
        if (!known) {
            beginInsertRows({}, row, row);
            known = new EntryRecord(m_document, m_runlist, wanted[row]);
            known->setParent(this);
            m_records.insert(row, known);
            m_recordsByID.insert(wanted[row], known);
            endInsertRows();
        } else if (m_records[row] != known) {
            const int from = int(m_records.indexOf(known));
            beginMoveRows({}, from, from, {}, row);
            m_records.move(from, row);
            endMoveRows();
        }
    }
    if (count() != before)
        emit countChanged();
}

void EntryListModel::removeMissing(const QList<QUuid> &wanted)
{
    const QSet<QUuid> stay(wanted.begin(), wanted.end());
    for (int row = count() - 1; row >= 0; --row) {
        if (stay.contains(m_records[row]->id()))
            continue;
        beginRemoveRows({}, row, row);
        EntryRecord *removed = m_records.takeAt(row);
        m_recordsByID.remove(removed->id());
        endRemoveRows();
        emit removed->gone();
        // The view lets go of a row a little after the row has gone.
        QTimer::singleShot(std::chrono::seconds{1}, removed, &QObject::deleteLater);
    }
}

void EntryListModel::noteChange(const QUuid &entryID)
{
    m_changed.insert(entryID);
    m_telling.request();
}

void EntryListModel::noteVisibility(const QUuid &entryID)
{
    m_moving.insert(entryID);
    m_telling.request();
}

void EntryListModel::tell()
{
    for (const QUuid &id : std::exchange(m_changed, {})) {
        if (EntryRecord *changed = record(id))
            emit changed->changed();
    }
    for (const QUuid &id : std::exchange(m_moving, {})) {
        if (EntryRecord *moving = record(id))
            emit moving->visibilityChanged();
    }
}

} // namespace tessara
