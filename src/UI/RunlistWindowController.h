// The runlist's window: one at a time, floating above the others.
#pragma once

#include <QPointer>
#include <QQuickWindow>

namespace tessara {

class WindowEngine;
class Workspace;

class RunlistWindowController : public QObject
{
    Q_OBJECT

public:
    RunlistWindowController(WindowEngine &engine, Workspace &workspace);
    ~RunlistWindowController() override;

    /// Brings the window forward, or opens it.
    void show();
    /// Null while the window is closed.
    QQuickWindow *window() const { return m_window; }

private:
    WindowEngine &m_engine;
    Workspace &m_workspace;
    QPointer<QQuickWindow> m_window;
};

} // namespace tessara
