#include "virtual-card/Cadence.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tessara::virtualcard {
namespace {

constexpr Cadence::Time millisecond = 1'000'000;
constexpr Cadence::Time period = 20 * millisecond; // 50 frames a second
constexpr Cadence::Time start = 12345 * millisecond;

class CadenceTest : public testing::Test
{
protected:
    /// Offers a frame and gives it as soon as it can be taken; the answer is how long that took.
    Cadence::Time offer(Cadence::Time now)
    {
        const Cadence::Time turn = cadence.turn(now);
        cadence.take(turn);
        return turn - now;
    }

    Cadence cadence{1000, 50000};
};

TEST_F(CadenceTest, TheFirstFrameIsTakenAtOnce)
{
    EXPECT_EQ(offer(start), 0);
}

TEST_F(CadenceTest, ACallerAtTheModesRateNeverWaits)
{
    std::uint32_t seed = 7;
    EXPECT_EQ(offer(start), 0);
    for (int frame = 1; frame < 100'000; ++frame) {
        seed = seed * 1664525 + 1013904223;
        const auto jitter = Cadence::Time(seed % 19'900'000) - 9'950'000; // just under half a frame
        ASSERT_EQ(offer(start + frame * period + jitter), 0) << frame;
    }
}

TEST_F(CadenceTest, AHastyCallerIsHeldToTheModesRate)
{
    Cadence::Time now = start;
    for (int frame = 0; frame < 100; ++frame)
        now += offer(now);

    // Two frames go in during the first half period; each of the others waits for one to go out.
    EXPECT_EQ(now, start + period / 2 + 98 * period);
}

TEST_F(CadenceTest, ALateCallerGoesOnAtTheNextStep)
{
    EXPECT_EQ(offer(start), 0);

    const Cadence::Time late = start + 10 * period + period / 4;
    EXPECT_EQ(offer(late), 0);
    EXPECT_EQ(offer(late), period / 4);
}

TEST_F(CadenceTest, FractionalRatesNeverDrift)
{
    Cadence fractional(1001, 60000);
    fractional.take(start);
    Cadence::Time now = start;
    constexpr std::int64_t frames = 60000;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        now = fractional.turn(now);
        fractional.take(now);
    }

    const Cadence::Time halfPeriod = 1'001'000'000'000 / 60000 / 2;
    EXPECT_EQ(now, start + halfPeriod + (frames - 1) * 1'001'000'000'000 / 60000);
}

TEST_F(CadenceTest, ALongShowStaysExact)
{
    EXPECT_EQ(offer(start), 0);
    constexpr Cadence::Time week = Cadence::Time(7) * 24 * 3600 * 1000 * millisecond;

    EXPECT_EQ(offer(start + week), 0);
    EXPECT_EQ(offer(start + week), period / 2);
}

} // namespace
} // namespace tessara::virtualcard
