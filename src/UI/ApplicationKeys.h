// Keys that act wherever the focus is.
#pragma once

#include <QObject>

class QKeyEvent;

namespace tessara {

class AppState;

/// Ctrl+Z and Ctrl+Shift+Z undo and redo, Ctrl+1 to Ctrl+9 play the first nine macros, in every
/// window and in a text field as well. A number beyond the list, or one while a macro runs or is
/// recorded, is passed on.
///
/// A key that is held acts once, in every window: its repeats reach a text that is typed in, and
/// those of the keys that walk reach everything, but no button, list or shortcut hears of others.
class ApplicationKeys : public QObject
{
    Q_OBJECT

public:
    /// Listens to the whole application for as long as it lives.
    explicit ApplicationKeys(AppState &app);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isRepeat(const QKeyEvent &key) const;
    bool undoOrRedo(const QKeyEvent &press);
    bool playMacro(const QKeyEvent &press);

    AppState &m_app;
    quint32 m_releasedCode = 0; // of the keyboard; 0 for a key that no keyboard sent
    quint64 m_releasedAt = 0;   // ms of the window system
};

} // namespace tessara
