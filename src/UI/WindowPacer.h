// Keeps a window's repaints out of the way of the output.
#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QTimer>

#include <functional>

namespace tessara {

/// Holds a window's next repaint back until its render thread has shown the last one: the main
/// thread waits for the two to meet, and in that time no frame leaves. While output runs there is a
/// pause between two repaints besides. What is held back is one repaint, never a change.
class WindowPacer : public QObject
{
    Q_OBJECT

public:
    /// Lives as long as the window.
    WindowPacer(QQuickWindow &window, std::function<bool()> isOutputRunning);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOn();

    QQuickWindow &m_window;
    std::function<bool()> m_isOutputRunning;
    QTimer m_pause;    // until the next repaint may come
    QTimer m_patience; // with a repaint that never shows: nothing was new in it
    bool m_isHeldBack = false;
};

} // namespace tessara
