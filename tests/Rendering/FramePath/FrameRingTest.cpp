#include "Rendering/FramePath/FrameRing.h"

#include <gtest/gtest.h>

#include <set>

namespace tessara {
namespace {

class FrameRingTest : public testing::Test
{
protected:
    FrameRingTest() { ring.setUp({1920, 1080}, 1920 * 1080 * 4); }

    /// Takes a frame, whose pixels then are as they should be, and holds it as a card does.
    const FrameRing::Slot *hold()
    {
        FrameRing::Slot *slot = ring.next();
        slot->stale.clear();
        held.push_back(slot->bytes);
        return slot;
    }
    FrameRing ring;
    std::vector<FrameBytes> held;
};

TEST_F(FrameRingTest, HandsOutNoFrameThatIsHeld)
{
    std::set<const quint8 *> frames;
    for (int frame = 0; frame < 5; ++frame)
        frames.insert(hold()->bytes.data());

    EXPECT_EQ(frames.size(), 5u);
}

TEST_F(FrameRingTest, PrefersTheFrameThatWasTakenLast)
{
    hold();
    const FrameRing::Slot *last = hold();
    held.clear();

    EXPECT_EQ(ring.next(), last);
    EXPECT_EQ(ring.current(), last);
}

TEST_F(FrameRingTest, WhatHasChangedIsStaleInEveryFrame)
{
    hold();
    hold();
    held.clear();
    TileDamage damage({1920, 1080});
    damage.add(QRect(100, 100, 10, 10));
    ring.add(damage);

    for (int frame = 0; frame < 2; ++frame) {
        FrameRing::Slot *slot = ring.next();
        EXPECT_EQ(slot->stale.tiles(), damage.tiles());
        held.push_back(slot->bytes);
    }
}

TEST_F(FrameRingTest, ThreeFramesAreMadeAheadOfTime)
{
    ring.next();
    EXPECT_EQ(ring.count(), 1u);
    ring.makeAhead();
    EXPECT_EQ(ring.count(), 3u);

    for (int frame = 0; frame < 3; ++frame)
        hold();
    EXPECT_EQ(ring.count(), 3u);
    ring.makeAhead();
    EXPECT_EQ(ring.count(), 3u);
}

TEST_F(FrameRingTest, AFrameMadeForAHitchIsDroppedAfterAWhile)
{
    for (int frame = 0; frame < 5; ++frame)
        hold();
    held.clear();
    EXPECT_EQ(ring.count(), 5u);

    for (int frame = 0; frame < 400; ++frame)
        ring.next();

    EXPECT_EQ(ring.count(), 3u);
}

TEST_F(FrameRingTest, AFrameThatIsHeldForLongIsNotDropped)
{
    for (int frame = 0; frame < 5; ++frame)
        hold();
    held.resize(4);

    for (int frame = 0; frame < 400; ++frame)
        ring.next();

    EXPECT_EQ(ring.count(), 5u);
}

} // namespace
} // namespace tessara
