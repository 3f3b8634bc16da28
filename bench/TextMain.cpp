// What a key stroke in a long title costs.
#include <QGuiApplication>

#include "Base/ProcessTuning.h"
#include "Rendering/ApplicationFonts.h"
#include "Rendering/CoverageMask.h"
#include "Rendering/TextBlockCache.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

using namespace tessara;

namespace {

constexpr qsizetype characters = 400;
constexpr int keyStrokes = 100;

QString title(qsizetype count)
{
    const QString sentence = QStringLiteral(
        "Severe weather: the coast road is closed between Harbour Bridge and Old Quay until 6:30 "
        "pm, "
        "trains run every 20 minutes; schools in the North & West districts stay shut on Friday. ");
    QString text = sentence.repeated(int(characters / sentence.size()) + 1).left(characters);
    text[characters - 2] = QChar(ushort('a' + count / 26 % 26));
    text[characters - 1] = QChar(ushort('a' + count % 26));
    return text;
}

enum Stage { layout, outlines, stroke, fillMask, strokeMask, stageCount };
using Milliseconds = std::array<double, stageCount + 1>;

// This thread's own time, so that a busy machine measures alike.
class Stopwatch
{
public:
    double lap()
    {
        const double from = std::exchange(m_from, now());
        return m_from - from;
    }

private:
    static double now()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    }

    double m_from = now();
};

struct Frame
{
    QSize size;
    double fontSize;
    double outlineWidth;
};

Milliseconds keyStroke(TextBlockCache &texts, const Frame &frame, qsizetype count)
{
    const SizedFont font = systemFont(frame.fontSize, QFont::DemiBold);
    const double boxWidth = frame.size.width() * 0.9;
    const QString text = title(count);
    Stopwatch watch;
    Milliseconds spent{};
    const auto wrapped = texts.block(text, font, TextLayerHorizontalAlignment::leading, boxWidth);
    spent[layout] = watch.lap();
    const QPainterPath fill = wrapped->fill().path;
    spent[outlines] = watch.lap();
    const QPainterPath edges = wrapped->stroke(frame.outlineWidth).path;
    spent[stroke] = watch.lap();
    QTransform toPixels = QTransform::fromTranslate(96.25, 100);
    toPixels.scale(wrapped->scale(), wrapped->scale());
    const QRect clip({}, frame.size);
    const CoverageMask inside = rasterizedPath(fill, toPixels, clip);
    spent[fillMask] = watch.lap();
    const CoverageMask edge = rasterizedPath(edges, toPixels, clip);
    spent[strokeMask] = watch.lap();
    for (int stage = 0; stage < stageCount; ++stage)
        spent[stageCount] += spent[size_t(stage)];
    return spent;
}

double middleOf(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void measure(const Frame &frame)
{
    TextBlockCache texts;
    const Milliseconds first = keyStroke(texts, frame, 0);
    std::array<std::vector<double>, stageCount + 1> all;
    for (qsizetype count = 1; count <= keyStrokes; ++count) {
        const Milliseconds spent = keyStroke(texts, frame, count);
        for (size_t stage = 0; stage <= stageCount; ++stage)
            all[stage].push_back(spent[stage]);
    }
    std::printf("%4d x %4d, outline %4.1f %%:", frame.size.width(), frame.size.height(),
                frame.outlineWidth);
    for (size_t stage = 0; stage <= stageCount; ++stage)
        std::printf(" %8.2f", middleOf(all[stage]));
    std::printf("   first %6.2f\n", first[stageCount]);
}

} // namespace

int main(int argc, char **argv)
{
    keepFreedMemory();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    loadApplicationFonts();
    std::printf(
        "medians in CPU ms              layout outlines   stroke   fill m. stroke m.    sum\n");
    for (const double outlineWidth : {4.0, 16.0}) {
        measure({{1920, 1080}, 40, outlineWidth});
        measure({{3840, 2160}, 80, outlineWidth});
    }
    return 0;
}
