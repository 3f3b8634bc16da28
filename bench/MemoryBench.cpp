#include "bench/FrameBench.h"
#include "bench/ShowTicks.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <malloc.h>

#include <cstdio>

namespace tessara {

namespace {

constexpr int ticksOfChild = 100;
constexpr double kilobytesPerMegabyte = 1024;

/// In MB.
struct Memory
{
    double before = 0;   // resident, before the first frame
    double peak = 0;     // resident, from then on
    double resident = 0; // after the last frame
};

/// A value of this process's status, in MB.
double statusValue(const QByteArray &name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toDouble()
                   / kilobytesPerMegabyte;
    }
    return 0;
}

// What reading the show's files took is no part of drawing it.
void forgetPeak()
{
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (!file.open(QIODevice::WriteOnly) || file.write("5") < 0 || !file.flush())
        std::fprintf(stderr, "the peak counts from the start of the process\n");
}

std::optional<Memory> memoryOf(const QString &way, FrameSize size, const QStringList &arguments)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                arguments
                    + QStringList{QStringLiteral("--memory-of"), way, QStringLiteral("--width"),
                                  QString::number(size.width)});
    if (!child.waitForFinished(-1) || child.exitStatus() != QProcess::NormalExit
        || child.exitCode() != 0)
        return std::nullopt;
    const QList<QByteArray> figures = child.readAllStandardOutput().simplified().split(' ');
    if (figures.size() != 3)
        return std::nullopt;
    return Memory{figures[0].toDouble(), figures[1].toDouble(), figures[2].toDouble()};
}

} // namespace

int runMemoryChild(const QString &way, FrameSize size, ShowFiles show)
{
    BenchShow shown(size.canvas(), show);
    show = {};
    forgetPeak();
    const double before = statusValue("VmRSS");
    CanvasDocument &document = shown.document();
    const ShowTick change = allLayersDissolve(document);
    const auto run = [&](auto frames) {
        for (int tick = 0; tick < ticksOfChild; ++tick) {
            change();
            frames.make(document);
        }
        std::printf("%f %f %f\n", before, statusValue("VmHWM"), statusValue("VmRSS"));
    };
    if (way == QLatin1String("reference"))
        run(DrawnFrames(size.pixels()));
    else
        run(PathFrames(ForkJoin::standardThreads(), {targetOf(size.pixels())}));
    return 0;
}

void benchMemory(const FrameBench &bench, const QStringList &arguments)
{
    const auto drawn = memoryOf(QStringLiteral("reference"), bench.size, arguments);
    const auto path = memoryOf(QStringLiteral("frame-path"), bench.size, arguments);
    if (!drawn || !path)
        qFatal("The processes that tell their memory could not be run");
    const QString megabytes = QStringLiteral("MB");
    const QString unit = QStringLiteral("x drawn");
    bench.table.add({QStringLiteral("memory before the first frame"), {}, path->before, megabytes});
    bench.table.add(
        {QStringLiteral("peak memory, drawn from nothing"), {}, drawn->peak, megabytes});
    bench.table.add({QStringLiteral("peak memory"), {}, path->peak, megabytes});
    bench.table.add({QStringLiteral("peak memory over drawn from nothing"),
                     {},
                     path->peak / drawn->peak,
                     unit,
                     1.15});
    bench.table.add(
        {QStringLiteral("memory afterwards, drawn from nothing"), {}, drawn->resident, megabytes});
    bench.table.add({QStringLiteral("memory afterwards"), {}, path->resident, megabytes});
}

} // namespace tessara
