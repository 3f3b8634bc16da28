// tessara-bench-frame: what a frame costs, by the frame path and drawn from nothing.
#include <QCommandLineParser>
#include <QGuiApplication>

#include "Base/ProcessTuning.h"
#include "bench/FrameBench.h"
#include "Rendering/ApplicationFonts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace tessara;

constexpr FrameSize frameSizes[] = {{1920, 1080}, {3840, 2160}};
constexpr double fullSeconds = 2; // a work
constexpr double quickSeconds = 0.2;

struct Chapter
{
    const char *name;
    void (*run)(const FrameBench &bench);
};
constexpr Chapter chapters[] = {
    {"scenes", &benchScenes}, {"typing", &benchTyping}, {"formats", &benchFormats},
    {"preset", &benchPreset}, {"pixels", &benchPixels},
};
constexpr const char *memoryChapter = "memory";

struct Options
{
    Options()
    {
        parser.addHelpOption();
        parser.addOptions({preset, macros, lowerThird, check, quick, only, width, memoryOf});
        parser.process(*QCoreApplication::instance());
        for (const QString &name : chaptersAsked()) {
            if (!isChapter(name))
                refuse(QStringLiteral("no chapter %1").arg(name));
        }
    }

    QStringList chaptersAsked() const
    {
        return parser.value(only).split(QLatin1Char(','), Qt::SkipEmptyParts);
    }
    bool wants(const char *chapter) const
    {
        const QStringList asked = chaptersAsked();
        return asked.isEmpty() || asked.contains(QLatin1String(chapter));
    }
    bool wants(FrameSize size) const
    {
        return !parser.isSet(width) || parser.value(width).toInt() == size.width;
    }
    /// Those of a child that draws the same show.
    QStringList showArguments() const
    {
        QStringList arguments;
        for (const QCommandLineOption *option : {&preset, &macros}) {
            if (parser.isSet(*option))
                arguments << QStringLiteral("--") + option->names().first()
                          << parser.value(*option);
        }
        return arguments;
    }

    static bool isChapter(const QString &name)
    {
        return name == QLatin1String(memoryChapter)
               || std::ranges::any_of(chapters, [&](const Chapter &chapter) {
                      return name == QLatin1String(chapter.name);
                  });
    }

    QCommandLineOption preset{QStringLiteral("preset"),
                              QStringLiteral("Draw the layers of a preset."),
                              QStringLiteral("file")};
    QCommandLineOption macros{QStringLiteral("macros"),
                              QStringLiteral("Draw the layers that macros add as well."),
                              QStringLiteral("file")};
    QCommandLineOption lowerThird{QStringLiteral("lower-third"),
                                  QStringLiteral("Measure the dissolve of a small preset as well."),
                                  QStringLiteral("file")};
    QCommandLineOption check{QStringLiteral("check"),
                             QStringLiteral("End with status 1 where a row is over its limit.")};
    QCommandLineOption quick{QStringLiteral("quick"),
                             QStringLiteral("A short run, for a first look.")};
    QCommandLineOption only{QStringLiteral("only"),
                            QStringLiteral("Of scenes, typing, formats, preset, pixels and memory, "
                                           "those named here."),
                            QStringLiteral("names")};
    QCommandLineOption width{QStringLiteral("width"), QStringLiteral("Only 1920 or only 3840."),
                             QStringLiteral("px")};
    QCommandLineOption memoryOf = [] {
        QCommandLineOption option(QStringLiteral("memory-of"), {}, QStringLiteral("way"));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        return option;
    }();
    QCommandLineParser parser;
};

int runMemoryChild(const Options &options, ShowFiles show)
{
    for (const FrameSize size : frameSizes) {
        if (options.wants(size))
            return tessara::runMemoryChild(options.parser.value(options.memoryOf), size,
                                           std::move(show));
    }
    return 2;
}

void runChapters(const Options &options, const ShowFiles &show, BenchTable &table)
{
    const std::optional<TextPreset> lowerThird = presetOf(options.parser.value(options.lowerThird));
    const double seconds = options.parser.isSet(options.quick) ? quickSeconds : fullSeconds;
    for (const FrameSize size : frameSizes) {
        if (!options.wants(size))
            continue;
        const FrameBench bench{size, show, lowerThird, seconds, painterWork(size, show), table};
        table.begin(QStringLiteral("%1x%2").arg(size.width).arg(size.height));
        for (const Chapter &chapter : chapters) {
            if (options.wants(chapter.name))
                chapter.run(bench);
        }
        if (options.wants(memoryChapter))
            benchMemory(bench, options.showArguments());
    }
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    keepFreedMemory();
    const QGuiApplication application(argc, argv);
    const Options options;
    loadApplicationFonts();
    ShowFiles show =
        ShowFiles::read(options.parser.value(options.preset), options.parser.value(options.macros));
    if (options.parser.isSet(options.memoryOf))
        return runMemoryChild(options, std::move(show));
    BenchTable table;
    runChapters(options, show, table);
    std::printf("\n");
    std::fflush(stdout);
    for (const QString &row : table.overLimit())
        std::fprintf(stderr, "over its limit: %s\n", qPrintable(row));
    return options.parser.isSet(options.check) && !table.overLimit().isEmpty() ? 1 : 0;
}
