// tessara-monitor: shows what the virtual card sends.
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include "Core/VirtualCardChannel.h"
#include "UI/WindowEngine.h"

Q_IMPORT_QML_PLUGIN(TessaraPlugin)

int main(int argc, char **argv)
{
    using namespace tessara;

    preparePlatform();
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tessara Monitor"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows what the virtual card sends."));
    parser.addHelpOption();
    const QCommandLineOption data(
        QStringLiteral("data"),
        QStringLiteral("watch the program that keeps its data below this folder"),
        QStringLiteral("folder"));
    const QCommandLineOption channel(QStringLiteral("channel"),
                                     QStringLiteral("watch the card of this channel"),
                                     QStringLiteral("name"));
    parser.addOptions({data, channel});
    parser.process(application);

    const QString watched = parser.isSet(channel) ? parser.value(channel)
                            : parser.isSet(data)
                                ? virtualCardChannel(ApplicationSupport(parser.value(data)))
                                : QString();
    WindowEngine engine;
    if (!engine.show(QStringLiteral("MonitorWindow"), {{QStringLiteral("channel"), watched}}))
        return 1;
    return QGuiApplication::exec();
}
