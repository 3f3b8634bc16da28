// tessara-bench-window: what a show costs while the window is open.
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QMetaEnum>
#include <QtQml/qqmlextensionplugin.h>

#include "Base/ProcessTuning.h"
#include "Base/RealClock.h"
#include "bench/ShowFiles.h"
#include "Core/AppState.h"
#include "Core/VirtualCardChannel.h"
#include "DeckLink/VirtualCard.h"
#include "UI/RunlistWindowController.h"
#include "UI/WindowEngine.h"
#include "UI/Workspace.h"

#include <cstdio>
#include <ctime>

Q_IMPORT_QML_PLUGIN(TessaraPlugin)

namespace {

using namespace tessara;

struct Show
{
    ShowFiles files;
    int layers = 3;                // where no files give any
    std::optional<int> dissolving; // the lowest of them, all at once; none for all
    bool restIsOnAir = false;
    Seconds length{60};
};

/// A title, a shape or a countdown by turns, in rows and columns over the canvas.
QUuid addLayer(CanvasDocument &document, int index)
{
    const QPointF place(30 + index % 10 * 188, 20 + index / 10 * 52);
    const auto placed = [&](Layer *layer) {
        layer->setPosition(place);
        return layer->id();
    };
    if (index % 10 == 9) {
        CountdownLayer *countdown = document.addCountdownLayer();
        countdown->setSize({170, 46});
        countdown->setFontSize(30);
        countdown->start();
        return placed(countdown);
    }
    if (index % 2 == 0) {
        ShapeLayer *shape = document.addTemplateShapeLayer(ShapeKind::rectangle);
        shape->setSize({180, 46});
        return placed(shape);
    }
    TextLayer *text = document.addTextLayer();
    text->setText(index % 4 == 1 ? QStringLiteral("Good evening") : QStringLiteral("สวัสดีครับ ที่นี่"));
    text->setFontSize(26);
    return placed(text);
}

Seconds clockTime(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Of the processor, from its making on.
class ProcessorTime
{
public:
    void report(const AppState &app) const
    {
        const qint64 ticks = VirtualCard::find()->frames(0).value_or(VirtualCardFrames{}).sent;
        std::printf("ticks %lld, lost %llu\n", static_cast<long long>(ticks),
                    static_cast<unsigned long long>(app.missedTicks()));
        const Seconds interval = (clockTime(CLOCK_MONOTONIC) - m_start) / double(ticks);
        print("all threads", clockTime(CLOCK_PROCESS_CPUTIME_ID) - m_process, ticks, interval);
        print("main thread", clockTime(CLOCK_THREAD_CPUTIME_ID) - m_thread, ticks, interval);
    }

private:
    static void print(const char *name, Seconds time, qint64 ticks, Seconds interval)
    {
        const Seconds ofATick = time / double(ticks);
        std::printf("%s: processor time %.2f ms a tick, %.1f %% of the interval\n", name,
                    ofATick.count() * 1000, ofATick / interval * 100);
    }

    Seconds m_start = clockTime(CLOCK_MONOTONIC);
    Seconds m_process = clockTime(CLOCK_PROCESS_CPUTIME_ID);
    Seconds m_thread = clockTime(CLOCK_THREAD_CPUTIME_ID);
};

/// Each layer dissolves by itself: a group is cued as one.
void prepareToDissolve(CanvasDocument &document, const QList<QUuid> &layers)
{
    for (const QUuid &id : layers) {
        if (const std::optional<QUuid> group = document.presetGroupID(id))
            document.ungroupPreset(*group);
        document.setRunTransitionStyle(LayerRunTransitionStyle::dissolve, id);
        document.setRunDissolveDuration(0.35, id);
    }
}

/// Takes layers in and out together, over and over, with the windows following.
Task playShow(AppState &app, Show show)
{
    CanvasDocument &document = *app.document();
    show.files.addTo(document);
    for (int index = 0; show.files.isEmpty() && index < show.layers; ++index)
        addLayer(document, index);
    const QList<QUuid> layers = document.layerOrder();
    const QList<QUuid> dissolving = layers.mid(0, show.dissolving.value_or(int(layers.size())));
    for (const QUuid &id : layers.mid(dissolving.size())) {
        if (!show.restIsOnAir)
            document.setLayerHidden(id, true);
    }
    prepareToDissolve(document, dissolving);
    const bool windowsAreReady = co_await app.clock().sleep(std::chrono::seconds{2});
    if (!windowsAreReady)
        co_return;
    const Nanoseconds end = app.clock().now() + toNanoseconds(show.length);
    app.startDeckLinkOutput();
    const ProcessorTime processorTime;
    while (app.clock().now() < end) {
        for (const QUuid &id : dissolving)
            document.toggleCue(id);
        document.takeCues();
        const bool slept = co_await app.clock().sleep(std::chrono::milliseconds{400});
        if (!slept)
            co_return;
    }
    processorTime.report(app);
    app.stopDeckLinkOutput();
    QCoreApplication::quit();
}

/// Opens the list of presets, and goes through all of it, three seconds a row of cards.
Task browsePresets(Clock &clock, Workspace &workspace, QObject *window)
{
    workspace.presets()->setTab(QStringLiteral("system"));
    QObject *sheet = window->findChild<QObject *>(QStringLiteral("presetSheet"));
    if (!sheet || !QMetaObject::invokeMethod(sheet, "open"))
        qFatal("The window has no list of presets.");
    for (;;) {
        const bool slept = co_await clock.sleep(std::chrono::seconds{3});
        if (!slept)
            co_return;
        if (QObject *grid = window->findChild<QObject *>(QStringLiteral("presetGrid")))
            grid->setProperty("contentY", grid->property("contentY").toDouble() + 274);
    }
}

/// Drags the window's edge for a second, over and over, with a second's rest.
Task resizeWindow(Clock &clock, QWindow *window)
{
    constexpr int steps = 50; // a second
    const QSize size = window->size();
    for (int step = 0;; ++step) {
        const bool slept = co_await clock.sleep(Seconds{1.0 / steps});
        if (!slept)
            co_return;
        if (step % (2 * steps) < steps)
            window->resize(size + step % steps * QSize(8, 4));
    }
}

/// By the name that the pickers show it under; false for one that no card offers.
bool chooseMode(AppState &app, const QString &name)
{
    for (const DeckLinkDisplayMode &mode : app.deckLinkManager()->modes()) {
        if (mode.name == name) {
            app.deckLinkManager()->setSelectedModeID(mode.modeID);
            return true;
        }
    }
    return false;
}

bool chooseRouting(AppState &app, const QString &name)
{
    bool isKnown = false;
    const int routing = QMetaEnum::fromType<DeckLinkOutputRouting>().keyToValue(
        name.toLatin1().constData(), &isKnown);
    if (isKnown)
        app.setDeckLinkOutputRouting(DeckLinkOutputRouting(routing));
    return isKnown;
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
    const QCommandLineOption layers(QStringLiteral("layers"), QStringLiteral("of the show"),
                                    QStringLiteral("number"), QStringLiteral("3"));
    const QCommandLineOption dissolving(QStringLiteral("dissolving"),
                                        QStringLiteral("of them all the time; all by default"),
                                        QStringLiteral("number"));
    const QCommandLineOption restOnAir(QStringLiteral("rest-on-air"),
                                       QStringLiteral("the other layers stand on air"));
    const QCommandLineOption mode(QStringLiteral("mode"), QStringLiteral("as the card names it"),
                                  QStringLiteral("name"), QStringLiteral("1080p50"));
    const QCommandLineOption runlist(QStringLiteral("runlist"),
                                     QStringLiteral("open the runlist as well"));
    const QCommandLineOption presets(QStringLiteral("presets"),
                                     QStringLiteral("browse the presets meanwhile"));
    const QCommandLineOption preset(QStringLiteral("preset"), QStringLiteral("show its layers"),
                                    QStringLiteral("file"));
    const QCommandLineOption macros(QStringLiteral("macros"),
                                    QStringLiteral("show the layers that they add as well"),
                                    QStringLiteral("file"));
    const QCommandLineOption routing(QStringLiteral("routing"),
                                     QStringLiteral("as the show script names it"),
                                     QStringLiteral("name"), QStringLiteral("fillOnly"));
    const QCommandLineOption resizing(QStringLiteral("resizing"),
                                      QStringLiteral("drag the window's edge meanwhile"));
    parser.addOptions({data, seconds, layers, dissolving, restOnAir, mode, runlist, presets, preset,
                       macros, routing, resizing});
    parser.process(application);

    const ApplicationSupport support =
        parser.isSet(data) ? ApplicationSupport(parser.value(data)) : ApplicationSupport();
    prepareVirtualCard(support, CardPace::realTime);
    if (!VirtualCard::find())
        refuse(QStringLiteral("the virtual card is not loaded"));
    const ShowFiles files = ShowFiles::read(parser.value(preset), parser.value(macros));
    raiseThreadPriority();
    RealClock clock;
    AppState app(clock, support);
    Workspace workspace(app);
    WindowEngine engine([&app] { return app.isDeckLinkOutputRunning(); });
    if (!engine.show(QStringLiteral("MainWindow"),
                     {{QStringLiteral("workspace"), QVariant::fromValue(&workspace)}}))
        return 1;
    if (!chooseMode(app, parser.value(mode)))
        refuse(QStringLiteral("no mode of that name"));
    if (!chooseRouting(app, parser.value(routing)))
        refuse(QStringLiteral("no routing of that name"));
    RunlistWindowController runlistWindow(engine, workspace);
    if (parser.isSet(runlist))
        runlistWindow.show();
    Task show;
    Task browsing;
    Task dragging;
    const Alarm start = clock.at(clock.now() + std::chrono::seconds{3}, [&] {
        if (parser.isSet(presets))
            browsing = browsePresets(clock, workspace, engine.rootObjects().first());
        if (parser.isSet(resizing))
            dragging = resizeWindow(clock, qobject_cast<QWindow *>(engine.rootObjects().first()));
        show = playShow(app, {.files = files,
                              .layers = parser.value(layers).toInt(),
                              .dissolving = parser.isSet(dissolving)
                                                ? std::optional(parser.value(dissolving).toInt())
                                                : std::nullopt,
                              .restIsOnAir = parser.isSet(restOnAir),
                              .length = Seconds{parser.value(seconds).toDouble()}});
    });
    return QGuiApplication::exec();
}
