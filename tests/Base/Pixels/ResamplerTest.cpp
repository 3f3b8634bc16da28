#include "Base/Pixels/Resample.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <thread>
#include <vector>

namespace tessara {
namespace {

/// Rows with some bytes between them that belong to nobody.
class Picture
{
public:
    static constexpr quint8 nobodys = 0xa5;

    explicit Picture(QSize size, qsizetype gap = 0)
        : m_size(size)
        , m_rowBytes(qsizetype(size.width()) * 4 + gap)
        , m_bytes(std::size_t(m_rowBytes * size.height() - gap), nobodys)
    {
    }

    QSize size() const { return m_size; }
    quint8 *pixel(int x, int y) { return m_bytes.data() + y * m_rowBytes + qsizetype(x) * 4; }
    const quint8 *pixel(int x, int y) const
    {
        return m_bytes.data() + y * m_rowBytes + qsizetype(x) * 4;
    }
    const std::vector<quint8> &bytes() const { return m_bytes; }
    SourceRows source() const { return {m_bytes.data(), m_rowBytes}; }
    TargetRows target() { return {m_bytes.data(), m_rowBytes}; }

private:
    QSize m_size;
    qsizetype m_rowBytes;
    std::vector<quint8> m_bytes; // the last row has no gap: what is read beyond it can be noticed
};

/// Premultiplied noise; `contrast` leaves only its darkest and brightest values.
Picture noise(QSize size, bool contrast = false, unsigned seed = 1)
{
    std::mt19937 random(seed);
    Picture picture(size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            quint8 *pixel = picture.pixel(x, y);
            pixel[3] = contrast ? quint8(random() % 2 * 255) : quint8(random());
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] =
                    contrast ? quint8(random() % 2 * pixel[3]) : quint8(random() % (pixel[3] + 1u));
        }
    }
    return picture;
}

Picture resampled(const Picture &source, QSize size)
{
    Picture target(size);
    resample(source.source(), source.size(), target.target(), size);
    return target;
}

double cubic(double x)
{
    x = std::abs(x);
    if (x < 1)
        return 1.5 * x * x * x - 2.5 * x * x + 1;
    return x < 2 ? -0.5 * x * x * x + 2.5 * x * x - 4 * x + 2 : 0;
}

/// One direction of the model: the same weights, without any rounding.
std::vector<double> modelled(const std::vector<double> &values, int lines, int from, int to)
{
    std::vector<double> result;
    const double stretch = std::max(double(from) / to, 1.0);
    for (int line = 0; line < lines; ++line) {
        for (int target = 0; target < to; ++target) {
            const double centre = (target + 0.5) * from / to - 0.5;
            double sum = 0;
            double weights = 0;
            for (int source = 0; source < from; ++source) {
                const double weight = cubic((source - centre) / stretch);
                sum += weight * values[std::size_t(line * from + source)];
                weights += weight;
            }
            result.push_back(sum / weights);
        }
    }
    return result;
}

std::vector<double> transposed(const std::vector<double> &values, int width, int height)
{
    std::vector<double> result;
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y)
            result.push_back(values[std::size_t(y * width + x)]);
    }
    return result;
}

std::vector<double> modelledChannel(const Picture &source, int channel, QSize to)
{
    const QSize from = source.size();
    std::vector<double> values;
    for (int y = 0; y < from.height(); ++y) {
        for (int x = 0; x < from.width(); ++x)
            values.push_back(source.pixel(x, y)[channel]);
    }
    values = modelled(values, from.height(), from.width(), to.width());
    values = transposed(values, to.width(), from.height());
    values = modelled(values, to.width(), from.height(), to.height());
    values = transposed(values, to.height(), to.width());
    for (double &value : values)
        value = std::round(std::clamp(value, 0.0, 255.0));
    return values;
}

/// How far the result is from the model, at most.
double distanceFromModel(const Picture &source, QSize to)
{
    const Picture result = resampled(source, to);
    const std::vector<double> alphas = modelledChannel(source, 3, to);
    double distance = 0;
    for (int channel = 0; channel < 4; ++channel) {
        const std::vector<double> values = modelledChannel(source, channel, to);
        for (std::size_t index = 0; index < values.size(); ++index) {
            const int x = int(index) % to.width();
            const int y = int(index) / to.width();
            const double expected = std::min(values[index], alphas[index]);
            distance = std::max(distance, std::abs(result.pixel(x, y)[channel] - expected));
        }
    }
    return distance;
}

struct Stretch
{
    QSize from;
    QSize to;
};

const Stretch stretches[] = {
    {{64, 36}, {32, 18}}, {{96, 54}, {32, 18}},   {{48, 27}, {32, 18}},  {{32, 18}, {64, 36}},
    {{32, 18}, {48, 27}}, {{61, 47}, {30, 23}},   {{61, 47}, {67, 43}},  {{33, 17}, {33, 40}},
    {{33, 17}, {70, 17}}, {{1, 1}, {9, 5}},       {{2, 3}, {37, 50}},    {{37, 50}, {2, 3}},
    {{300, 9}, {7, 31}},  {{9, 300}, {31, 7}},    {{640, 3}, {1, 3}},    {{3, 640}, {3, 1}},
    {{65, 65}, {64, 64}}, {{5, 4}, {19, 3}},      {{40, 31}, {13, 129}}, {{16, 16}, {8, 8}},
    {{17, 16}, {8, 8}},   {{120, 90}, {100, 60}}, {{15, 15}, {15, 7}},   {{7, 15}, {3, 15}},
};

/// Runs the test on each generation of vector units that this machine has.
class ResamplerTest : public testing::Test
{
protected:
    void onEveryTarget(const std::function<void()> &test)
    {
        std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
        // What runs where there is none of the others.
        if (std::ranges::find(targets, std::int64_t(HWY_STATIC_TARGET)) == targets.end())
            targets.push_back(HWY_STATIC_TARGET);
        for (const std::int64_t target : targets) {
            SCOPED_TRACE(hwy::TargetName(target));
            hwy::SetSupportedTargetsForTest(target);
            test();
            hwy::SetSupportedTargetsForTest(0);
        }
    }
};

TEST_F(ResamplerTest, NoValueIsFurtherThanOneFromTheExactOne)
{
    onEveryTarget([] {
        for (const auto &[from, to] : stretches) {
            for (const bool contrast : {false, true})
                EXPECT_LE(distanceFromModel(noise(from, contrast), to), 1)
                    << from.width() << "x" << from.height() << " to " << to.width() << "x"
                    << to.height();
        }
    });
}

TEST_F(ResamplerTest, EveryMachineMakesTheSameBytes)
{
    for (const auto &[from, to] : stretches) {
        const Picture source = noise(from);
        const Picture result = resampled(source, to);
        onEveryTarget([&] { EXPECT_EQ(resampled(source, to).bytes(), result.bytes()); });
    }
}

TEST_F(ResamplerTest, AFlatColourStaysExactOnEveryMachine)
{
    onEveryTarget([] {
        for (const auto &[from, to] : stretches) {
            for (const int alpha : {1, 2, 63, 128, 254, 255}) {
                Picture flat(from);
                Picture expected(to);
                for (Picture *picture : {&flat, &expected}) {
                    for (int y = 0; y < picture->size().height(); ++y) {
                        for (int x = 0; x < picture->size().width(); ++x)
                            std::fill_n(picture->pixel(x, y), 4, quint8(alpha));
                    }
                }
                EXPECT_EQ(resampled(flat, to).bytes(), expected.bytes());
            }
        }
    });
}

TEST_F(ResamplerTest, NoColourEndsAboveItsAlphaOnAnyMachine)
{
    onEveryTarget([] {
        for (const auto &[from, to] : stretches) {
            const Picture result = resampled(noise(from, true), to);
            for (std::size_t index = 0; index < result.bytes().size(); ++index)
                ASSERT_LE(result.bytes()[index], result.bytes()[index | 3]);
        }
    });
}

TEST_F(ResamplerTest, RowsAreTheSameInHoweverManyCalls)
{
    onEveryTarget([] {
        for (const auto &[from, to] : stretches) {
            const Picture source = noise(from);
            const Picture whole = resampled(source, to);
            const Resampler resampler(from, to);
            Resampler::Scratch scratch(resampler);
            for (int step = 1; step <= std::min(to.height(), 7); ++step) {
                Picture inParts(to);
                for (int y = 0; y < to.height(); y += step)
                    resampler.rows(source.source(), inParts.target(), y,
                                   std::min(y + step, to.height()), scratch);
                EXPECT_EQ(inParts.bytes(), whole.bytes());
            }
        }
    });
}

TEST_F(ResamplerTest, TwoThreadsMakeHalfAPictureEach)
{
    const Picture source = noise({192, 108});
    const QSize size(128, 71);
    const Resampler resampler(source.size(), size);
    Picture result(size);
    const auto make = [&](int firstRow, int lastRow) {
        Resampler::Scratch scratch(resampler);
        resampler.rows(source.source(), result.target(), firstRow, lastRow, scratch);
    };

    std::thread upper(make, 0, 35);
    make(35, 71);
    upper.join();

    EXPECT_EQ(result.bytes(), resampled(source, size).bytes());
}

TEST_F(ResamplerTest, NothingButTheGivenRowsIsWritten)
{
    onEveryTarget([] {
        for (const auto &[from, to] : stretches) {
            const Picture source = noise(from);
            const Resampler resampler(from, to);
            Resampler::Scratch scratch(resampler);
            Picture target(to, 12);
            const int firstRow = to.height() / 3;
            const int lastRow = (to.height() + 1) / 2;

            resampler.rows(source.source(), target.target(), firstRow, lastRow, scratch);

            const quint8 *begin = target.pixel(0, 0);
            const quint8 *end = begin + target.bytes().size();
            for (const quint8 *byte = begin; byte < end; ++byte) {
                const qsizetype rowBytes = target.target().rowBytes;
                const qsizetype row = (byte - begin) / rowBytes;
                const bool inGap = (byte - begin) % rowBytes >= rowBytes - 12;
                if (row < firstRow || row >= lastRow || inGap) {
                    ASSERT_EQ(*byte, Picture::nobodys);
                }
            }
        }
    });
}

TEST_F(ResamplerTest, TheSameSizeIsACopyOfTheGivenRows)
{
    const Picture source = noise({37, 11});
    const Resampler resampler(source.size(), source.size());
    Resampler::Scratch scratch(resampler);
    Picture target(source.size());

    resampler.rows(source.source(), target.target(), 3, 11, scratch);

    EXPECT_TRUE(std::equal(source.pixel(0, 3), source.pixel(36, 10) + 4, target.pixel(0, 3)));
    EXPECT_TRUE(std::all_of(target.pixel(0, 0), target.pixel(0, 3),
                            [](quint8 byte) { return byte == Picture::nobodys; }));
    EXPECT_EQ(resampler.sourceRowsOf(5), (RowRange{5, 6}));
}

TEST_F(ResamplerTest, ATargetRowChangesWithItsOwnSourceRowsOnly)
{
    for (const auto &[from, to] : stretches) {
        const Picture source = noise(from);
        const Picture before = resampled(source, to);
        const Resampler resampler(from, to);
        for (int row = 0; row < from.height(); ++row) {
            Picture changed = source;
            std::ranges::for_each(changed.pixel(0, row), changed.pixel(0, row) + from.width() * 4,
                                  [](quint8 &byte) { byte = quint8(~byte); });
            const Picture after = resampled(changed, to);
            for (int y = 0; y < to.height(); ++y) {
                const auto [first, last] = resampler.sourceRowsOf(y);
                if (row < first || row >= last) {
                    ASSERT_TRUE(std::equal(before.pixel(0, y), before.pixel(0, y) + to.width() * 4,
                                           after.pixel(0, y)));
                }
            }
        }
    }
}

TEST_F(ResamplerTest, SourceRowsNeverFallAndReachTheLast)
{
    for (const auto &[from, to] : stretches) {
        const Resampler resampler(from, to);
        RowRange before;
        for (int y = 0; y < to.height(); ++y) {
            const RowRange rows = resampler.sourceRowsOf(y);
            EXPECT_LT(rows.first, rows.last);
            EXPECT_GE(rows.first, before.first);
            EXPECT_GE(rows.last, before.last);
            before = rows;
        }
        EXPECT_EQ(resampler.sourceRowsOf(0).first, 0);
        EXPECT_EQ(before.last, from.height());
    }
}

TEST_F(ResamplerTest, HalfTheHeightIsMadeOfEightRowsEach)
{
    const Resampler resampler({3840, 2160}, {1920, 1080});

    EXPECT_EQ(resampler.sourceRowsOf(0), (RowRange{0, 5}));
    EXPECT_EQ(resampler.sourceRowsOf(540), (RowRange{1077, 1085}));
    EXPECT_EQ(resampler.sourceRowsOf(1079), (RowRange{2155, 2160}));
}

} // namespace
} // namespace tessara
