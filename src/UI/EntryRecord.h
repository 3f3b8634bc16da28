// One row of the layers panel or of the runlist: a layer, or a whole group.
#pragma once

#include <QObject>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include "Models/VirtualLayerEntry.h"

namespace tessara {

class CanvasDocument;
class Runlist;

/// What a row shows, and what the row can ask for.
class EntryRecord : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool isGroup READ isGroup CONSTANT FINAL)
    Q_PROPERTY(QString name READ name NOTIFY changed FINAL)
    Q_PROPERTY(QString icon READ icon NOTIFY changed FINAL)
    /// The kind as the lists write it, "TEXT" or "SHAPE"; empty where the icon tells it alone.
    Q_PROPERTY(QString typeText READ typeText NOTIFY changed FINAL)
    /// The type, or the number of the group's layers.
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    /// The kind's name among the design's colours.
    Q_PROPERTY(QString kind READ kind NOTIFY changed FINAL)
    Q_PROPERTY(bool isOnAir READ isOnAir NOTIFY changed FINAL)
    /// 0 to 1, moved by a running take; a group's is that of its most visible layer.
    Q_PROPERTY(double visibility READ visibility NOTIFY visibilityChanged FINAL)
    /// "OFF", "ON AIR", "CUED IN" or "CUED OUT".
    Q_PROPERTY(QString stateText READ stateText NOTIFY changed FINAL)
    Q_PROPERTY(bool isCued READ isCued NOTIFY changed FINAL)
    /// "Auto Out 12", empty where the row stays until it is taken out.
    Q_PROPERTY(QString autoOutText READ autoOutText NOTIFY changed FINAL)
    Q_PROPERTY(bool isSelected READ isSelected NOTIFY changed FINAL)
    Q_PROPERTY(bool isLocked READ isLocked NOTIFY changed FINAL)
    /// A live view, which never reaches the card.
    Q_PROPERTY(bool isLiveView READ isLiveView NOTIFY changed FINAL)

public:
    EntryRecord(CanvasDocument &document, Runlist &runlist, const QUuid &id);

    QUuid id() const { return m_id; }
    bool isGroup() const { return m_isGroup; }
    QString name() const;
    QString icon() const;
    QString typeText() const;
    QString detail() const;
    QString kind() const;
    bool isOnAir() const;
    double visibility() const;
    QString stateText() const;
    bool isCued() const;
    QString autoOutText() const;
    bool isSelected() const;
    bool isLocked() const;
    bool isLiveView() const;

    /// What a click on the row would do.
    Q_INVOKABLE QString helpText(bool isCueMode, bool isRowLocked) const;
    Q_INVOKABLE void click(bool isCueMode, bool isRowLocked);
    Q_INVOKABLE void takeIn();
    Q_INVOKABLE void takeOut();
    Q_INVOKABLE void toggleHidden();
    Q_INVOKABLE void toggleLocked();
    Q_INVOKABLE void setLocked(bool locked);
    Q_INVOKABLE void select();
    Q_INVOKABLE void toggleSelected();
    Q_INVOKABLE void rename(const QString &name);
    Q_INVOKABLE void duplicate();
    Q_INVOKABLE void remove();
    Q_INVOKABLE void ungroup();

signals:
    void changed();
    void visibilityChanged();
    /// The row is no more: what was begun on it ends.
    void gone();

private:
    CanvasDocument &m_document;
    Runlist &m_runlist;
    QUuid m_id;
    bool m_isGroup = false;
};

} // namespace tessara
