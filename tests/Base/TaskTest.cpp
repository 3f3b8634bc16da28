#include "Base/ManualClock.h"
#include "Base/Task.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessara {
namespace {

using namespace std::chrono_literals;

struct Tracker
{
    explicit Tracker(bool &ended)
        : ended(ended)
    {
    }
    ~Tracker() { ended = true; }
    bool &ended;
};

class TaskTest : public testing::Test
{
protected:
    Task count(int to, Nanoseconds pause)
    {
        const Tracker tracker(ended);
        for (int number = 1; number <= to; ++number) {
            counted.push_back(number);
            const bool slept = co_await clock.sleep(pause);
            if (!slept)
                co_return;
        }
    }

    Task cancelItself(Task &itself)
    {
        const bool started = co_await clock.nextTurn();
        EXPECT_TRUE(started);
        itself.cancel();
        counted.push_back(1);
        const bool slept = co_await clock.sleep(1ms);
        EXPECT_FALSE(slept);
        counted.push_back(2);
    }

    ManualClock clock;
    std::vector<int> counted;
    bool ended = false;
};

TEST_F(TaskTest, RunsStepByStep)
{
    const Task task = count(3, 10ms);
    EXPECT_EQ(counted.size(), 1u);

    clock.advance(15ms);
    EXPECT_EQ(counted.size(), 2u);
    EXPECT_TRUE(task.isActive());

    clock.advance(15ms);
    EXPECT_EQ(counted.size(), 3u);
    EXPECT_FALSE(task.isActive());
    EXPECT_TRUE(ended);
}

TEST_F(TaskTest, CancelEndsItWhereItWaitsAndFreesWhatItHeld)
{
    Task task = count(3, 10ms);

    task.cancel();

    EXPECT_TRUE(ended);
    clock.advance(1s);
    EXPECT_EQ(counted.size(), 1u);
}

TEST_F(TaskTest, DroppedTaskCancelsItself)
{
    {
        const Task task = count(3, 10ms);
    }

    EXPECT_TRUE(ended);
    clock.advance(1s);
    EXPECT_EQ(counted.size(), 1u);
}

TEST_F(TaskTest, ReplacedTaskCancelsTheOneInHand)
{
    Task task = count(9, 10ms);
    clock.advance(10ms);
    counted.clear();

    task = count(2, 10ms);
    clock.advance(1s);

    EXPECT_EQ(counted, (std::vector{1, 2}));
}

TEST_F(TaskTest, TaskThatCancelsItselfRunsOnToItsNextWait)
{
    Task task;
    task = cancelItself(task);

    clock.advance(0ns);

    EXPECT_EQ(counted, (std::vector{1, 2}));
}

TEST_F(TaskTest, OutlivesTheClockWithoutHarm)
{
    auto shortLived = std::make_unique<ManualClock>();
    const auto wait = [](Clock &own) -> Task {
        [[maybe_unused]] const bool slept = co_await own.sleep(1s);
    };
    Task task = wait(*shortLived);

    shortLived.reset();

    EXPECT_TRUE(task.isActive());
}

} // namespace
} // namespace tessara
