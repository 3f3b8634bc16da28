#include "UI/WindowPacer.h"

#include <QEvent>

#include <chrono>

namespace tessara {

namespace {

constexpr std::chrono::milliseconds pauseOnOutput{66}; // as often as an eye needs it on a list
constexpr std::chrono::milliseconds longestRepaint{100};

} // namespace

WindowPacer::WindowPacer(QQuickWindow &window, std::function<bool()> isOutputRunning)
    : QObject(&window)
    , m_window(window)
    , m_isOutputRunning(std::move(isOutputRunning))
{
    for (QTimer *timer : {&m_pause, &m_patience}) {
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, &WindowPacer::goOn);
    }
    // Told by the render thread, hence heard in a later turn of the main loop.
    connect(&window, &QQuickWindow::frameSwapped, this, [this] {
        m_patience.stop();
        goOn();
    });
    window.installEventFilter(this);
}

bool WindowPacer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != &m_window)
        return false;
    // An open window that has another size, or was covered, is painted at once, and the main thread
    // waits until it is. On output it is only one more repaint.
    if (event->type() == QEvent::Paint && m_isOutputRunning()) {
        m_window.update();
        return true;
    }
    if (event->type() != QEvent::UpdateRequest)
        return false;
    if (m_pause.isActive() || m_patience.isActive()) {
        m_isHeldBack = true;
        return true;
    }
    m_patience.start(longestRepaint);
    if (m_isOutputRunning())
        m_pause.start(pauseOnOutput);
    return false;
}

void WindowPacer::goOn()
{
    if (m_pause.isActive() || m_patience.isActive() || !std::exchange(m_isHeldBack, false))
        return;
    m_window.requestUpdate();
}

} // namespace tessara
