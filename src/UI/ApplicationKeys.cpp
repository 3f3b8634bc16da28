#include "UI/ApplicationKeys.h"

#include "Core/AppState.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

namespace tessara {

namespace {

Qt::KeyboardModifiers heldModifiers(const QKeyEvent &press)
{
    return press.modifiers()
           & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

} // namespace

ApplicationKeys::ApplicationKeys(AppState &app)
    : m_app(app)
{
    qApp->installEventFilter(this);
}

bool ApplicationKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !qobject_cast<QWindow *>(watched))
        return false;
    const auto &press = *static_cast<QKeyEvent *>(event);
    return undoOrRedo(press) || playMacro(press);
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
