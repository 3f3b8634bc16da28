// tessara-headless: plays a show script without a display.
#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QSocketNotifier>

#include "Automation/ScriptEngine.h"
#include "Base/ManualClock.h"
#include "Base/ProcessTuning.h"
#include "Base/RealClock.h"
#include "Core/AppState.h"
#include "Core/VirtualCardChannel.h"
#include "Rendering/ApplicationFonts.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace {

using namespace tessara;

enum ExitStatus { allSucceeded = 0, someFailed = 1, unusableArguments = 2 };

void reply(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void answer(ScriptEngine &engine, const QByteArray &line)
{
    if (const std::optional<QByteArray> text = engine.answerLine(line))
        reply(*text);
    // Removed layers go between two requests, as in a running main loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void playFile(ScriptEngine &engine, QFile &script)
{
    while (!script.atEnd()) {
        answer(engine, script.readLine());
        QCoreApplication::processEvents();
    }
}

// The show goes on while a pipe is silent.
void playStandardInput(ScriptEngine &engine)
{
    QByteArray pending;
    bool isAnswering = false;
    bool isOver = false;
    QEventLoop loop;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    const auto answerPending = [&] {
        // A request may run the main loop itself, and more may come in meanwhile.
        if (std::exchange(isAnswering, true))
            return;
        for (qsizetype end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
            const QByteArray line = pending.left(end);
            pending.remove(0, end + 1);
            answer(engine, line);
        }
        if (isOver) {
            answer(engine, pending);
            loop.quit();
        }
        isAnswering = false;
    };
    QObject::connect(&input, &QSocketNotifier::activated, &loop, [&] {
        char buffer[65536];
        const ssize_t size = read(STDIN_FILENO, buffer, sizeof buffer);
        if (size > 0)
            pending.append(buffer, size);
        isOver = size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR);
        input.setEnabled(!isOver);
        answerPending();
    });
    loop.exec();
}

int play(Clock &clock, const ApplicationSupport &support, const QString &scriptPath)
{
    AppState app(clock, support);
    ScriptEngine engine(app);
    if (scriptPath.isEmpty()) {
        playStandardInput(engine);
    } else {
        QFile script(scriptPath);
        if (!script.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(scriptPath),
                         qPrintable(script.errorString()));
            return unusableArguments;
        }
        playFile(engine, script);
    }
    return engine.allSucceeded() ? allSucceeded : someFailed;
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessara-headless"));
    loadApplicationFonts();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Plays a show script without a display."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption clockOption(QStringLiteral("clock"),
                                         QStringLiteral("real (the default) or manual"),
                                         QStringLiteral("kind"), QStringLiteral("real"));
    const QCommandLineOption dataOption(
        QStringLiteral("data"), QStringLiteral("keep settings and presets below this folder"),
        QStringLiteral("folder"));
    parser.addOptions({clockOption, dataOption});
    parser.addPositionalArgument(QStringLiteral("script"),
                                 QStringLiteral("a file of requests; else standard input"),
                                 QStringLiteral("[script]"));
    const bool isParsed = parser.parse(QCoreApplication::arguments());
    const QString clockKind = parser.value(clockOption);
    const bool isManual = clockKind == QStringLiteral("manual");
    if (isParsed && parser.isSet(help))
        parser.showHelp();
    if (!isParsed || parser.positionalArguments().size() > 1
        || (!isManual && clockKind != QStringLiteral("real"))) {
        std::fprintf(stderr, "%s\n", qPrintable(isParsed ? parser.helpText() : parser.errorText()));
        return unusableArguments;
    }

    const ApplicationSupport support = parser.isSet(dataOption)
                                           ? ApplicationSupport(parser.value(dataOption))
                                           : ApplicationSupport();
    prepareVirtualCard(support, isManual ? CardPace::freeRunning : CardPace::realTime);
    const QString script = parser.positionalArguments().value(0);
    if (isManual) {
        ManualClock clock;
        return play(clock, support, script);
    }
    raiseThreadPriority();
    RealClock clock;
    return play(clock, support, script);
}
