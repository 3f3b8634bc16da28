#include "Base/ProcessTuning.h"

#include <malloc.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace tessara {

namespace {

constexpr id_t thisThread = 0;

bool setPolicy(int policy, int priority)
{
    const sched_param parameters{.sched_priority = priority};
    return sched_setscheduler(thisThread, policy | SCHED_RESET_ON_FORK, &parameters) == 0;
}

} // namespace

// Niceness alone is weighed within a login session only: a job of the system's comes in between all
// the same, and stays for milliseconds.
void raiseThreadPriority()
{
    constexpr int realTimePriority = 5;     // of 1 to 99: below what drives sound and hardware
    constexpr int niceness = -15;           // of -20 to 19
    constexpr unsigned long timerSlack = 1; // ns; 50,000 by default
    prctl(PR_SET_TIMERSLACK, timerSlack);
    if (setPolicy(SCHED_RR, realTimePriority))
        return;
    setPolicy(SCHED_OTHER, 0); // no more than that nobody inherits the niceness
    setpriority(PRIO_PROCESS, thisThread, niceness);
}

bool isThreadPriorityRaised()
{
    return (sched_getscheduler(thisThread) & ~SCHED_RESET_ON_FORK) == SCHED_RR
           || getpriority(PRIO_PROCESS, thisThread) < 0;
}

void lowerThreadPriority()
{
    constexpr int niceness = 10; // of -20 to 19
    setpriority(PRIO_PROCESS, thisThread, niceness);
}

void resetThreadPriority()
{
    setpriority(PRIO_PROCESS, thisThread, 0);
}

void keepFreedMemory()
{
    constexpr int largest = 6 * 1024 * 1024; // bytes a piece
    constexpr int kept = 512 * 1024 * 1024;  // bytes
    mallopt(M_MMAP_THRESHOLD, largest);
    mallopt(M_TRIM_THRESHOLD, kept);
}

} // namespace tessara
