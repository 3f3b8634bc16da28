#include "bench/FrameBench.h"
#include "bench/ShowTicks.h"

#include <memory>
#include <thread>

namespace tessara {

namespace {

struct Scene
{
    QString name;
    ShowTick (*tick)(CanvasDocument &document);
    int threads;
    std::optional<double> limit = {};     // times the painter
    std::optional<double> leastGain = {}; // over drawing from nothing
};

const QString timesPainter = QStringLiteral("x painter");

ShowTick steady(CanvasDocument &)
{
    return nothingChanges();
}

/// What threads save shows in the time that passes alone.
double timeOf(const Ticks &ticks, int threads)
{
    return threads > 1 ? ticks.elapsed() : ticks.processor();
}

void benchScene(const FrameBench &bench, const ShowFiles &files, const Scene &scene)
{
    if (scene.threads > 1 && scene.threads > int(std::thread::hardware_concurrency()))
        return;
    BenchShow show(bench.size.canvas(), files);
    CanvasDocument &document = show.document();
    const ShowTick change = scene.tick(document);
    if (!change)
        return; // the show has nothing of the kind
    PathFrames path(scene.threads, {targetOf(bench.size.pixels())});
    DrawnFrames drawn(bench.size.pixels());
    const std::vector<Ticks> ticks = measureInTurns({bench.painter,
                                                     {[&] {
                                                         change();
                                                         path.make(document);
                                                     }},
                                                     {[&] {
                                                         change();
                                                         drawn.make(document);
                                                     }}},
                                                    bench.seconds);
    const double painted = timeOf(ticks[0], scene.threads);
    bench.table.add({scene.name, ticks[1], timeOf(ticks[1], scene.threads) / painted, timesPainter,
                     scene.limit});
    bench.table.add({QStringLiteral("  drawn from nothing"), ticks[2],
                     timeOf(ticks[2], scene.threads) / painted, timesPainter});
    if (scene.leastGain)
        bench.table.add({scene.name + QStringLiteral(", gain"),
                         {},
                         ticks[2].processor() / ticks[1].processor(),
                         QStringLiteral("x"),
                         scene.leastGain,
                         true});
}

} // namespace

Work painterWork(FrameSize size, const ShowFiles &files)
{
    struct Painted
    {
        Painted(FrameSize size, const ShowFiles &files)
            : show(size.canvas(), files)
            , change(allLayersDissolve(show.document()))
            , frames(show.document(), size.pixels())
        {
        }

        BenchShow show;
        ShowTick change;
        PaintedFrames frames;
    };
    const auto painted = std::make_shared<Painted>(size, files);
    return {[painted] { painted->frames.make(); },
            [painted] {
                painted->change();
                painted->frames.readOpacities(painted->show.document());
            }};
}

void benchScenes(const FrameBench &bench)
{
    bench.table.add({QStringLiteral("all layers dissolve, by the painter"),
                     measureInTurns({bench.painter}, bench.seconds).front(), 1, timesPainter});
    const Scene scenes[] = {
        {QStringLiteral("steady, nothing changed"), &steady, 1, 0.002},
        {QStringLiteral("three clocks change"), &clocksChange, 1, bench.limit(0.15, 0.08)},
        {QStringLiteral("all layers dissolve, 1 thread"), &allLayersDissolve, 1,
         bench.limit(1, 0.85), bench.limit(35, 25)},
        {QStringLiteral("all layers dissolve, 2 threads"), &allLayersDissolve, 2, 0.45},
        {QStringLiteral("reveal of a group, 1 thread"), &groupReveals, 1},
        {QStringLiteral("still, backdrop changes, 1 thread"), &backdropChanges, 1},
    };
    for (const Scene &scene : scenes)
        benchScene(bench, bench.show, scene);
    if (!bench.lowerThird)
        return;
    const Scene lowerThirds[] = {
        {QStringLiteral("lower third dissolves, 1 thread"), &allLayersDissolve, 1,
         bench.limit(0.05, 0.03)},
        {QStringLiteral("lower third reveals, 1 thread"), &groupReveals, 1},
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
    PathFrames inShow(1, targets);
    PathFrames alone(1, targets);
    DrawnFrames drawnInShow(bench.size.pixels());
    DrawnFrames drawnAlone(bench.size.pixels());
    const auto typing = [](const ShowTick &type, auto &frames, const CanvasDocument &document) {
        return Work{[&] {
            type();
            frames.make(document);
        }};
    };
    const std::vector<Ticks> ticks =
        measureInTurns({typing(typeInShow, inShow, show.document()),
                        typing(typeInShow, drawnInShow, show.document()),
                        typing(typeAlone, alone, empty), typing(typeAlone, drawnAlone, empty)},
                       bench.seconds);
    const auto add = [&](const QString &name, const Ticks &path, const Ticks &drawn, double limit) {
        bench.table.add(
            {name, path, path.processor() / drawn.processor(), QStringLiteral("x drawn"), limit});
        bench.table.add(
            {QStringLiteral("  drawn from nothing"), drawn, 1, QStringLiteral("x drawn")});
    };
    add(QStringLiteral("typing 400 characters in the show"), ticks[0], ticks[1], 0.03);
    add(QStringLiteral("typing 400 characters alone"), ticks[2], ticks[3], 0.05);
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
         1.4},
        {QStringLiteral("fill, 2vuy"), {targetOf(size, FrameContent::fill, FrameFormat::yuv)}, 1.3},
        {QStringLiteral("fill and key"),
         {fill, targetOf(size, FrameContent::key)},
         bench.limit(1.5, 1.4)},
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
    const std::vector<Ticks> ticks = measureInTurns(works, bench.seconds);
    for (std::size_t index = 0; index < formats.size(); ++index)
        bench.table.add({QStringLiteral("dissolve, ") + formats[index].name, ticks[index],
                         ticks[index].processor() / ticks.front().processor(),
                         QStringLiteral("x fill"), formats[index].limit});
}

} // namespace tessara
