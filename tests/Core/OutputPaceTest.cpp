#include "Core/AppStateFixture.h"
#include "Core/OutputPace.h"

namespace tessara {
namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds interval = 20ms;

TEST(OutputPace, WhatTakesNoTimeIsShownAtOnce)
{
    OutputPace pace(interval);

    EXPECT_EQ(pace.delayFor(0ns), 0ns);
}

TEST(OutputPace, QuickFramesLeaveAsLateAsTheSlowest)
{
    OutputPace pace(interval);
    pace.delayFor(6ms);

    for (int beat = 0; beat < 500; ++beat) // ten seconds of a still picture
        EXPECT_NEAR(double(pace.delayFor(0ns).count()), 6e6, 1e6);
}

TEST(OutputPace, ForgetsInMinutes)
{
    OutputPace pace(interval);
    pace.delayFor(8ms);
    for (int beat = 0; beat < 10 * 60 * 50; ++beat)
        pace.delayFor(1ms);

    EXPECT_LT(pace.delayFor(1ms), 2ms);
}

TEST(OutputPace, NoFrameWaitsForAnException)
{
    OutputPace pace(interval);
    pace.delayFor(2ms);

    EXPECT_LT(pace.delayFor(15ms), 3ms);
    EXPECT_LT(pace.delayFor(1ms), 3ms);
}

/// Frames that take their time, on the clock of the show.
class OutputLoopTest : public testing::Test
{
protected:
    ManualClock clock;
    Nanoseconds composing = 0ms;
    bool hasFrames = true;
    std::vector<Nanoseconds> shown;
    std::unique_ptr<OutputLoop> loop =
        std::make_unique<OutputLoop>(clock, 50,
                                     OutputLoop::Frames{[this] {
                                                            clock.stall(composing);
                                                            return hasFrames;
                                                        },
                                                        [this] { shown.push_back(clock.now()); }});
};

TEST_F(OutputLoopTest, FramesThatTakeNoTimeLeaveOnTheBeat)
{
    clock.advance(60ms);

    EXPECT_EQ(shown, (std::vector<Nanoseconds>{20ms, 40ms, 60ms}));
}

TEST_F(OutputLoopTest, AfterADissolveStillPicturesKeepItsPace)
{
    composing = 5ms;
    clock.advance(50ms);
    composing = 0ms;
    clock.advance(60ms);

    ASSERT_EQ(shown.size(), 5u);
    for (std::size_t frame = 1; frame < shown.size(); ++frame)
        EXPECT_NEAR(double((shown[frame] - shown[frame - 1]).count()), 20e6, 1e4);
}

TEST_F(OutputLoopTest, WithoutAFrameNothingIsShown)
{
    hasFrames = false;
    clock.advance(1s);

    EXPECT_TRUE(shown.empty());
}

TEST_F(OutputLoopTest, AnEndedLoopShowsNothingMore)
{
    composing = 5ms;
    clock.advance(30ms);
    composing = 0ms;
    clock.advance(12ms); // composed, and waiting for its moment
    ASSERT_EQ(shown.size(), 1u);

    loop.reset();
    clock.advance(1s);

    EXPECT_EQ(shown.size(), 1u);
}

} // namespace
} // namespace tessara
