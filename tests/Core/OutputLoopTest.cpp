#include "Core/AppStateFixture.h"
#include "Core/OutputLoop.h"

namespace tessara {
namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds interval = 20ms;

TEST(OutputLead, WhatIsReadyOnTheBeatIsBegunThere)
{
    OutputLead lead(interval);
    lead.noteReady(0ns);

    EXPECT_EQ(lead.value(), 0ns);
}

TEST(OutputLead, LeavesTwiceTheTimeOfTheSlowest)
{
    OutputLead lead(interval);
    lead.noteReady(4ms);
    EXPECT_EQ(lead.value(), 8ms);

    for (int beat = 0; beat < 500; ++beat) // ten seconds of a still picture
        lead.noteReady(0ns);
    EXPECT_NEAR(double(lead.value().count()), 8e6, 1e6);
}

TEST(OutputLead, IsNeverAWholeInterval)
{
    OutputLead lead(interval);
    lead.noteReady(12ms);

    EXPECT_EQ(lead.value(), 17ms);
}

TEST(OutputLead, ForgetsInMinutes)
{
    OutputLead lead(interval);
    lead.noteReady(6ms);
    for (int beat = 0; beat < 10 * 60 * 50; ++beat)
        lead.noteReady(500us);

    EXPECT_LT(lead.value(), 2ms);
}

TEST(OutputLead, NoFrameIsBegunEarlierForAnException)
{
    OutputLead lead(interval);
    lead.noteReady(2ms);
    lead.noteReady(18ms);

    EXPECT_EQ(lead.value(), 4ms);
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

TEST_F(OutputLoopTest, OnlyTheFirstSlowFrameIsLate)
{
    composing = 5ms;
    clock.advance(100ms);

    EXPECT_EQ(shown, (std::vector<Nanoseconds>{25ms, 40ms, 60ms, 80ms, 100ms}));
    EXPECT_EQ(loop->missedTicks(), 0u);
}

TEST_F(OutputLoopTest, QuickFramesAndSlowerOnesLeaveAtTheSameTimes)
{
    composing = 5ms;
    clock.advance(30ms);
    shown.clear();

    for (int frame = 0; frame < 100; ++frame) {
        composing = frame % 10 * 1ms;
        clock.advance(20ms);
    }

    ASSERT_EQ(shown.size(), 100u);
    for (std::size_t frame = 0; frame < shown.size(); ++frame)
        EXPECT_EQ(shown[frame], (frame + 2) * interval);
}

TEST_F(OutputLoopTest, AFrameThatIsTooSlowMovesNoOther)
{
    composing = 5ms;
    clock.advance(35ms);
    composing = 18ms; // begun at 50 ms for 60 ms
    clock.advance(20ms);
    composing = 5ms;
    clock.advance(70ms);

    EXPECT_EQ(shown, (std::vector<Nanoseconds>{25ms, 40ms, 68ms, 80ms, 100ms, 120ms}));
    EXPECT_EQ(loop->missedTicks(), 0u);
}

TEST_F(OutputLoopTest, ABeatThatThereIsNoTimeLeftForIsTakenAtOnce)
{
    composing = 12ms; // until 32 ms, when the next should have been begun at 23 ms
    clock.advance(35ms);
    composing = 1ms;
    clock.advance(50ms);

    EXPECT_EQ(shown, (std::vector<Nanoseconds>{32ms, 44ms, 60ms, 80ms}));
    EXPECT_EQ(loop->missedTicks(), 0u);
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
    clock.advance(35ms); // the second is composed, and waits for its moment
    ASSERT_EQ(shown.size(), 1u);

    loop.reset();
    clock.advance(1s);

    EXPECT_EQ(shown.size(), 1u);
}

} // namespace
} // namespace tessara
