#include "Base/Pixels/PixelConversion.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <vector>

namespace tessara {
namespace {

using Bytes = std::vector<quint8>;
using Quad = std::array<quint8, 4>;

Bytes randomBytes(std::size_t count, quint32 seed)
{
    Bytes bytes(count);
    for (quint8 &byte : bytes) {
        seed = seed * 1664525 + 1013904223;
        byte = quint8(seed >> 24);
    }
    return bytes;
}

Quad pixelAt(SourceRows rows, int x, int y)
{
    const quint8 *pixel = rows.row(y) + 4 * x;
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

using Conversion = void (*)(SourceRows, TargetRows, int, int);
using PixelModel = std::function<Quad(Quad)>;

/// Every width up to a few registers, rows that begin anywhere, and nothing written beside them.
void expectEveryPixel(Conversion convert, const PixelModel &model)
{
    constexpr int height = 3;
    constexpr quint8 untouched = 0xA5;
    for (int width = 1; width <= 70; ++width) {
        for (const int offset : {0, 1, 3}) {
            const qsizetype rowBytes = width * 4 + offset;
            const Bytes input = randomBytes(std::size_t(rowBytes * height + 8), quint32(width));
            Bytes output(input.size(), untouched);
            const SourceRows source{input.data() + offset, rowBytes};

            convert(source, {output.data() + offset, rowBytes}, width, height);

            const SourceRows result{output.data() + offset, rowBytes};
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(pixelAt(result, x, y), model(pixelAt(source, x, y))) << width;
                for (int pad = 0; pad < offset; ++pad)
                    ASSERT_EQ(result.row(y)[width * 4 + pad], untouched) << width;
            }
        }
    }
}

TEST(PixelConversionTest, BGRABecomesARGB)
{
    expectEveryPixel(convertBGRAToARGB, [](Quad p) { return Quad{p[3], p[2], p[1], p[0]}; });
}

TEST(PixelConversionTest, RGBABecomesBGRA)
{
    expectEveryPixel(convertRGBAToBGRA, [](Quad p) { return Quad{p[2], p[1], p[0], p[3]}; });
}

TEST(PixelConversionTest, TheKeyIsTheAlphaAsOpaqueGrey)
{
    expectEveryPixel(convertAlphaToKey, [](Quad p) { return Quad{p[3], p[3], p[3], 255}; });
}

TEST(PixelConversionTest, SourceAndTargetMayBeTheSameRows)
{
    const Bytes before = randomBytes(37 * 4, 5);
    Bytes pixels = before;

    convertRGBAToBGRA({pixels.data(), 37 * 4}, {pixels.data(), 37 * 4}, 37, 1);
    convertRGBAToBGRA({pixels.data(), 37 * 4}, {pixels.data(), 37 * 4}, 37, 1);

    EXPECT_EQ(pixels, before);
}

TEST(PixelConversionTest, OnlyTheAlphaIsTurnedUpsideDown)
{
    for (int width = 1; width <= 70; ++width) {
        for (const int height : {1, 2, 3, 6, 7}) {
            const qsizetype rowBytes = width * 4 + 1;
            const Bytes before = randomBytes(std::size_t(rowBytes * height), quint32(width));
            Bytes after = before;

            mirrorAlphaVertically({after.data(), rowBytes}, width, height);

            const SourceRows old{before.data(), rowBytes};
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    Quad expected = pixelAt(old, x, y);
                    expected[3] = pixelAt(old, x, height - 1 - y)[3];
                    ASSERT_EQ(pixelAt({after.data(), rowBytes}, x, y), expected);
                }
                ASSERT_EQ(after[std::size_t(y * rowBytes + width * 4)],
                          before[std::size_t(y * rowBytes + width * 4)]);
            }
        }
    }
}

/// The arithmetic as it is written down, in 32 bits that wrap round.
Quad yuvOf(Quad one, Quad two)
{
    const auto luma = [](Quad p) {
        return ((66u * p[2] + 129u * p[1] + 25u * p[0] + 128u) >> 8) + 16u;
    };
    const auto u = [](Quad p) { return (112u * p[0] - 74u * p[1] - 38u * p[2] + 128u) >> 8; };
    const auto v = [](Quad p) { return (112u * p[2] - 94u * p[1] - 18u * p[0] + 128u) >> 8; };
    return {quint8(((u(one) + u(two)) >> 1) ^ 128u), quint8(luma(one)),
            quint8(((v(one) + v(two)) >> 1) ^ 128u), quint8(luma(two))};
}

TEST(PixelConversionTest, EveryPairOfYUVIsExact)
{
    constexpr int height = 3;
    for (int width = 1; width <= 70; ++width) {
        for (const int offset : {0, 1, 2}) {
            const qsizetype sourceRow = width * 4 + offset;
            const qsizetype targetRow = rowBytesOf2vuy(width) + offset;
            const Bytes input = randomBytes(std::size_t(sourceRow * height + 8), quint32(width));
            Bytes output(std::size_t(targetRow * height + 8), 0xA5);
            const SourceRows source{input.data() + offset, sourceRow};
            const SourceRows result{output.data() + offset, targetRow};

            convertBGRATo2vuy(source, {output.data() + offset, targetRow}, width, height);

            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; x += 2)
                    ASSERT_EQ(pixelAt(result, x / 2, y),
                              yuvOf(pixelAt(source, x, y),
                                    pixelAt(source, std::min(x + 1, width - 1), y)))
                        << width << " " << x;
                for (int pad = 0; pad < offset; ++pad)
                    ASSERT_EQ(result.row(y)[rowBytesOf2vuy(width) + pad], 0xA5);
            }
        }
    }
}

TEST(PixelConversionTest, EveryColourHasItsExactYUV)
{
    // All values of two channels, and of the third its ends and steps between.
    Bytes input(std::size_t(256) * 256 * 4);
    Bytes output(std::size_t(256) * 256 * 2);
    for (int third = 0; third <= 255; third += 15) {
        for (std::size_t index = 0; index < 65536; ++index) {
            input[index * 4 + third % 3] = quint8(third);
            input[index * 4 + (third + 1) % 3] = quint8(index);
            input[index * 4 + (third + 2) % 3] = quint8(index >> 8);
        }

        convertBGRATo2vuy({input.data(), 256 * 4}, {output.data(), 256 * 2}, 256, 256);

        for (int pair = 0; pair < 32768; ++pair) {
            const SourceRows pixels{input.data(), 8};
            ASSERT_EQ(pixelAt({output.data(), 4}, 0, pair),
                      yuvOf(pixelAt(pixels, 0, pair), pixelAt(pixels, 1, pair)));
        }
    }
}

TEST(PixelConversionTest, BlackAndWhiteAreStudioRange)
{
    const Bytes input{0, 0, 0, 255, 255, 255, 255, 255};
    Bytes output(4);

    convertBGRATo2vuy({input.data(), 8}, {output.data(), 4}, 2, 1);

    EXPECT_EQ(output, (Bytes{128, 16, 128, 235}));
}

TEST(PixelConversionTest, AnOddWidthOfYUVTakesAWholePair)
{
    EXPECT_EQ(rowBytesOf2vuy(1), 4);
    EXPECT_EQ(rowBytesOf2vuy(2), 4);
    EXPECT_EQ(rowBytesOf2vuy(3), 8);
    EXPECT_EQ(rowBytesOf2vuy(1920), 3840);
    EXPECT_EQ(rowBytesOf2vuy(1921), 3844);
}

TEST(PixelConversionTest, LongerRowsArePaddedWithZerosAndShorterOnesCut)
{
    const Bytes input{1, 2, 3, 4, 5, 6};
    Bytes longer(10, 0xA5);
    Bytes shorter(4, 0xA5);

    repackRows({input.data(), 3}, {longer.data(), 5}, 2);
    repackRows({input.data(), 3}, {shorter.data(), 2}, 2);

    EXPECT_EQ(longer, (Bytes{1, 2, 3, 0, 0, 4, 5, 6, 0, 0}));
    EXPECT_EQ(shorter, (Bytes{1, 2, 4, 5}));
}

} // namespace
} // namespace tessara
