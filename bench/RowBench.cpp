// tessara-bench-rows: what the loops on rows of pixels cost, in ns a pixel.
#include "Base/Pixels/FrameBytes.h"
#include "Base/Pixels/RowBlending.h"
#include "Base/Pixels/RowOutput.h"

#include <benchmark/benchmark.h>
#include <hwy/targets.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace tessara;

constexpr qsizetype rowWidth = 3840;

/// What all kernels read and write; together they stay in the first cache.
struct Rows
{
    alignas(64) std::array<quint32, rowWidth + 16> target{};
    alignas(64) std::array<quint32, rowWidth + 16> source{};
    alignas(64) std::array<quint8, rowWidth + 16> mask{};

    Rows()
    {
        quint32 seed = 1;
        for (quint32 &pixel : source) {
            seed = seed * 1664525 + 1013904223;
            pixel = (seed >> 24) * 0x01010101;
        }
        std::memcpy(mask.data(), source.data(), mask.size());
    }
};
Rows rows;

/// Runs `work` and tells what one pixel of it costs.
void measure(benchmark::State &state, std::int64_t target, qsizetype pixels,
             const std::function<void()> &work)
{
    hwy::SetSupportedTargetsForTest(target);
    for ([[maybe_unused]] auto _ : state) {
        work();
        benchmark::ClobberMemory();
    }
    using benchmark::Counter;
    state.counters["s_per_pixel"] = // of processor time
        Counter(double(pixels), Counter::kIsIterationInvariantRate | Counter::kInvert);
    hwy::SetSupportedTargetsForTest(0);
}

std::vector<std::int64_t> everyTarget()
{
    std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
    if (targets.back() != HWY_STATIC_TARGET)
        targets.push_back(HWY_STATIC_TARGET);
    return targets;
}

void addBenchmark(const std::string &name, qsizetype pixels, const std::function<void()> &work)
{
    for (const std::int64_t target : everyTarget())
        benchmark::RegisterBenchmark(
            (name + "/" + hwy::TargetName(target)).c_str(),
            [=](benchmark::State &state) { measure(state, target, pixels, work); });
}

using BlendCall = void (*)(const RowKernels &, quint32 *target, const quint32 *source,
                           const quint8 *mask, qsizetype pixels);

void addBlending()
{
    constexpr quint32 translucent = 0x80402010;
    constexpr quint32 opaque = 0xFF402010;
    const std::pair<const char *, BlendCall> calls[] = {
        {"fill", [](const RowKernels &kernels, quint32 *target, const quint32 *, const quint8 *,
                    qsizetype pixels) { kernels.fill(target, translucent, pixels); }},
        {"blendSolid",
         [](const RowKernels &kernels, quint32 *target, const quint32 *, const quint8 *,
            qsizetype pixels) { kernels.blendSolid(target, translucent, pixels); }},
        {"storeMask",
         [](const RowKernels &kernels, quint32 *target, const quint32 *, const quint8 *mask,
            qsizetype pixels) { kernels.storeMask(target, mask, translucent, pixels); }},
        {"blendMask",
         [](const RowKernels &kernels, quint32 *target, const quint32 *, const quint8 *mask,
            qsizetype pixels) { kernels.blendMask(target, mask, translucent, pixels); }},
        {"blendMaskOpaque",
         [](const RowKernels &kernels, quint32 *target, const quint32 *, const quint8 *mask,
            qsizetype pixels) { kernels.blendMask(target, mask, opaque, pixels); }},
        {"storePicture",
         [](const RowKernels &kernels, quint32 *target, const quint32 *source, const quint8 *,
            qsizetype pixels) { kernels.storePicture(target, source, pixels); }},
        {"blendPicture",
         [](const RowKernels &kernels, quint32 *target, const quint32 *source, const quint8 *,
            qsizetype pixels) { kernels.blendPicture(target, source, pixels); }},
        {"storePictureAt",
         [](const RowKernels &kernels, quint32 *target, const quint32 *source, const quint8 *,
            qsizetype pixels) { kernels.storePictureAt(target, source, 100, pixels); }},
        {"blendPictureAt",
         [](const RowKernels &kernels, quint32 *target, const quint32 *source, const quint8 *,
            qsizetype pixels) { kernels.blendPictureAt(target, source, 100, pixels); }},
        {"blendOpaquePictureAt",
         [](const RowKernels &kernels, quint32 *target, const quint32 *source, const quint8 *,
            qsizetype pixels) { kernels.blendOpaquePictureAt(target, source, 100, pixels); }},
        {"blendPictureThrough",
         [](const RowKernels &kernels, quint32 *target, const quint32 *source, const quint8 *mask,
            qsizetype pixels) { kernels.blendPictureThrough(target, source, mask, 100, pixels); }},
        {"mixRows", [](const RowKernels &kernels, quint32 *target, const quint32 *source,
                       const quint8 *, qsizetype pixels) {
             const auto *first = reinterpret_cast<const quint8 *>(source);
             kernels.mixRows(reinterpret_cast<quint8 *>(target), first, first + 4, 77, pixels * 4);
         }}};
    for (const auto &[name, call] : calls) {
        addBenchmark(name, rowWidth, [call = call] {
            call(rowKernels(), rows.target.data(), rows.source.data(), rows.mask.data(), rowWidth);
        });
        // One cell further right, where the widest vectors straddle cache lines.
        addBenchmark(std::string(name) + "Shifted", rowWidth, [call = call] {
            call(rowKernels(), rows.target.data() + cellWidth, rows.source.data() + cellWidth,
                 rows.mask.data() + cellWidth, rowWidth);
        });
    }
}

struct Output
{
    const char *name;
    OutputKernels::Convert OutputKernels::*convert;
    qsizetype pixelBytes;
};
constexpr Output outputs[] = {{"bgra", &OutputKernels::bgra, 4},
                              {"argb", &OutputKernels::argb, 4},
                              {"key", &OutputKernels::key, 4},
                              {"yuv", &OutputKernels::yuv, 2},
                              {"keyYUV", &OutputKernels::keyYUV, 2}};

/// Whole frames from one row, by turns into as many as a card holds at once.
void addOutput()
{
    constexpr std::size_t frameCount = 4;
    for (const qsizetype width : {qsizetype(1920), qsizetype(3840)}) {
        const qsizetype height = width * 9 / 16;
        std::array<quint8 *, frameCount> frames{};
        for (quint8 *&frame : frames) {
            static std::vector<FrameBytes> kept;
            kept.push_back(FrameBytes::zeroed(width * height * 4));
            frame = kept.back().writableData();
        }
        for (const Output &output : outputs) {
            const std::string name = "frame" + std::to_string(width) + "/" + output.name;
            addBenchmark(name, width * height, [=, turn = std::size_t(0)]() mutable {
                quint8 *frame = frames[turn++ % frameCount];
                const auto convert = outputKernels().*output.convert;
                for (qsizetype y = 0; y < height; ++y)
                    convert(frame + y * width * output.pixelBytes, rows.source.data(), width);
                finishStreaming();
            });
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    addBlending();
    addOutput();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
