#include "Base/ManualClock.h"
#include "Base/RepeatingTimer.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessara {
namespace {

using namespace std::chrono_literals;

class RepeatingTimerTest : public testing::Test
{
protected:
    ManualClock clock;
    std::vector<Nanoseconds> beats;
    std::function<void()> note = [this] { beats.push_back(clock.now()); };
};

TEST_F(RepeatingTimerTest, HoldsAnNtscRateOverTenMinutesToTheNanosecond)
{
    const RepeatingTimer timer(clock, Seconds{1001.0 / 30000.0}, note);

    clock.advance(1001s);

    ASSERT_EQ(beats.size(), 30000u);
    EXPECT_EQ(beats.front(), 33366667ns);
    EXPECT_EQ(beats.back(), Nanoseconds{1001s});
}

TEST_F(RepeatingTimerTest, LateBeatsAreCountedAndNotMadeUpFor)
{
    const RepeatingTimer timer(clock, Seconds{0.02}, note);
    clock.advance(20ms);

    clock.stall(Seconds{0.07});
    clock.advance(0ns);
    clock.advance(10ms);

    EXPECT_EQ(beats, (std::vector<Nanoseconds>{20ms, 90ms, 100ms}));
    EXPECT_EQ(timer.missedBeats(), 2u);
}

TEST_F(RepeatingTimerTest, WhatIsPutOffIsNotMissed)
{
    RepeatingTimer timer(clock, Seconds{0.02}, note);
    clock.advance(20ms);

    timer.putOff(5ms);
    clock.advance(50ms);

    EXPECT_EQ(beats, (std::vector<Nanoseconds>{20ms, 45ms, 65ms}));
    EXPECT_EQ(timer.missedBeats(), 0u);
}

TEST_F(RepeatingTimerTest, ABeatMayPutOffTheNext)
{
    RepeatingTimer *timer = nullptr;
    RepeatingTimer made(clock, Seconds{0.02}, [&] {
        note();
        timer->putOff(1ms);
    });
    timer = &made;

    clock.advance(63ms);

    EXPECT_EQ(beats, (std::vector<Nanoseconds>{20ms, 41ms, 62ms}));
}

TEST_F(RepeatingTimerTest, ABeatMayDropItsOwnTimer)
{
    std::unique_ptr<RepeatingTimer> timer;
    timer = std::make_unique<RepeatingTimer>(clock, Seconds{0.02}, [&] {
        note();
        timer.reset();
    });

    clock.advance(1s);

    EXPECT_EQ(beats.size(), 1u);
}

} // namespace
} // namespace tessara
