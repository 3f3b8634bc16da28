// tessara-bench-frame: what a frame and its conversions cost, in ms and in copies of the same
// frame.
#include <QFile>
#include <QGuiApplication>

#include "bench/BenchShow.h"
#include "Core/Macros/MacroFormat.h"
#include "DeckLink/DeckLinkFrameBuffer.h"
#include "Base/Pixels/PixelConversion.h"
#include "Base/Pixels/Resample.h"
#include "Models/Presets/PresetFormat.h"
#include "Rendering/ApplicationFonts.h"
#include "Rendering/RenderEngine.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace {

using namespace tessara;

constexpr double limitOf2vuy = 12;       // times a memcpy of the frame
constexpr double limitOfSameSize = 3;    // times a memcpy of the frame
constexpr double limitOfShrinking = 9.5; // times a memcpy of the source

struct FrameSize
{
    int width;
    int height;

    qsizetype bytes() const { return qsizetype(width) * height * 4; }
};
constexpr FrameSize frameSizes[] = {{1920, 1080}, {3840, 2160}};

/// The best of many copies of one frame, measured once a size in this run.
double memcpyMilliseconds(FrameSize size)
{
    static std::map<int, double> measured;
    double &best = measured[size.width];
    if (best > 0)
        return best;
    const std::vector<char> source(std::size_t(size.bytes()), 1);
    std::vector<char> target(source.size());
    best = 1e9;
    for (int round = 0; round < 100; ++round) {
        const auto start = std::chrono::steady_clock::now();
        std::memcpy(target.data(), source.data(), source.size());
        benchmark::DoNotOptimize(target.data());
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        best = std::min(best, taken.count());
    }
    return best;
}

/// Runs `work` as one benchmark, and tells its best run in copies of a frame of `size`.
void addBenchmark(const std::string &name, FrameSize size, double limit, std::function<void()> work)
{
    const std::string fullName =
        name + "/" + std::to_string(size.width) + "x" + std::to_string(size.height);
    benchmark::RegisterBenchmark(fullName.c_str(),
                                 [=](benchmark::State &state) {
                                     double best = 1e9;
                                     for ([[maybe_unused]] auto _ : state) {
                                         const auto start = std::chrono::steady_clock::now();
                                         work();
                                         const std::chrono::duration<double, std::milli> taken =
                                             std::chrono::steady_clock::now() - start;
                                         best = std::min(best, taken.count());
                                     }
                                     state.counters["best_ms"] = best;
                                     state.counters["x_memcpy"] = best / memcpyMilliseconds(size);
                                     if (limit > 0)
                                         state.counters["limit"] = limit;
                                 })
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.3);
}

void addFrames(FrameSize size, const ShowFiles &files)
{
    const auto show = std::make_shared<BenchShow>(QSizeF(size.width, size.height), files);
    const auto engine = std::make_shared<RenderEngine>();
    addBenchmark("memcpy", size, 0,
                 [size, source = std::vector<char>(std::size_t(size.bytes())),
                  target = std::make_shared<std::vector<char>>(std::size_t(size.bytes()))] {
                     std::memcpy(target->data(), source.data(), source.size());
                     benchmark::DoNotOptimize(target->data());
                 });
    for (const bool inDissolve : {false, true}) {
        addBenchmark(inDissolve ? "frame in a dissolve" : "frame at rest", size, 0, [=] {
            show->setInDissolve(inDissolve);
            benchmark::DoNotOptimize(engine->render(show->document(), std::nullopt));
        });
    }
}

void addDeviceFrames(FrameSize size, const ShowFiles &files)
{
    BenchShow show(QSizeF(size.width, size.height), files);
    const QImage frame = RenderEngine().render(show.document(), std::nullopt).value();
    using Make = DeckLinkFrameBuffer::Result (*)(const QImage &, int, int);
    const auto add = [&](const char *name, Make make, FrameSize target) {
        addBenchmark(name, size, 0,
                     [=] { benchmark::DoNotOptimize(make(frame, target.width, target.height)); });
    };
    add("fill frame", &DeckLinkFrameBuffer::make, size);
    add("key frame", &DeckLinkFrameBuffer::makeAlphaKey, size);
    add("external key fill frame", &DeckLinkFrameBuffer::makeExternalKeyFill, size);
    add("fill frame scaled to 1280x720", &DeckLinkFrameBuffer::make, {1280, 720});
    if (size.width > 1920)
        add("fill frame scaled to 1920x1080", &DeckLinkFrameBuffer::make, {1920, 1080});
}

void addConversions(FrameSize size)
{
    const auto source = std::make_shared<std::vector<quint8>>(std::size_t(size.bytes()));
    const auto target = std::make_shared<std::vector<quint8>>(source->size());
    std::generate(source->begin(), source->end(), [state = 1u]() mutable {
        state = state * 1664525u + 1013904223u;
        return quint8(state >> 24);
    });
    const SourceRows from{source->data(), size.width * 4};
    const TargetRows to{target->data(), size.width * 4};
    using Convert = void (*)(SourceRows, TargetRows, int, int);
    const auto add = [&](const char *name, Convert convert, TargetRows rows, double limit) {
        addBenchmark(name, size, limit, [=] {
            convert(from, rows, size.width, size.height);
            benchmark::DoNotOptimize(target->data());
            benchmark::DoNotOptimize(source->data());
        });
    };
    add("BGRA to ARGB", &convertBGRAToARGB, to, limitOfSameSize);
    add("RGBA to BGRA", &convertRGBAToBGRA, to, limitOfSameSize);
    add("alpha to key", &convertAlphaToKey, to, limitOfSameSize);
    add("BGRA to 2vuy", &convertBGRATo2vuy, {target->data(), rowBytesOf2vuy(size.width)},
        limitOf2vuy);
    addBenchmark("alpha flip", size, limitOfSameSize, [=] {
        mirrorAlphaVertically(to, size.width, size.height);
        benchmark::DoNotOptimize(target->data());
    });
}

/// The stretch alone, with everything that can be made once already made.
void addResampling(FrameSize size)
{
    const QSize sourceSize(size.width, size.height);
    const auto source = std::make_shared<std::vector<quint8>>(std::size_t(size.bytes()), 100);
    for (const QSize to : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
        if (to == sourceSize)
            continue;
        const auto resampler = std::make_shared<Resampler>(sourceSize, to);
        const auto scratch = std::make_shared<Resampler::Scratch>(*resampler);
        const auto target = std::make_shared<std::vector<quint8>>(std::size_t(to.width())
                                                                  * std::size_t(to.height()) * 4);
        const std::string name =
            "rows scaled to " + std::to_string(to.width()) + "x" + std::to_string(to.height());
        const double limit = to.width() < size.width ? limitOfShrinking : 0;
        addBenchmark(name, size, limit, [=] {
            resampler->rows({source->data(), size.width * 4}, {target->data(), to.width() * 4}, 0,
                            to.height(), *scratch);
            benchmark::DoNotOptimize(target->data());
        });
    }
}

/// The usual table, remembering what went over its limit.
class LimitReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            const auto limit = run.counters.find("limit");
            const auto times = run.counters.find("x_memcpy");
            if (limit != run.counters.end() && times != run.counters.end()
                && times->second > limit->second)
                m_overLimit.push_back(run.benchmark_name());
        }
    }

    const std::vector<std::string> &overLimit() const { return m_overLimit; }

private:
    std::vector<std::string> m_overLimit;
};

/// Takes `option` out of the arguments; true if it was there.
bool takeOption(QStringList &arguments, const QString &option)
{
    return arguments.removeOne(option);
}

/// The file that stands behind `option`, both taken out of the arguments; absent without the
/// option, and an error where it can't be read.
tl::expected<std::optional<QByteArray>, QString> takeFile(QStringList &arguments,
                                                          const QString &option)
{
    const qsizetype index = arguments.indexOf(option);
    if (index < 0)
        return std::nullopt;
    const QString path = arguments.value(index + 1);
    arguments.remove(index, std::min<qsizetype>(2, arguments.size() - index));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tl::unexpected(QStringLiteral("%1 %2: %3").arg(option, path, file.errorString()));
    return file.readAll();
}

tl::expected<ShowFiles, QString> takeShowFiles(QStringList &arguments)
{
    ShowFiles files;
    const auto preset = takeFile(arguments, QStringLiteral("--preset"));
    const auto macros = takeFile(arguments, QStringLiteral("--macros"));
    if (!preset || !macros)
        return tl::unexpected(preset ? macros.error() : preset.error());
    if (*preset) {
        const auto read = decodePreset(**preset);
        if (!read)
            return tl::unexpected(QStringLiteral("no preset: ") + read.error());
        files.preset = *read;
    }
    if (*macros) {
        const std::optional<QList<Macro>> read = decodeMacros(**macros);
        if (!read)
            return tl::unexpected(QStringLiteral("no macros"));
        files.macros = *read;
    }
    return files;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    const bool checks = takeOption(arguments, QStringLiteral("--check"));
    const tl::expected<ShowFiles, QString> files = takeShowFiles(arguments);
    if (!files) {
        std::fprintf(stderr, "%s\n", qPrintable(files.error()));
        return 2;
    }
    loadApplicationFonts();
    std::vector<QByteArray> texts;
    std::vector<char *> rest;
    for (const QString &argument : arguments)
        texts.push_back(argument.toLocal8Bit());
    for (QByteArray &text : texts)
        rest.push_back(text.data());
    int restCount = int(rest.size());
    benchmark::Initialize(&restCount, rest.data());
    if (benchmark::ReportUnrecognizedArguments(restCount, rest.data()))
        return 2;
    for (const FrameSize size : frameSizes) {
        addFrames(size, *files);
        addDeviceFrames(size, *files);
        addConversions(size);
        addResampling(size);
    }
    LimitReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const std::string &name : reporter.overLimit())
        std::fprintf(stderr, "over its limit: %s\n", name.c_str());
    return checks && !reporter.overLimit().empty() ? 1 : 0;
}
