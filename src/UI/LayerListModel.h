// The layers as a list shows them, front-most first.
#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace tessara {

class CanvasDocument;
class LayerRecord;

/// Rows are inserted, moved and removed, never made anew, so that a list of hundreds stays smooth.
/// A change of one layer is told by its record alone.
class LayerListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_MOC_INCLUDE("UI/LayerRecord.h")
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role { RecordRole = Qt::UserRole + 1 };

    explicit LayerListModel(CanvasDocument &document);

    int count() const { return int(m_records.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Null for an unknown id.
    LayerRecord *record(const QUuid &id) const;

signals:
    void countChanged();

private:
    void followOrder();
    void removeMissing(const QList<QUuid> &wanted);
    void notifyRecord(const QUuid &id);
    void notifyAll();

    CanvasDocument &m_document;
    QList<LayerRecord *> m_records;
};

} // namespace tessara
