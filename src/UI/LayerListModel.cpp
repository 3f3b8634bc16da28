#include "UI/LayerListModel.h"

#include "Models/CanvasDocument.h"
#include "UI/LayerRecord.h"

#include <QTimer>

#include <algorithm>

namespace tessara {

LayerListModel::LayerListModel(CanvasDocument &document)
    : m_document(document)
{
    connect(&document, &CanvasDocument::layerOrderChanged, this, &LayerListModel::followOrder);
    connect(&document, &CanvasDocument::layerChanged, this, &LayerListModel::notifyRecord);
    connect(&document, &CanvasDocument::visibilityChanged, this, &LayerListModel::notifyRecord);
    connect(&document, &CanvasDocument::selectedLayerIDsChanged, this, &LayerListModel::notifyAll);
    followOrder();
}

int LayerListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant LayerListModel::data(const QModelIndex &index, int role) const
{
    if (role != RecordRole || index.row() < 0 || index.row() >= count())
        return {};
    return QVariant::fromValue(m_records[index.row()]);
}

QHash<int, QByteArray> LayerListModel::roleNames() const
{
    return {{RecordRole, "record"}};
}

LayerRecord *LayerListModel::record(const QUuid &id) const
{
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [&](const LayerRecord *row) { return row->id() == id; });
    return found == m_records.end() ? nullptr : *found;
}

void LayerListModel::followOrder()
{
    const QList<QUuid> order = m_document.layerOrder();
    const QList<QUuid> wanted(order.rbegin(), order.rend());
    const int before = count();
    removeMissing(wanted);
    for (int row = 0; row < int(wanted.size()); ++row) {
        const auto at = std::find_if(m_records.begin() + row, m_records.end(),
                                     [&](const auto *known) { return known->id() == wanted[row]; });
        if (at == m_records.end()) {
            beginInsertRows({}, row, row);
            auto *fresh = new LayerRecord(m_document, wanted[row]);
            fresh->setParent(this);
            m_records.insert(row, fresh);
            endInsertRows();
        } else if (const int from = int(at - m_records.begin()); from != row) {
            beginMoveRows({}, from, from, {}, row);
            m_records.move(from, row);
            endMoveRows();
        }
    }
    if (count() != before)
        emit countChanged();
}

void LayerListModel::removeMissing(const QList<QUuid> &wanted)
{
    for (int row = count() - 1; row >= 0; --row) {
        if (wanted.contains(m_records[row]->id()))
            continue;
        beginRemoveRows({}, row, row);
        LayerRecord *gone = m_records.takeAt(row);
        endRemoveRows();
        // The view lets go of a row a little after the row has gone.
        QTimer::singleShot(std::chrono::seconds{1}, gone, &QObject::deleteLater);
    }
}

void LayerListModel::notifyRecord(const QUuid &id)
{
    if (LayerRecord *changed = record(id))
        emit changed->changed();
}

void LayerListModel::notifyAll()
{
    for (LayerRecord *row : std::as_const(m_records))
        emit row->changed();
}

} // namespace tessara
