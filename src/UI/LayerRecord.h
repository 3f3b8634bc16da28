// One row of the layers list.
#pragma once

#include <QObject>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

namespace tessara {

class CanvasDocument;

/// What a row shows of its layer, and what the row can ask for.
class LayerRecord : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString name READ name NOTIFY changed FINAL)
    Q_PROPERTY(QString icon READ icon CONSTANT FINAL)
    /// The kind as the list writes it, "TEXT" or "SHAPE".
    Q_PROPERTY(QString typeText READ typeText CONSTANT FINAL)
    /// The kind's name among the design's colours.
    Q_PROPERTY(QString kind READ kind CONSTANT FINAL)
    Q_PROPERTY(bool isOnAir READ isOnAir NOTIFY changed FINAL)
    /// 0 to 1, moved by a running take.
    Q_PROPERTY(double visibility READ visibility NOTIFY changed FINAL)
    Q_PROPERTY(bool isSelected READ isSelected NOTIFY changed FINAL)
    Q_PROPERTY(bool isLocked READ isLocked NOTIFY changed FINAL)
    /// A live view, which never reaches the card.
    Q_PROPERTY(bool isLiveView READ isLiveView CONSTANT FINAL)

public:
    LayerRecord(CanvasDocument &document, const QUuid &id);

    QUuid id() const { return m_id; }
    QString name() const;
    QString icon() const { return m_icon; }
    QString typeText() const { return m_typeText; }
    QString kind() const { return m_kind; }
    bool isOnAir() const;
    double visibility() const;
    bool isSelected() const;
    bool isLocked() const;
    bool isLiveView() const { return m_isLiveView; }

    /// A click on the row's air cell: on air if it is off, off if it is on. A locked row stays.
    Q_INVOKABLE void toggleOnAir();
    Q_INVOKABLE void select();
    Q_INVOKABLE void toggleSelected();
    Q_INVOKABLE void toggleLocked();
    Q_INVOKABLE void rename(const QString &name);
    Q_INVOKABLE void duplicate();
    Q_INVOKABLE void remove();

signals:
    void changed();

private:
    CanvasDocument &m_document;
    QUuid m_id;
    QString m_icon;
    QString m_typeText;
    QString m_kind;
    bool m_isLiveView = false;
};

} // namespace tessara
