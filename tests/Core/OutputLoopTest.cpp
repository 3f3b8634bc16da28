#include "Base/ManualClock.h"
#include "Core/OutputLoop.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tessara {
namespace {

using namespace std::chrono_literals;

/// Frames that take their time, on the clock of the show.
class OutputLoopTest : public testing::Test
{
protected:
    void send()
    {
        clock.stall(work);
        sent.push_back(clock.now());
    }

    ManualClock clock;
    Seconds work{0};
    std::vector<Nanoseconds> sent;
    std::unique_ptr<OutputLoop> loop = std::make_unique<OutputLoop>(clock, 50, [this] { send(); });
};

TEST_F(OutputLoopTest, FramesLeaveOnTheBeat)
{
    clock.advance(60ms);

    EXPECT_EQ(sent, (std::vector<Nanoseconds>{20ms, 40ms, 60ms}));
}

TEST_F(OutputLoopTest, AFrameIsBegunAtItsBeatHoweverLongTheLastOneTook)
{
    work = 5ms;
    clock.advance(50ms);
    work = 12ms;
    clock.advance(50ms);

    EXPECT_EQ(sent, (std::vector<Nanoseconds>{25ms, 45ms, 72ms, 92ms, 112ms}));
    EXPECT_EQ(loop->missedTicks(), 0u);
}

TEST_F(OutputLoopTest, ABeatThatFindsTheThreadBusyIsCountedAndNotMadeUpFor)
{
    work = 50ms; // until 70 ms: the beats of 40 and 60 ms share one frame
    clock.advance(20ms);
    work = 0ms;
    clock.advance(40ms);

    EXPECT_EQ(sent, (std::vector<Nanoseconds>{70ms, 70ms, 80ms, 100ms}));
    EXPECT_EQ(loop->missedTicks(), 1u);
}

TEST_F(OutputLoopTest, WhatIsDueWithTheBeatComesBeforeTheFrame)
{
    std::vector<QString> order;
    loop = std::make_unique<OutputLoop>(clock, 50, [&] { order.push_back("frame"); });
    const Alarm step = clock.at(20ms, [&] { order.push_back("step of a take"); });

    clock.advance(20ms);

    EXPECT_EQ(order, (std::vector<QString>{"step of a take", "frame"}));
}

TEST_F(OutputLoopTest, AFrameMayEndItsLoop)
{
    loop = std::make_unique<OutputLoop>(clock, 50, [this] {
        send();
        loop.reset();
    });

    clock.advance(1s);

    EXPECT_EQ(sent.size(), 1u);
}

TEST_F(OutputLoopTest, AnEndedLoopSendsNothingMore)
{
    clock.advance(40ms);
    loop.reset();
    clock.advance(1s);

    EXPECT_EQ(sent.size(), 2u);
}

TEST_F(OutputLoopTest, ARateBelowOneIsOneFrameASecond)
{
    loop = std::make_unique<OutputLoop>(clock, 0, [this] { send(); });

    clock.advance(3s);

    EXPECT_EQ(sent, (std::vector<Nanoseconds>{1s, 2s, 3s}));
}

} // namespace
} // namespace tessara
