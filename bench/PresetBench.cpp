#include "bench/FrameBench.h"

#include <QBuffer>
#include <QImageReader>

#include <memory>

namespace tessara {

namespace {

void decodeOneAfterAnother(const QList<QByteArray> &files)
{
    for (const QByteArray &file : files) {
        QBuffer buffer;
        buffer.setData(file);
        QImageReader reader(&buffer);
        if (reader.read().isNull())
            qFatal("A picture of the preset can't be decoded");
    }
}

QList<QByteArray> pictureFiles(const TextPreset &preset)
{
    QList<QByteArray> files;
    for (const PresetImageEntry &entry : preset.images) {
        if (const std::optional<QByteArray> file = entry.pngData())
            files.append(*file);
    }
    return files;
}

/// An empty document and what draws it.
struct Stage
{
    explicit Stage(FrameSize size)
        : document(clock, size.canvas())
        , frames(ForkJoin::standardThreads(), {targetOf(size.pixels())})
    {
        frames.make(document);
    }

    void apply(const TextPreset &preset)
    {
        document.addTextPreset(preset);
        frames.make(document);
    }

    ManualClock clock;
    CanvasDocument document;
    PathFrames frames;
};

} // namespace

void benchPreset(const FrameBench &bench)
{
    if (!bench.show.preset || bench.show.preset->images.isEmpty())
        return;
    const TextPreset preset = scaledPreset(*bench.show.preset, bench.size.scale());
    const QList<QByteArray> files = pictureFiles(preset);
    std::unique_ptr<Stage> first;
    std::unique_ptr<Stage> second;
    const std::vector<Ticks> ticks = measureInTurns(
        {{[&] { decodeOneAfterAnother(files); }},
         {[&] { first->apply(preset); }, [&] { first = std::make_unique<Stage>(bench.size); }},
         {[&] { second->apply(preset); },
          [&] {
              second = std::make_unique<Stage>(bench.size);
              second->apply(preset);
          }}},
        bench.seconds);
    const double decoding = ticks[0].processor();
    const QString unit = QStringLiteral("x decoding");
    bench.table.add({QStringLiteral("decoding its PNGs in turn"), ticks[0], 1, unit});
    bench.table.add({QStringLiteral("applying the preset, to its frame"), ticks[1],
                     ticks[1].processor() / decoding, unit, bench.limit(1, 2.2)});
    bench.table.add({QStringLiteral("applying it a second time"), ticks[2],
                     ticks[2].processor() / decoding, unit, bench.limit(0.06, 0.15)});
}

} // namespace tessara
