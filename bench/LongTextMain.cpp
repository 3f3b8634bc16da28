// What a text of a megabyte costs in a title, in processor time and in memory.
#include <QFile>
#include <QGuiApplication>
#include <QProcess>

#include "Base/ManualClock.h"
#include "Base/ProcessTuning.h"
#include "Models/CanvasDocument.h"
#include "Rendering/ApplicationFonts.h"
#include "Rendering/FramePath/FramePath.h"

#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace tessara;

namespace {

constexpr QSize canvas{1920, 1080};
constexpr qsizetype megabyte = 1'000'000; // characters

struct Sample
{
    std::string name;
    std::function<QString()> text;
    double fontSize = 98;
    std::function<void(TextLayer &)> set = [](TextLayer &) {};
};

QString repeated(const QString &piece)
{
    return piece.repeated(megabyte / piece.size());
}

QString sentences()
{
    return repeated(QStringLiteral("The coast road is closed between Harbour Bridge & Old Quay\n"));
}
QString oneWord()
{
    return repeated(QStringLiteral("severeweather"));
}
QString thai()
{
    return repeated(QStringLiteral("ที่นี่มีน้ำท่วมสูงปิดถนนเลียบชายฝั่ง\n"));
}
QString oneThaiWord()
{
    return thai().remove(QLatin1Char('\n'));
}
QString arabic()
{
    return repeated(QStringLiteral("الطريق الساحلي مغلق 24 ساعة\n"));
}

void inBox(TextLayer &layer)
{
    layer.setTextBoxSize(QSizeF(800, 300));
}
void outlined(TextLayer &layer)
{
    layer.setOutlineWidth(4);
}
void trailing(TextLayer &layer)
{
    layer.setHorizontalAlignment(TextLayerHorizontalAlignment::trailing);
    layer.setPosition({1800, 100});
}
void high(TextLayer &layer)
{
    layer.setPosition({100, -50'000});
}

const std::vector<Sample> &samples()
{
    static const std::vector<Sample> all{
        {"title of 20 letters", [] { return QStringLiteral("Severe weather today"); }},
        {"short lines", sentences},
        {"short lines, outlined", sentences, 98, outlined},
        {"short lines in a box", sentences, 98, inBox},
        {"short lines, 16 px", sentences, 16},
        {"short lines, 50,000 px up", sentences, 98, high},
        {"one word", oneWord},
        {"one word, right-aligned", oneWord, 98, trailing},
        {"one word in a box", oneWord, 98, inBox},
        {"Thai lines", thai},
        {"Thai lines in a box", thai, 98, inBox},
        {"one Thai word", oneThaiWord},
        {"one Thai word in a box", oneThaiWord, 98, inBox},
        {"Arabic lines, right-aligned", arabic, 98, trailing},
        {"marks on one letter",
         [] { return QLatin1Char('a') + repeated(QStringLiteral("\u0301\u0316")); }},
        {"zalgo", [] { return repeated(QStringLiteral("a\u0301\u0316\u0302\u0317\u0308\u0330")); }},
        {"blank lines", [] { return QString(megabyte, QLatin1Char('\n')); }},
        {"faces", [] { return repeated(QStringLiteral("😀🎉")); }},
    };
    return all;
}

double processMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

// The peak that the system tells of a process counts from its parent's size.
double peakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray name = "VmHWM:";
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(name.size()).simplified().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

void measure(const Sample &sample)
{
    ManualClock clock;
    CanvasDocument document(clock, canvas);
    FramePath path;
    const FrameTarget target{FrameContent::fill, FrameFormat::bgra, canvas,
                             rowBytesOf(FrameFormat::bgra, canvas.width())};
    const auto frame = [&] {
        const double from = processMilliseconds();
        if (!path.render(document, std::nullopt, {&target, 1}))
            qFatal("There is no frame");
        return processMilliseconds() - from;
    };
    frame();
    auto *layer = new TextLayer(QUuid::createUuid(), QStringLiteral("Title"), QString(), {100, 50});
    layer->setFontSize(sample.fontSize);
    sample.set(*layer);
    document.addLayer(CanvasLayerItem(layer));
    layer->setText(sample.text());
    const double first = frame();
    layer->setColor({1, 0, 0, 1});
    const double recolored = frame();
    layer->setPosition(layer->position() + QPointF(0, 1));
    const double moved = frame();
    std::printf("%-30s %9.1f %9.1f %9.1f %9.0f\n", sample.name.c_str(), first, recolored, moved,
                peakMegabytes());
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    loadApplicationFonts();
    if (argc > 1) {
        measure(samples().at(std::size_t(std::stoul(argv[1]))));
        return 0;
    }
    std::printf("CPU ms of a frame                  first recolored     moved   peak MB\n");
    std::fflush(stdout);
    // A process each, for its peak of memory.
    for (std::size_t index = 0; index < samples().size(); ++index)
        QProcess::execute(QCoreApplication::applicationFilePath(), {QString::number(index)});
    return 0;
}
