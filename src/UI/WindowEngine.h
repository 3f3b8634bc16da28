// A QML engine with everything that our windows use.
#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <functional>

namespace tessara {

/// Before the application object: what the windows want of the platform.
void preparePlatform();

class WindowEngine : public QQmlApplicationEngine
{
    Q_OBJECT

public:
    /// `isOutputRunning` is asked before each repaint of a window; see `WindowPacer`.
    explicit WindowEngine(std::function<bool()> isOutputRunning = [] { return false; });

    /// Loads a window of the module "Tessara" by the name of its file; false if it could not.
    [[nodiscard]] bool show(const QString &name, const QVariantMap &properties);
    /// A further window, which its caller owns; null if it could not be loaded.
    [[nodiscard]] QQuickWindow *create(const QString &name, const QVariantMap &properties);

private:
    std::function<bool()> m_isOutputRunning;
};

} // namespace tessara
