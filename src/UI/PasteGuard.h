// Keeps a field for texts from what would hold it up for minutes.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessara {

/// The platform's text fields lay out all that is put into them, for some texts in a time that
/// grows with the square of their length. What is pasted into the guarded one and would make it
/// longer than `mostCharacters` is handed on as the whole text that it would have had, and doesn't
/// get there.
class PasteGuard : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// A TextArea or its like.
    Q_PROPERTY(QQuickItem *field READ field WRITE setField NOTIFY fieldChanged FINAL)
    Q_PROPERTY(int mostCharacters MEMBER m_mostCharacters NOTIFY mostCharactersChanged FINAL)

public:
    QQuickItem *field() const { return m_field; }
    void setField(QQuickItem *field);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void fieldChanged();
    void mostCharactersChanged();
    void longTextPasted(const QString &text);

private:
    bool takes(const QString &pasted);

    QPointer<QQuickItem> m_field;
    int m_mostCharacters = 0;
};

} // namespace tessara
