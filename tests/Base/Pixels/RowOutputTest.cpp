#include "Base/Pixels/RowOutput.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "Base/Pixels/EveryTarget.h"
#include "Base/Pixels/PixelConversion.h"

namespace tessara {
namespace {

using Bytes = std::vector<quint8>;
using Row = std::vector<quint32>;
using Quad = std::array<quint8, 4>;

Row randomRow(qsizetype pixels, quint32 seed)
{
    Row row(std::size_t(pixels) + 16); // a vector may be read past the end
    for (quint32 &pixel : row) {
        seed = seed * 1664525 + 1013904223;
        pixel = seed ^ seed >> 13;
    }
    return row;
}

const quint8 *bytesOf(const Row &row)
{
    return reinterpret_cast<const quint8 *>(row.data());
}

Bytes keyOf(const Row &row)
{
    Bytes key(row.size() * 4);
    convertAlphaToKey({bytesOf(row), 0}, {key.data(), 0}, int(row.size()), 1);
    return key;
}

Bytes yuvOf(const quint8 *bgra, qsizetype pixels)
{
    Bytes yuv;
    yuv.resize(std::size_t(rowBytesOf2vuy(int(pixels))));
    convertBGRATo2vuy({bgra, 0}, {yuv.data(), 0}, int(pixels), 1);
    return yuv;
}

class RowOutputTest : public EveryTarget
{
protected:
    /// Every width up to some vectors and a longer one, at every place within a cache line, and
    /// nothing written beside the row.
    template <class Call, class Model>
    static void expectEveryRow(const Call &call, const Model &model)
    {
        constexpr std::size_t line = 64;
        for (qsizetype pixels = 1; pixels <= 71; ++pixels) {
            const qsizetype width = pixels == 71 ? 1001 : pixels;
            const Row source = randomRow(width, quint32(width));
            const Bytes row = model(source, width);
            Bytes target(row.size() + 3 * line);
            for (std::size_t at = 0; at < line; ++at) {
                std::fill(target.begin(), target.end(), 0xA5);
                Bytes expected = target;
                std::copy(row.begin(), row.end(), expected.begin() + std::ptrdiff_t(at));

                call(outputKernels(), target.data() + at, source.data(), width);
                finishStreaming();

                ASSERT_EQ(target, expected) << width << " pixels at " << at;
            }
        }
    }

    template <class Model>
    static void expectEveryPixel(OutputKernels::Convert OutputKernels::*kernel, const Model &model)
    {
        expectEveryRow([kernel](const OutputKernels &kernels, quint8 *target, const quint32 *source,
                                qsizetype pixels) { (kernels.*kernel)(target, source, pixels); },
                       [&model](const Row &source, qsizetype pixels) {
                           Bytes row;
                           for (qsizetype x = 0; x < pixels; ++x) {
                               Quad pixel;
                               std::memcpy(pixel.data(), &source[std::size_t(x)], 4);
                               const Quad result = model(pixel);
                               row.insert(row.end(), result.begin(), result.end());
                           }
                           return row;
                       });
    }
};

INSTANTIATE_TEST_SUITE_P(Targets, RowOutputTest, testing::ValuesIn(everyTarget()), targetName);

TEST_P(RowOutputTest, BGRAStaysAsItIs)
{
    expectEveryPixel(&OutputKernels::bgra, [](Quad p) { return p; });
}

TEST_P(RowOutputTest, BGRABecomesARGB)
{
    expectEveryPixel(&OutputKernels::argb, [](Quad p) { return Quad{p[3], p[2], p[1], p[0]}; });
}

TEST_P(RowOutputTest, TheKeyIsTheAlphaAsOpaqueGrey)
{
    expectEveryPixel(&OutputKernels::key, [](Quad p) { return Quad{p[3], p[3], p[3], 255}; });
    expectEveryPixel(&OutputKernels::keyARGB, [](Quad p) { return Quad{255, p[3], p[3], p[3]}; });
}

TEST_P(RowOutputTest, PairsOfYUVAreThoseOfTheConversionOfFrames)
{
    expectEveryRow(
        [](const OutputKernels &kernels, quint8 *target, const quint32 *source, qsizetype pixels) {
            kernels.yuv(target, source, pixels);
        },
        [](const Row &source, qsizetype pixels) { return yuvOf(bytesOf(source), pixels); });
}

TEST_P(RowOutputTest, TheKeyInYUVIsThatOfItsGrey)
{
    expectEveryRow(
        [](const OutputKernels &kernels, quint8 *target, const quint32 *source, qsizetype pixels) {
            kernels.keyYUV(target, source, pixels);
        },
        [](const Row &source, qsizetype pixels) { return yuvOf(keyOf(source).data(), pixels); });
}

TEST_P(RowOutputTest, EveryColorHasItsExactYUV)
{
    // All blues, the ends of green and red and steps between, each beside a colour far from it.
    Row colors;
    for (quint32 red = 0; red < 256; red += 5)
        for (quint32 green = 0; green < 256; green += 3)
            for (quint32 blue = 0; blue < 256; ++blue) {
                const quint32 color = red << 16 | green << 8 | blue;
                colors.push_back(color);
                colors.push_back(color * 2654435761u >> 8);
            }
    const auto pixels = qsizetype(colors.size());
    const Bytes expected = yuvOf(bytesOf(colors), pixels);
    Bytes yuv(expected.size());

    outputKernels().yuv(yuv.data(), colors.data(), pixels);
    finishStreaming();

    EXPECT_EQ(yuv, expected);
}

TEST_P(RowOutputTest, ColorAndAlphaOfTwoRowsMeet)
{
    const auto alphaSource = [](qsizetype pixels) { return randomRow(pixels, 77); };
    const auto mirrored = [&](const Row &source, qsizetype pixels) {
        const Row alpha = alphaSource(pixels);
        Bytes row;
        for (std::size_t x = 0; x < std::size_t(pixels); ++x)
            for (const int shift : {0, 8, 16, 24})
                row.push_back(quint8((shift == 24 ? alpha[x] : source[x]) >> shift));
        return row;
    };
    expectEveryRow(
        [&](const OutputKernels &kernels, quint8 *target, const quint32 *source, qsizetype pixels) {
            kernels.mirrored(target, source, alphaSource(pixels).data(), pixels);
        },
        mirrored);
    expectEveryRow(
        [&](const OutputKernels &kernels, quint8 *target, const quint32 *source, qsizetype pixels) {
            kernels.mirroredARGB(target, source, alphaSource(pixels).data(), pixels);
        },
        [&](const Row &source, qsizetype pixels) {
            Bytes row = mirrored(source, pixels);
            for (auto pixel = row.begin(); pixel != row.end(); pixel += 4)
                std::reverse(pixel, pixel + 4);
            return row;
        });
}

} // namespace
} // namespace tessara
