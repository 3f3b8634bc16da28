#include "Base/Pixels/Resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace tessara {
namespace {

using Pixel = std::array<quint8, 4>; // R, G, B, A

class Picture
{
public:
    explicit Picture(QSize size, Pixel pixel = {})
        : m_size(size)
        , m_pixels(std::size_t(size.width() * size.height()), pixel)
    {
    }

    QSize size() const { return m_size; }
    Pixel &at(int x, int y) { return m_pixels[std::size_t(y * m_size.width() + x)]; }
    const std::vector<Pixel> &pixels() const { return m_pixels; }

    Picture resampled(QSize size) const
    {
        Picture result(size, {1, 2, 3, 4});
        resample({m_pixels.data()->data(), m_size.width() * 4}, m_size,
                 {result.m_pixels.data()->data(), size.width() * 4}, size);
        return result;
    }

private:
    QSize m_size;
    std::vector<Pixel> m_pixels;
};

const QSize sizes[] = {{1, 1}, {2, 1}, {1, 5}, {7, 3}, {16, 9}, {17, 31}, {64, 36}, {99, 70}};

TEST(ResampleTest, AFlatColourStaysExact)
{
    for (const Pixel colour : {Pixel{100, 7, 128, 128}, Pixel{255, 255, 255, 255},
                               Pixel{1, 0, 1, 1}, Pixel{0, 0, 0, 0}}) {
        for (const QSize from : sizes) {
            for (const QSize to : sizes) {
                const Picture result = Picture(from, colour).resampled(to);
                EXPECT_EQ(std::ranges::count(result.pixels(), colour), to.width() * to.height());
            }
        }
    }
}

TEST(ResampleTest, TheSameSizeIsTheSamePicture)
{
    Picture picture({31, 17});
    for (int index = 0; index < 31 * 17; ++index)
        picture.at(index % 31, index / 31) = {quint8(index), quint8(index / 2), 0, 255};

    EXPECT_EQ(picture.resampled({31, 17}).pixels(), picture.pixels());
}

TEST(ResampleTest, NoColourEndsAboveItsAlpha)
{
    quint32 seed = 1;
    const auto random = [&seed](quint32 limit) {
        seed = seed * 1664525 + 1013904223;
        return quint8((seed >> 16) % (limit + 1));
    };
    Picture picture({61, 47});
    for (int index = 0; index < 61 * 47; ++index) {
        const quint8 alpha = index % 3 == 0 ? 255 : random(255);
        picture.at(index % 61, index / 61) = {random(alpha), alpha, quint8(alpha / 2), alpha};
    }

    for (const QSize size : {QSize(30, 23), QSize(122, 94), QSize(200, 11), QSize(13, 99)}) {
        const Picture result = picture.resampled(size);
        EXPECT_TRUE(std::ranges::all_of(result.pixels(), [](const Pixel &pixel) {
            return std::max({pixel[0], pixel[1], pixel[2]}) <= pixel[3];
        }));
    }
}

TEST(ResampleTest, TheFinestCheckerboardShrinksToEvenGrey)
{
    Picture board({64, 64});
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            board.at(x, y) = (x + y) % 2 == 0 ? Pixel{255, 255, 255, 255} : Pixel{0, 0, 0, 255};
    }

    Picture half = board.resampled({32, 32});

    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            // In the corners, half of the kernel hangs over the edge in both directions.
            const bool isCorner = (x == 0 || x == 31) && (y == 0 || y == 31);
            EXPECT_NEAR(half.at(x, y)[0], 127.5, isCorner ? 3 : 0.5);
            EXPECT_EQ(half.at(x, y)[3], 255);
        }
    }
}

TEST(ResampleTest, FineStripesDoNotFlickerAtAnyReduction)
{
    Picture stripes({240, 4});
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 240; ++x)
            stripes.at(x, y) = x % 2 == 0 ? Pixel{255, 255, 255, 255} : Pixel{0, 0, 0, 255};
    }

    for (const int width : {100, 80, 60, 33}) {
        Picture result = stripes.resampled({width, 4});
        for (int x = 3; x < width - 3; ++x)
            EXPECT_NEAR(result.at(x, 2)[0], 127.5, 12) << width << " " << x;
    }
}

TEST(ResampleTest, AStretchToAnotherAspectMovesEdgesInProportion)
{
    Picture halves({64, 64});
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            halves.at(x, y) = x < 32 ? Pixel{255, 0, 0, 255} : Pixel{0, 0, 255, 255};
    }

    Picture wide = halves.resampled({256, 36});

    for (int y = 0; y < 36; ++y) {
        EXPECT_EQ(wide.at(0, y), (Pixel{255, 0, 0, 255}));
        EXPECT_EQ(wide.at(255, y), (Pixel{0, 0, 255, 255}));
        EXPECT_GT(wide.at(126, y)[0], wide.at(126, y)[2]);
        EXPECT_LT(wide.at(129, y)[0], wide.at(129, y)[2]);
    }
}

TEST(ResampleTest, ASymmetricPictureStaysSymmetric)
{
    Picture dot({9, 9});
    dot.at(4, 4) = {255, 255, 255, 255};

    for (const QSize size : {QSize(5, 5), QSize(18, 18), QSize(27, 13)}) {
        Picture result = dot.resampled(size);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const Pixel mirrored = result.at(size.width() - 1 - x, size.height() - 1 - y);
                EXPECT_LE(std::abs(result.at(x, y)[3] - mirrored[3]), 1);
            }
        }
    }
}

TEST(ResampleTest, EnlargingPassesThroughTheSourcesOwnPixels)
{
    Picture ramp({8, 1});
    for (int x = 0; x < 8; ++x)
        ramp.at(x, 0) = {quint8(x * 30), 0, 0, 255};

    Picture larger = ramp.resampled({24, 1});

    for (int x = 2; x < 6; ++x)
        EXPECT_EQ(larger.at(3 * x + 1, 0), ramp.at(x, 0));
}

} // namespace
} // namespace tessara
