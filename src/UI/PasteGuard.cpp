#include "UI/PasteGuard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace tessara {

void PasteGuard::setField(QQuickItem *field)
{
    if (m_field == field)
        return;
    if (m_field)
        m_field->removeEventFilter(this);
    m_field = field;
    if (m_field)
        m_field->installEventFilter(this);
    emit fieldChanged();
}

bool PasteGuard::eventFilter(QObject *watched, QEvent *event)
{
    const QClipboard *clipboard = QGuiApplication::clipboard();
    if (event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste))
        return takes(clipboard->text());
    const bool isMiddleClick = event->type() == QEvent::MouseButtonRelease
                               && static_cast<QMouseEvent *>(event)->button() == Qt::MiddleButton;
    if (isMiddleClick && clipboard->supportsSelection())
        return takes(clipboard->text(QClipboard::Selection));
    return QObject::eventFilter(watched, event);
}

bool PasteGuard::takes(const QString &pasted)
{
    QString text = m_field->property("text").toString();
    if (m_field->property("readOnly").toBool() || text.size() + pasted.size() <= m_mostCharacters)
        return false;
    const int start = m_field->property("selectionStart").toInt();
    const int end = m_field->property("selectionEnd").toInt();
    text.replace(start, end - start, pasted);
    emit longTextPasted(text);
    return true;
}

} // namespace tessara
