// tessara: the application.
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include "Base/ProcessTuning.h"
#include "Base/RealClock.h"
#include "Core/AppState.h"
#include "Core/VirtualCardChannel.h"
#include "UI/RunlistWindowController.h"
#include "UI/WindowEngine.h"
#include "UI/Workspace.h"
#include "UI/presets/PresetThumbnailProvider.h"

Q_IMPORT_QML_PLUGIN(TessaraPlugin)

int main(int argc, char **argv)
{
    using namespace tessara;

    keepFreedMemory();
    preparePlatform();
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tessara"));
    QCoreApplication::setApplicationVersion(QStringLiteral("0.1.0"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Live broadcast graphics."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption data(QStringLiteral("data"),
                                  QStringLiteral("keep settings and presets below this folder"),
                                  QStringLiteral("folder"));
    parser.addOption(data);
    parser.process(application);

    const ApplicationSupport support =
        parser.isSet(data) ? ApplicationSupport(parser.value(data)) : ApplicationSupport();
    prepareVirtualCard(support, CardPace::realTime);
    raiseThreadPriority();
    RealClock clock;
    AppState app(clock, support);
    Workspace workspace(app);
    WindowEngine engine([&app] { return app.isDeckLinkOutputRunning(); });
    engine.addImageProvider(QStringLiteral("presets"),
                            new PresetThumbnailProvider(workspace.presets()->thumbnails()));
    if (!engine.show(QStringLiteral("MainWindow"),
                     {{QStringLiteral("workspace"), QVariant::fromValue(&workspace)}}))
        return 1;
    const RunlistWindowController runlistWindow(engine, workspace);
    return QGuiApplication::exec();
}
