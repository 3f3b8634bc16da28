#include "bench/FrameBench.h"

#include "Base/Pixels/FrameBytes.h"
#include "Base/Pixels/PixelConversion.h"
#include "Base/Pixels/Resample.h"
#include "Base/Pixels/RowOutput.h"

#include <algorithm>

namespace tessara {

namespace {

// Times the painter; each is about three times what was measured.
constexpr double limitOfSameSize = 0.35;
constexpr double limitOf2vuy = 0.5;
constexpr double limitOfShrinking = 0.6;

struct Pass
{
    QString name;
    std::function<void()> run;
    std::optional<double> limit = {};
};

FrameBytes frameOf(qsizetype size)
{
    FrameBytes bytes = FrameBytes::zeroed(size);
    if (bytes.isNull())
        qFatal("There is no memory for a frame");
    return bytes;
}

/// Bytes that nobody can foresee, so that no branch is taken for granted.
FrameBytes noise(qsizetype size)
{
    FrameBytes bytes = frameOf(size);
    std::generate_n(bytes.writableData(), size, [state = 1u]() mutable {
        state = state * 1664525u + 1013904223u;
        return quint8(state >> 24);
    });
    return bytes;
}

void measure(const FrameBench &bench, const std::vector<Pass> &passes)
{
    for (const Pass &pass : passes) {
        const std::vector<Ticks> ticks =
            measureInTurns({bench.painter, {pass.run}}, bench.seconds / 2);
        bench.table.add({pass.name, ticks[1], ticks[1].processor() / ticks[0].processor(),
                         QStringLiteral("x painter"), pass.limit});
    }
}

void benchConversions(const FrameBench &bench)
{
    constexpr qsizetype beyond = 64; // bytes that may be read past a row
    const FrameBytes source = noise(bench.size.bytes() + beyond);
    FrameBytes target = frameOf(bench.size.bytes());
    const int width = bench.size.width;
    const int height = bench.size.height;
    const SourceRows from{source.data(), width * 4};
    const TargetRows to{target.writableData(), width * 4};
    const TargetRows to2vuy{target.writableData(), rowBytesOf2vuy(width)};
    using Convert = void (*)(SourceRows, TargetRows, int, int);
    const auto pass = [=](Convert convert, TargetRows rows) {
        return [=] { convert(from, rows, width, height); };
    };
    const OutputKernels &kernels = outputKernels();
    const auto rows = [=](OutputKernels::Convert convert, TargetRows outputRows) {
        return [=] {
            for (int y = 0; y < height; ++y)
                convert(outputRows.row(y), reinterpret_cast<const quint32 *>(from.row(y)), width);
            finishStreaming();
        };
    };
    measure(bench, {{QStringLiteral("B G R A to 2vuy, whole pass"), rows(kernels.yuv, to2vuy),
                     limitOfSameSize},
                    {QStringLiteral("B G R A to A R G B, whole pass"), rows(kernels.argb, to),
                     limitOfSameSize},
                    {QStringLiteral("B G R A to its key, whole pass"), rows(kernels.key, to),
                     limitOfSameSize},
                    {QStringLiteral("BGRA to ARGB"), pass(&convertBGRAToARGB, to), limitOfSameSize},
                    {QStringLiteral("RGBA to BGRA"), pass(&convertRGBAToBGRA, to), limitOfSameSize},
                    {QStringLiteral("alpha to key"), pass(&convertAlphaToKey, to), limitOfSameSize},
                    {QStringLiteral("BGRA to 2vuy"), pass(&convertBGRATo2vuy, to2vuy), limitOf2vuy},
                    {QStringLiteral("alpha flip"),
                     [=] { mirrorAlphaVertically(to, width, height); }, limitOfSameSize}});
}

void benchScaling(const FrameBench &bench, QSize targetSize)
{
    const bool isShrinking = targetSize.width() < bench.size.width;
    const FrameBytes source = noise(bench.size.bytes());
    FrameBytes target = frameOf(qsizetype(targetSize.width()) * targetSize.height() * 4);
    const Resampler resampler(bench.size.pixels(), targetSize);
    Resampler::Scratch scratch(resampler);
    measure(bench, {{QStringLiteral("scaling to %1x%2, 1 thread")
                         .arg(targetSize.width())
                         .arg(targetSize.height()),
                     [&] {
                         resampler.rows({source.data(), bench.size.width * 4},
                                        {target.writableData(), targetSize.width() * 4}, 0,
                                        targetSize.height(), scratch);
                     },
                     isShrinking ? std::optional(limitOfShrinking) : std::nullopt}});
}

void benchDeviceFrames(const FrameBench &bench)
{
    BenchShow show(bench.size.canvas(), bench.show);
    const QImage frame = RenderEngine().render(show.document(), std::nullopt).value();
    using Make = DeckLinkFrameBuffer::Result (*)(const QImage &, int, int);
    const auto make = [&](Make function, QSize size) {
        return [&frame, function, size] {
            if (!function(frame, size.width(), size.height()))
                qFatal("A device frame could not be made");
        };
    };
    const QSize size = bench.size.pixels();
    measure(bench, {{QStringLiteral("fill frame"), make(&DeckLinkFrameBuffer::make, size)},
                    {QStringLiteral("key frame"), make(&DeckLinkFrameBuffer::makeAlphaKey, size)},
                    {QStringLiteral("external key fill frame"),
                     make(&DeckLinkFrameBuffer::makeExternalKeyFill, size)}});
}

} // namespace

void benchPixels(const FrameBench &bench)
{
    benchConversions(bench);
    benchDeviceFrames(bench);
    for (const QSize target : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
        if (target != bench.size.pixels())
            benchScaling(bench, target);
    }
}

} // namespace tessara
