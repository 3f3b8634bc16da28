#include "UI/RunlistWindowController.h"

#include "UI/WindowEngine.h"
#include "UI/Workspace.h"

namespace tessara {

RunlistWindowController::RunlistWindowController(WindowEngine &engine, Workspace &workspace)
    : m_engine(engine)
    , m_workspace(workspace)
{
    connect(&workspace, &Workspace::runlistRequested, this, &RunlistWindowController::show);
}

RunlistWindowController::~RunlistWindowController()
{
    delete m_window;
}

void RunlistWindowController::show()
{
    if (!m_window) {
        m_window =
            m_engine.create(QStringLiteral("RunlistWindow"),
                            {{QStringLiteral("workspace"), QVariant::fromValue(&m_workspace)}});
        if (!m_window)
            return;
        // A closed window is let go, so that the next one starts afresh.
        connect(m_window, &QWindow::visibleChanged, this, [this](bool isVisible) {
            if (isVisible || !m_window)
                return;
            m_window->deleteLater();
            m_window.clear();
        });
    }
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

} // namespace tessara
