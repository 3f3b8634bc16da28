#include "bench/FrameBench.h"
#include "bench/MachineLoad.h"
#include "bench/ShowTicks.h"

#include <memory>

namespace tessara {

namespace {

struct Scene
{
    QString name;
    ShowTick (*tick)(CanvasDocument &document);
    int threads;
    std::optional<double> limit;     // p50, times memcpy
    std::optional<double> limitP99;  // times memcpy
    std::optional<double> leastGain; // over drawing from nothing
};

ShowTick steady(CanvasDocument &)
{
    return nothingChanges();
}

void benchScene(const FrameBench &bench, const ShowFiles &files, const Scene &scene)
{
    BenchShow show(bench.size.canvas(), files);
    CanvasDocument &document = show.document();
    const ShowTick change = scene.tick(document);
    if (!change)
        return; // the show has nothing of the kind
    PathFrames path(scene.threads, {targetOf(bench.size.pixels())});
    DrawnFrames drawn(bench.size.pixels());
    const MachineLoad load;
    const std::vector<Ticks> ticks = measureInTurns({memcpyWork(bench.size),
                                                     {[&] {
                                                         change();
                                                         path.make(document);
                                                     }},
                                                     {[&] {
                                                         change();
                                                         drawn.make(document);
                                                     }}},
                                                    bench.seconds);
    const double copy = ticks[0].p50();
    const double others = load.othersShare();
    const QString unit = QStringLiteral("x memcpy");
    bench.table.add({scene.name, ticks[1], ticks[1].p50() / copy, unit, scene.limit}, others);
    if (scene.limitP99)
        bench.table.add(
            {scene.name + QStringLiteral(", p99"), {}, ticks[1].p99() / copy, unit, scene.limitP99},
            others);
    bench.table.add({QStringLiteral("  drawn from nothing"), ticks[2], ticks[2].p50() / copy, unit},
                    others);
    // Others lengthen the long ticks of drawing from nothing, which must not count as a gain.
    bench.table.add({scene.name + QStringLiteral(", gain"),
                     {},
                     ticks[2].best() / ticks[1].p50(),
                     QStringLiteral("x"),
                     scene.leastGain,
                     true},
                    others);
}

} // namespace

void benchScenes(const FrameBench &bench)
{
    const Scene scenes[] = {
        {QStringLiteral("steady, nothing changed"), &steady, 1, bench.limit(0.1, 0.05), {}, {}},
        {QStringLiteral("three clocks change"), &clocksChange, 1, bench.limit(0.8, 0.4), {}, {}},
        {QStringLiteral("all layers dissolve, 1 thread"), &allLayersDissolve, 1,
         bench.limit(8.5, 4), bench.limit(14, 6), bench.limit(35, 30)},
        {QStringLiteral("all layers dissolve, 2 threads"),
         &allLayersDissolve,
         2,
         bench.limit(5, 2.5),
         {},
         {}},
        {QStringLiteral("reveal of a group, 1 thread"), &groupReveals, 1, {}, {}, {}},
        {QStringLiteral("still, backdrop changes, 1 thread"), &backdropChanges, 1, {}, {}, {}},
    };
    for (const Scene &scene : scenes)
        benchScene(bench, bench.show, scene);
    if (!bench.lowerThird)
        return;
    const Scene lowerThirds[] = {
        {QStringLiteral("lower third dissolves, 1 thread"),
         &allLayersDissolve,
         1,
         bench.limit(0.35, 0.15),
         {},
         {}},
        {QStringLiteral("lower third reveals, 1 thread"), &groupReveals, 1, {}, {}, {}},
    };
    for (const Scene &scene : lowerThirds)
        benchScene(bench, {bench.lowerThird, {}}, scene);
}

void benchTyping(const FrameBench &bench)
{
    BenchShow show(bench.size.canvas(), bench.show);
    const ShowTick typeInShow = titleIsTyped(show.document(), bench.size.scale());
    ManualClock clock;
    CanvasDocument empty(clock, bench.size.canvas());
    const ShowTick typeAlone = titleIsTyped(empty, bench.size.scale());
    const std::vector<FrameTarget> targets{targetOf(bench.size.pixels())};
    PathFrames inShow(ForkJoin::standardThreads(), targets);
    PathFrames alone(ForkJoin::standardThreads(), targets);
    PathFrames aloneOnOne(1, targets);
    DrawnFrames drawn(bench.size.pixels());
    const MachineLoad load;
    const std::vector<Ticks> ticks = measureInTurns({memcpyWork(bench.size),
                                                     {[&] {
                                                         typeInShow();
                                                         inShow.make(show.document());
                                                     }},
                                                     {[&] {
                                                         typeAlone();
                                                         alone.make(empty);
                                                     }},
                                                     {[&] {
                                                         typeAlone();
                                                         aloneOnOne.make(empty);
                                                     }},
                                                     {[&] {
                                                         typeInShow();
                                                         drawn.make(show.document());
                                                     }}},
                                                    bench.seconds);
    const double copy = ticks[0].p50();
    const double others = load.othersShare();
    const QString unit = QStringLiteral("x memcpy");
    bench.table.add({QStringLiteral("typing 400 characters in the show"), ticks[1],
                     ticks[1].p50() / copy, unit},
                    others);
    bench.table.add({QStringLiteral("  drawn from nothing"), ticks[4], ticks[4].p50() / copy, unit},
                    others);
    bench.table.add({QStringLiteral("typing, the title's sprites"), ticks[2], ticks[2].p50(),
                     QStringLiteral("ms"), bench.limit(4, 9)},
                    others);
    bench.table.add({QStringLiteral("typing, the title's sprites, 1 thread"), ticks[3],
                     ticks[3].p50(), QStringLiteral("ms")},
                    others);
}

void benchFormats(const FrameBench &bench)
{
    struct Format
    {
        QString name;
        std::vector<FrameTarget> targets;
        std::optional<double> limit; // times the plain fill
    };
    const QSize size = bench.size.pixels();
    const FrameTarget fill = targetOf(size);
    std::vector<Format> formats{
        {QStringLiteral("fill, B G R A"), {fill}, {}},
        {QStringLiteral("fill, A R G B"),
         {targetOf(size, FrameContent::fill, FrameFormat::argb)},
         1.15},
        {QStringLiteral("fill for an external key"),
         {targetOf(size, FrameContent::fillWithMirroredAlpha)},
         1.2},
        {QStringLiteral("fill, 2vuy"), {targetOf(size, FrameContent::fill, FrameFormat::yuv)}, 1.3},
        {QStringLiteral("fill and key"),
         {fill, targetOf(size, FrameContent::key)},
         bench.limit(1.45, 1.3)},
        {QStringLiteral("key alone"), {targetOf(size, FrameContent::key)}, {}},
        {QStringLiteral("fill, scaled to 1280x720"), {targetOf({1280, 720})}, {}},
    };
    if (bench.isLarge())
        formats.push_back(
            {QStringLiteral("fill, scaled to 1920x1080"), {targetOf({1920, 1080})}, {}});
    BenchShow show(bench.size.canvas(), bench.show);
    const ShowTick change = allLayersDissolve(show.document());
    std::vector<std::unique_ptr<PathFrames>> paths;
    std::vector<Work> works;
    for (const Format &format : formats) {
        paths.push_back(std::make_unique<PathFrames>(1, format.targets));
        works.push_back({[&, path = paths.back().get()] {
            change();
            path->make(show.document());
        }});
    }
    const MachineLoad load;
    const std::vector<Ticks> ticks = measureInTurns(works, bench.seconds);
    for (std::size_t index = 0; index < formats.size(); ++index)
        bench.table.add({QStringLiteral("dissolve, ") + formats[index].name, ticks[index],
                         ticks[index].p50() / ticks.front().p50(), QStringLiteral("x fill"),
                         formats[index].limit},
                        load.othersShare());
}

} // namespace tessara
