// The layers that a menu or a sheet was opened on.
#pragma once

#include <QList>
#include <QObject>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace tessara {

class CanvasDocument;

/// What was selected when a menu opened. It stays what the menu, and a sheet that it opens, are
/// about, whatever has been selected since.
class HeldSelection : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY held FINAL)
    Q_PROPERTY(bool canGroup READ canGroup NOTIFY held FINAL)

public:
    explicit HeldSelection(CanvasDocument &document);

    int count() const { return int(m_ids.size()); }
    bool canGroup() const { return m_canGroup; }

    /// From now on it is what is selected now.
    Q_INVOKABLE void hold();
    Q_INVOKABLE void remove();
    /// False for a blank name, which groups nothing.
    Q_INVOKABLE bool group(const QString &name);

signals:
    void held();
    /// One of the layers has gone: what is open on them closes.
    void broken();

private:
    CanvasDocument &m_document;
    QList<QUuid> m_ids;
    bool m_canGroup = false;
};

} // namespace tessara
