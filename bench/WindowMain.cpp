// tessara-bench-window: how steadily frames leave while the window is open.
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include "Base/ProcessTuning.h"
#include "Base/RealClock.h"
#include "Core/AppState.h"
#include "Core/VirtualCardChannel.h"
#include "DeckLink/VirtualCard.h"
#include "UI/WindowEngine.h"
#include "UI/Workspace.h"

#include <cstdio>

Q_IMPORT_QML_PLUGIN(TessaraPlugin)

namespace {

using namespace tessara;

/// Takes the layers in and out, over and over, with the window following.
Task playShow(AppState &app, Seconds length)
{
    CanvasDocument &document = *app.document();
    document.addTemplateShapeLayer(ShapeKind::rectangle)->setSize({1200, 160});
    document.addTextLayer()->setText(QStringLiteral("Good evening  สวัสดีครับ"));
    document.addCountdownLayer()->start();
    const Nanoseconds end = app.clock().now() + toNanoseconds(length);
    app.startDeckLinkOutput();
    while (app.clock().now() < end) {
        for (const QUuid &id : document.layerOrder())
            document.toggleLayerInRunlist(id);
        const bool slept = co_await app.clock().sleep(std::chrono::milliseconds{700});
        if (!slept)
            co_return;
    }
    const VirtualCardFrames frames = VirtualCard::find()->frames(0).value_or(VirtualCardFrames{});
    std::printf("frames %lld, ticks lost %llu, interval p50 %.2f ms, p99 %.2f ms, max %.2f ms, "
                "off by more than 4 ms %lld\n",
                static_cast<long long>(frames.sent),
                static_cast<unsigned long long>(app.missedTicks()), frames.intervals.p50 * 1000,
                frames.intervals.p99 * 1000, frames.intervals.max * 1000,
                static_cast<long long>(frames.intervals.offBeat));
    app.stopDeckLinkOutput();
    QCoreApplication::quit();
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    preparePlatform();
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption data(QStringLiteral("data"), QStringLiteral("a folder of its own"),
                                  QStringLiteral("folder"));
    const QCommandLineOption seconds(QStringLiteral("seconds"), QStringLiteral("how long"),
                                     QStringLiteral("number"), QStringLiteral("60"));
    parser.addOptions({data, seconds});
    parser.process(application);

    const ApplicationSupport support =
        parser.isSet(data) ? ApplicationSupport(parser.value(data)) : ApplicationSupport();
    prepareVirtualCard(support, CardPace::realTime);
    if (!VirtualCard::find()) {
        std::fprintf(stderr, "the virtual card is not loaded\n");
        return 2;
    }
    RealClock clock;
    AppState app(clock, support);
    Workspace workspace(app);
    WindowEngine engine;
    if (!engine.show(QStringLiteral("MainWindow"),
                     {{QStringLiteral("workspace"), QVariant::fromValue(&workspace)}}))
        return 1;
    Task show;
    const Alarm start = clock.at(clock.now() + std::chrono::seconds{3}, [&] {
        raiseThreadPriority();
        show = playShow(app, Seconds{parser.value(seconds).toDouble()});
    });
    return QGuiApplication::exec();
}
