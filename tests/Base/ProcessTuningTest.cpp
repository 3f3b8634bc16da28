#include "Base/ProcessTuning.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace tessara
