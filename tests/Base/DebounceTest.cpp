#include "Base/Debounce.h"
#include "Base/ManualClock.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessara {
namespace {

class DebounceTest : public testing::Test
{
protected:
    void settle() { clock.advance(Seconds{0.5}); }

    ManualClock clock;
    std::vector<int> delivered;
    Debounce<int> watched{clock, Seconds{0.3}, 1,
                          [this](int value) { delivered.push_back(value); }};
};

TEST_F(DebounceTest, TheValueAtTheStartIsNoChange)
{
    settle();

    EXPECT_TRUE(delivered.empty());
}

TEST_F(DebounceTest, ABurstDeliversItsLastValueAfterTheQuietTime)
{
    settle();
    for (int value = 2; value <= 6; ++value) {
        watched.push(value);
        clock.advance(Seconds{0.1});
    }
    EXPECT_TRUE(delivered.empty());

    clock.advance(Seconds{0.2});

    EXPECT_EQ(delivered, (std::vector{6}));
}

TEST_F(DebounceTest, AChangeWithinTheFirstQuietTimeIsDroppedWithTheStart)
{
    clock.advance(Seconds{0.1});
    watched.push(2);
    settle();
    EXPECT_TRUE(delivered.empty());

    watched.push(3);
    settle();

    EXPECT_EQ(delivered, (std::vector{3}));
}

TEST_F(DebounceTest, AnEqualNeighbourNeitherCountsNorDelays)
{
    settle();
    watched.push(2);
    clock.advance(Seconds{0.2});
    watched.push(2);
    clock.advance(Seconds{0.1});

    EXPECT_EQ(delivered, (std::vector{2}));
}

TEST_F(DebounceTest, AChangeAndBackWithinTheQuietTimeDeliversTheOldValueAgain)
{
    settle();
    watched.push(2);
    watched.push(1);
    settle();

    EXPECT_EQ(delivered, (std::vector{1}));
}

TEST_F(DebounceTest, AValueThatIsPassedOverIsThePresentOneAndIsNotDelivered)
{
    settle();
    watched.passOver(2);
    settle();
    EXPECT_TRUE(delivered.empty());

    watched.push(2); // as it stands already
    settle();
    EXPECT_TRUE(delivered.empty());
    watched.push(1);
    settle();

    EXPECT_EQ(delivered, (std::vector{1}));
}

TEST_F(DebounceTest, WhatWaitsPassesBeforeAValueThatIsPassedOver)
{
    settle();
    watched.push(2);
    clock.advance(Seconds{0.1});
    watched.passOver(3);
    EXPECT_EQ(delivered, (std::vector{2}));

    settle();

    EXPECT_EQ(delivered, (std::vector{2})); // once
}

TEST_F(DebounceTest, AnEqualValueThatIsPassedOverLeavesTheOtherItsQuietTime)
{
    settle();
    watched.push(2);
    watched.passOver(2);
    EXPECT_TRUE(delivered.empty());

    settle();

    EXPECT_EQ(delivered, (std::vector{2}));
}

TEST_F(DebounceTest, AValueThatIsPassedOverLeavesTheFirstQuietTimeAsItIs)
{
    clock.advance(Seconds{0.1});
    watched.push(2);
    watched.passOver(3);
    EXPECT_TRUE(delivered.empty());
    settle();
    EXPECT_TRUE(delivered.empty());

    watched.push(4);
    settle();

    EXPECT_EQ(delivered, (std::vector{4}));
}

TEST_F(DebounceTest, AChangeThatWaitsCanPassAtOnce)
{
    watched.push(2);
    EXPECT_FALSE(watched.waiting().has_value()); // it will be taken for the start
    watched.passNow();
    settle();
    EXPECT_TRUE(delivered.empty());

    watched.push(3);
    EXPECT_TRUE(watched.waiting().has_value());
    watched.passNow();
    EXPECT_EQ(delivered, (std::vector{3}));
    EXPECT_FALSE(watched.waiting().has_value());
    watched.passNow();
    settle();

    EXPECT_EQ(delivered, (std::vector{3})); // once
}

TEST_F(DebounceTest, TheLaterOfTwoChangesWaitsUnderTheHigherNumber)
{
    Debounce<int> other(clock, Seconds{0.1}, 1, [](int) {});
    settle();
    other.push(2);
    watched.push(2);
    EXPECT_LT(*other.waiting(), *watched.waiting());

    other.push(3);

    EXPECT_GT(*other.waiting(), *watched.waiting());
}

} // namespace
} // namespace tessara
