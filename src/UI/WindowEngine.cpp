#include "UI/WindowEngine.h"

#include "Rendering/ApplicationFonts.h"
#include "UI/IconProvider.h"
#include "UI/WindowPacer.h"

#include <QQmlComponent>
#include <QQuickStyle>
#include <QSurfaceFormat>

static void initialiseIconResource()
{
    Q_INIT_RESOURCE(icons);
}

namespace tessara {

void preparePlatform()
{
    // The main thread waits for the last frame to be swapped: a swap that waits for the display
    // would take that time from the output.
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setSwapInterval(0);
    QSurfaceFormat::setDefaultFormat(format);
    if (!qEnvironmentVariableIsSet("QSG_RENDER_LOOP"))
        qputenv("QSG_RENDER_LOOP", "threaded");
    QQuickStyle::setStyle(QStringLiteral("Basic"));
}

WindowEngine::WindowEngine(std::function<bool()> isOutputRunning)
    : m_isOutputRunning(std::move(isOutputRunning))
{
    initialiseIconResource();
    loadApplicationFonts();
    addImportPath(QStringLiteral("qrc:/qt/qml"));
    addImageProvider(QStringLiteral("icons"), new IconProvider);
}

static QUrl urlOf(const QString &name)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Tessara/%1.qml").arg(name));
}

bool WindowEngine::show(const QString &name, const QVariantMap &properties)
{
    setInitialProperties(properties);
    const qsizetype before = rootObjects().size();
    load(urlOf(name));
    if (rootObjects().size() == before)
        return false;
    if (auto *window = qobject_cast<QQuickWindow *>(rootObjects().last()))
        new WindowPacer(*window, m_isOutputRunning);
    return true;
}

QQuickWindow *WindowEngine::create(const QString &name, const QVariantMap &properties)
{
    QQmlComponent component(this, urlOf(name));
    QObject *made = component.createWithInitialProperties(properties);
    auto *window = qobject_cast<QQuickWindow *>(made);
    if (!window) {
        qWarning("%s", qPrintable(component.errorString()));
        delete made;
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    new WindowPacer(*window, m_isOutputRunning);
    return window;
}

} // namespace tessara
