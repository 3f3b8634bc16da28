#include <QEventLoop>
#include <QTimer>

#include "Base/ManualClock.h"
#include "Base/RealClock.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessara {
namespace {

using namespace std::chrono_literals;

class ManualClockTest : public testing::Test
{
protected:
    void remember(int name, Nanoseconds due)
    {
        alarms.push_back(clock.at(due, [this, name] { rung.push_back(name); }));
    }

    ManualClock clock;
    std::vector<Alarm> alarms;
    std::vector<int> rung;
};

TEST_F(ManualClockTest, AlarmsRingInDueOrderAndThoseOfOneTimeAsSet)
{
    remember(1, 20ms);
    remember(2, 10ms);
    remember(3, 20ms);

    clock.advance(20ms);

    EXPECT_EQ(rung, (std::vector{2, 1, 3}));
    EXPECT_EQ(clock.now(), 20ms);
}

TEST_F(ManualClockTest, AdvanceByNothingIsOneTurn)
{
    const Alarm outer = clock.at(0ns, [this] {
        rung.push_back(1);
        remember(2, clock.now());
    });

    clock.advance(0ns);
    EXPECT_EQ(rung, (std::vector{1}));

    clock.advance(0ns);
    EXPECT_EQ(rung, (std::vector{1, 2}));
}

TEST_F(ManualClockTest, WhatFallsDueOnTheWayRunsAtItsOwnTime)
{
    std::vector<Nanoseconds> times;
    const Alarm first = clock.at(10ms, [&] {
        times.push_back(clock.now());
        alarms.push_back(clock.at(clock.now() + 5ms, [&] { times.push_back(clock.now()); }));
    });

    clock.advance(1s);

    EXPECT_EQ(times, (std::vector<Nanoseconds>{10ms, 15ms}));
}

TEST_F(ManualClockTest, DroppedAlarmStaysSilent)
{
    {
        const Alarm dropped = clock.at(1ms, [this] { rung.push_back(1); });
    }
    clock.advance(1s);

    EXPECT_TRUE(rung.empty());
}

TEST_F(ManualClockTest, WallClockMovesWithTheTimeFromWhereItWasSet)
{
    clock.advance(3s);
    clock.setWallClock(QDateTime(QDate(2026, 11, 20), QTime(20, 29, 58)));

    clock.advance(2500ms);

    EXPECT_EQ(clock.wallClock(), QDateTime(QDate(2026, 11, 20), QTime(20, 30, 0, 500)));
}

TEST_F(ManualClockTest, ACallThatHoldsTheThreadDelaysWhatIsDue)
{
    std::vector<Nanoseconds> times;
    const Alarm holding = clock.at(10ms, [this] { clock.waitUntil(50ms); });
    const Alarm held = clock.at(20ms, [&] { times.push_back(clock.now()); });

    clock.advance(30ms);

    EXPECT_EQ(times, std::vector<Nanoseconds>{50ms});
    EXPECT_EQ(clock.now(), 50ms);

    clock.waitUntil(4ms); // has long been
    EXPECT_EQ(clock.now(), 50ms);
}

TEST(RealClockTest, RingsInOrderAndNotBeforeTheTime)
{
    RealClock clock;
    QEventLoop loop;
    std::vector<int> rung;
    const Nanoseconds due = clock.now() + 5ms;
    const Alarm last = clock.at(due, [&] {
        rung.push_back(2);
        EXPECT_GE(clock.now(), due);
        loop.quit();
    });
    const Alarm first = clock.at(clock.now(), [&] { rung.push_back(1); });

    loop.exec();

    EXPECT_EQ(rung, (std::vector{1, 2}));
}

TEST(RealClockTest, AlarmSetByAnAlarmForNowRingsInALaterTurn)
{
    RealClock clock;
    QEventLoop loop;
    std::vector<int> rung;
    Alarm inner;
    const Alarm outer = clock.at(clock.now(), [&] {
        inner = clock.at(clock.now(), [&] {
            rung.push_back(2);
            loop.quit();
        });
        rung.push_back(1);
    });

    loop.exec();

    EXPECT_EQ(rung, (std::vector{1, 2}));
}

} // namespace
} // namespace tessara
