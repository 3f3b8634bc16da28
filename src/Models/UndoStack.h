// The history of a document: what can be undone and redone.
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace tessara {

/// Entries with a cursor between them. A new entry ends the redo side; beyond `maxDepth` the oldest
/// are lost.
class UndoStack : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed FINAL)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed FINAL)
    /// The name of what the next undo takes back; empty with nothing to undo.
    Q_PROPERTY(QString undoLabel READ undoLabel NOTIFY changed FINAL)
    Q_PROPERTY(QString redoLabel READ redoLabel NOTIFY changed FINAL)
    /// For the buttons.
    Q_PROPERTY(QString undoHelpText READ undoHelpText NOTIFY changed FINAL)
    Q_PROPERTY(QString redoHelpText READ redoHelpText NOTIFY changed FINAL)
    /// Of the entry that the next undo runs; -1 with none.
    Q_PROPERTY(int cursor READ cursor NOTIFY changed FINAL)
    Q_PROPERTY(int count READ count NOTIFY changed FINAL)

public:
    static constexpr int maxDepth = 50;

    using Action = std::function<void()>;

    /// `pushWaiting` runs before each undo and redo: it pushes what has happened and has no entry
    /// yet.
    explicit UndoStack(Action pushWaiting = [] {})
        : m_pushWaiting(std::move(pushWaiting))
    {
    }

    bool canUndo() const { return m_cursor >= 0; }
    bool canRedo() const { return m_cursor + 1 < count(); }
    QString undoLabel() const { return canUndo() ? m_entries[m_cursor].name : QString(); }
    QString redoLabel() const { return canRedo() ? m_entries[m_cursor + 1].name : QString(); }
    QString undoHelpText() const;
    QString redoHelpText() const;
    int cursor() const { return m_cursor; }
    int count() const { return int(m_entries.size()); }

    /// Records what has happened already; neither action is run.
    void push(const QString &name, Action undo, Action redo);
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();

signals:
    void changed();

private:
    struct Entry
    {
        QString name;
        Action undo;
        Action redo;
    };

    Action m_pushWaiting;
    QList<Entry> m_entries;
    int m_cursor = -1;
};

} // namespace tessara
