#include "Models/UndoStack.h"

namespace tessara {

void UndoStack::push(const QString &name, Action undo, Action redo)
{
    m_entries.resize(m_cursor + 1);
    m_entries.append({name, std::move(undo), std::move(redo)});
    m_cursor = count() - 1;
    while (count() > maxDepth) {
        m_entries.removeFirst();
        --m_cursor;
    }
    emit changed();
}

void UndoStack::undo()
{
    m_pushWaiting();
    if (!canUndo())
        return;
    const Action action = m_entries[m_cursor].undo; // whose own copy outlives the entry
    action();
    --m_cursor;
    emit changed();
}

void UndoStack::redo()
{
    m_pushWaiting();
    if (!canRedo())
        return;
    ++m_cursor;
    const Action action = m_entries[m_cursor].redo;
    action();
    emit changed();
}

QString UndoStack::undoHelpText() const
{
    return canUndo() ? tr("Undo %1  Ctrl+Z").arg(undoLabel()) : tr("Nothing to Undo  Ctrl+Z");
}

QString UndoStack::redoHelpText() const
{
    return canRedo() ? tr("Redo %1  Ctrl+Shift+Z").arg(redoLabel())
                     : tr("Nothing to Redo  Ctrl+Shift+Z");
}

} // namespace tessara
