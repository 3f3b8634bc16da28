#include "Core/AppStateFixture.h"
#include "Core/OutputPhase.h"

#include <numeric>

namespace tessara {
namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds interval = 20ms;

TEST(OutputPhase, StaysWhereNoCallWaits)
{
    OutputPhase phase(interval);
    for (int beat = 0; beat < 1000; ++beat)
        EXPECT_EQ(phase.delayAfter(beat % 2 == 0 ? 0ns : Nanoseconds{900us}), 0ns);
}

TEST(OutputPhase, AWaitThatEndsByItselfMovesNothing)
{
    OutputPhase phase(interval);
    for (int beat = 0; beat < 1000; ++beat)
        EXPECT_EQ(phase.delayAfter(beat % 3 == 2 ? 0ns : 15ms), 0ns);
}

TEST(OutputPhase, MovesInSmallStepsUntilCallsFindRoom)
{
    OutputPhase phase(interval);
    Nanoseconds wait = 10ms;
    Nanoseconds greatest{0};
    int beats = 0;
    for (; wait > 0ns && beats < 100; ++beats) {
        const Nanoseconds delay = phase.delayAfter(wait);
        greatest = std::max(greatest, delay);
        wait -= delay;
    }

    wait -= phase.delayAfter(0ns); // the first that finds room

    EXPECT_LT(beats, 10);     // while they last, the main thread has little time left
    EXPECT_LE(greatest, 2ms); // far from what shows as a late frame
    EXPECT_LE(wait, -1ms);    // past the edge, not on it
    for (int beat = 0; beat < 1000; ++beat)
        EXPECT_EQ(phase.delayAfter(0ns), 0ns);
}

TEST(OutputPhase, GivesUpOnACardThatHoldsEveryCall)
{
    OutputPhase phase(interval);
    Nanoseconds moved{0};
    for (int beat = 0; beat < 10'000; ++beat)
        moved += phase.delayAfter(12ms);

    EXPECT_EQ(moved, 2 * interval); // two frames once, and the full rate from then on
}

TEST(OutputPhase, GivesUpOnACardThatHoldsEveryCallUntilItsNextFrame)
{
    for (Nanoseconds start = 0ms; start < interval; start += 500us) {
        OutputPhase phase(interval);
        Nanoseconds moved{0};
        for (int beat = 0; beat < 10'000; ++beat) {
            const Nanoseconds place = (start + moved) % interval; // behind the card's frame
            moved += phase.delayAfter(interval - place);
        }

        // The wait ends at the frame, and begins anew behind it.
        EXPECT_LE(moved, 2 * interval + 2ms) << start.count();
    }
}

TEST(OutputPhase, FollowsACardWhoseClockIsSlow)
{
    OutputPhase phase(interval);
    Nanoseconds place = 5ms; // of the beat behind the card's frame
    Nanoseconds longest{0};
    constexpr Nanoseconds lag = 1us; // a frame: 50 millionths
    for (int beat = 0; beat < 1'000'000; ++beat) {
        place -= lag;
        const Nanoseconds waited = std::max(-place, 0ns);
        longest = std::max(longest, waited);
        place += phase.delayAfter(waited);
    }

    EXPECT_LT(longest, 1100us);
}

/// A card that keeps its frames' time on the clock of the show.
class PacedOutputTest : public AppStateTest
{
protected:
    PacedOutputTest()
    {
        document().setSize({16, 9});
        limitModes(first, {"1080p50"});
        limitModes(second, {"1080p50"});
        fill().refreshModes();
        key().refreshModes();
        card.setFreeRunning(false);
        card.setClock(&clock);
    }

    void play(Seconds duration) { clock.advance(duration); }
    /// Display calls that were held, on both devices.
    qint64 waits() const { return card.frames(first)->waited + card.frames(second)->waited; }

    void expectRoomAfterSomeWaits()
    {
        const qint64 before = waits();
        EXPECT_GT(before, 0);
        play(Seconds{10});
        EXPECT_EQ(waits(), before);
        EXPECT_EQ(app.outputLoop()->missedTicks(), 0u);
    }
};

TEST_F(PacedOutputTest, ABeatAtTheModesRateNeverWaits)
{
    start();

    play(Seconds{20});

    EXPECT_EQ(waits(), 0);
    EXPECT_EQ(sent(first), 1 + 1000);
}

TEST_F(PacedOutputTest, AfterALateBeatTheCardStopsHoldingTheMainThread)
{
    start();
    play(Seconds{1});

    clock.stall(Seconds{0.036}); // a beat is 16 ms late: the card has gone on without it
    play(Seconds{1});

    expectRoomAfterSomeWaits();
}

TEST_F(PacedOutputTest, NoFrameIsLateForIt)
{
    start();
    play(Seconds{1});
    clock.stall(Seconds{0.036});
    play(Seconds{2});

    const VirtualCardFrames frames = *card.frames(first);
    EXPECT_LT(frames.sent, 200);            // so few that only the longest interval is above p99
    EXPECT_GT(frames.intervals.max, 0.024); // the one that the machine made late
    EXPECT_LE(frames.intervals.p99, 0.024);
}

TEST_F(PacedOutputTest, FillAndKeyAreLetGoTogether)
{
    route(DeckLinkOutputRouting::keyAndFill);
    start();
    play(Seconds{1});
    clock.stall(Seconds{0.036});
    play(Seconds{1});

    expectRoomAfterSomeWaits();
}

TEST_F(PacedOutputTest, NoHitchOfLessThanAFrameHoldsItForLong)
{
    start();
    for (int hitch = 0; hitch < 20; ++hitch) {
        play(Seconds{2.015 + 0.001 * hitch});
        clock.stall(Seconds{0.0195});
    }
    play(Seconds{1});

    expectRoomAfterSomeWaits();
}

} // namespace
} // namespace tessara
