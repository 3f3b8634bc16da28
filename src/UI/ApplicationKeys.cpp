#include "UI/ApplicationKeys.h"

#include "Core/AppState.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QWindow>

namespace tessara {

namespace {

Qt::KeyboardModifiers heldModifiers(const QKeyEvent &press)
{
    return press.modifiers()
           & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool walks(int key)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return false;
    }
}

bool isTyping(const QKeyEvent &press)
{
    const auto *focus = qobject_cast<QQuickItem *>(QGuiApplication::focusObject());
    if (!focus || !focus->flags().testFlag(QQuickItem::ItemAcceptsInputMethod))
        return false;
    const bool erases = press.key() == Qt::Key_Backspace || press.key() == Qt::Key_Delete;
    return erases || (heldModifiers(press) & ~Qt::ShiftModifier) == 0;
}

} // namespace

ApplicationKeys::ApplicationKeys(AppState &app)
    : m_app(app)
{
    qApp->installEventFilter(this);
}

bool ApplicationKeys::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const bool isKey =
        type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
    if (!isKey || !qobject_cast<QWindow *>(watched))
        return false;
    const auto &key = *static_cast<QKeyEvent *>(event);
    const bool isHeld = isRepeat(key);
    if (type == QEvent::KeyRelease) {
        m_releasedCode = key.nativeScanCode();
        m_releasedAt = key.timestamp();
    }
    if (isHeld && !walks(key.key()) && !isTyping(key)) {
        event->accept(); // else a shortcut would still be looked for
        return true;
    }
    return type == QEvent::KeyPress && (undoOrRedo(key) || playMacro(key));
}

// The X server tells a repeat as a release and a press of one moment. Where Qt reads the release
// before the press has arrived, it marks neither: now and then one of a held key.
bool ApplicationKeys::isRepeat(const QKeyEvent &key) const
{
    return key.isAutoRepeat()
           || (key.type() != QEvent::KeyRelease && key.nativeScanCode() != 0
               && key.nativeScanCode() == m_releasedCode && key.timestamp() == m_releasedAt);
}

bool ApplicationKeys::undoOrRedo(const QKeyEvent &press)
{
    if (press.key() != Qt::Key_Z)
        return false;
    const Qt::KeyboardModifiers held = heldModifiers(press);
    if (held == Qt::ControlModifier)
        m_app.undoStack()->undo();
    else if (held == (Qt::ControlModifier | Qt::ShiftModifier))
        m_app.undoStack()->redo();
    else
        return false;
    return true;
}

bool ApplicationKeys::playMacro(const QKeyEvent &press)
{
    const int number = press.key() - Qt::Key_0;
    const MacroManager &macros = *m_app.macros();
    if (heldModifiers(press) != Qt::ControlModifier || number < 1 || number > 9
        || number > macros.macros().size() || macros.isRecording() || macros.isRunning())
        return false;
    m_app.macros()->runMacroAtIndex(number - 1);
    return true;
}

} // namespace tessara
