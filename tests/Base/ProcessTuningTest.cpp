#include "Base/ProcessTuning.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/resource.h>

#include <thread>

namespace tessara {
namespace {

int niceness()
{
    constexpr id_t thisThread = 0;
    return getpriority(PRIO_PROCESS, thisThread);
}

TEST(ProcessTuningTest, AThreadThatStepsBackLeavesTheOthersWhereTheyWere)
{
    const int before = niceness();
    int lowered = before;

    std::thread([&] {
        lowerThreadPriority();
        lowered = niceness();
    }).join();

    EXPECT_GT(lowered, before);
    EXPECT_EQ(niceness(), before);
}

// Else a window's threads and a web page's programs would run before the frames.
TEST(ProcessTuningTest, ARaisedThreadStartsOrdinaryOnes)
{
    bool isStartedRaised = true;

    std::thread([&] {
        raiseThreadPriority();
        std::thread([&] { isStartedRaised = isThreadPriorityRaised(); }).join();
    }).join();

    EXPECT_FALSE(isStartedRaised);
    EXPECT_FALSE(isThreadPriorityRaised());
}

TEST(ProcessTuningTest, ARaisedThreadRunsBeforeOthersWhereTheUserMayAskForIt)
{
    bool isAllowed = false;
    bool isRaised = false;

    std::thread([&] {
        const sched_param lowest{.sched_priority = 1};
        isAllowed =
            sched_setscheduler(0, SCHED_RR, &lowest) == 0 || setpriority(PRIO_PROCESS, 0, -1) == 0;
    }).join();
    std::thread([&] {
        raiseThreadPriority();
        isRaised = isThreadPriorityRaised();
    }).join();

    EXPECT_EQ(isRaised, isAllowed);
}

} // namespace
} // namespace tessara
