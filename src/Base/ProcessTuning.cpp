#include "Base/ProcessTuning.h"

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace tessara {

namespace {

constexpr id_t thisThread = 0;

} // namespace

void raiseThreadPriority()
{
    constexpr int niceness = -15;           // of -20 to 19
    constexpr unsigned long timerSlack = 1; // ns; 50,000 by default
    setpriority(PRIO_PROCESS, thisThread, niceness);
    prctl(PR_SET_TIMERSLACK, timerSlack);
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
