// Tells when the machine itself stood still: a thread on each core, before all others of the
// system, sleeps for two milliseconds at a time and prints whenever it was woken late. Ends with
// its input.
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include <pthread.h>
#include <sched.h>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>

namespace {

constexpr double nap = 0.002;   // s; shorter ones take noticeable time from what is measured
constexpr double stall = 0.004; // s, beyond the nap

double now() // s of the monotonic clock
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// False where the user has no right to go before others: then the threads see them too.
bool goBeforeOthers()
{
    const sched_param priority{.sched_priority = sched_get_priority_max(SCHED_FIFO)};
    return pthread_setschedparam(pthread_self(), SCHED_FIFO, &priority) == 0;
}

void stayOn(int core)
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(core, &cores);
    pthread_setaffinity_np(pthread_self(), sizeof cores, &cores);
}

[[noreturn]] void watch(int core)
{
    stayOn(core);
    if (!goBeforeOthers())
        std::fprintf(stderr, "core %d: no right to a priority before others\n", core);
    double last = now();
    for (;;) {
        const timespec time{0, long(nap * 1e9)};
        nanosleep(&time, nullptr);
        const double woken = now();
        if (woken - last > nap + stall) {
            std::printf("%d %.4f %.4f\n", core, last, woken);
            std::fflush(stdout);
        }
        last = woken;
    }
}

} // namespace

int main()
{
    mlockall(MCL_CURRENT | MCL_FUTURE);
    cpu_set_t cores;
    sched_getaffinity(0, sizeof cores, &cores);
    for (int core = 0; core < CPU_SETSIZE; ++core) {
        if (CPU_ISSET(core, &cores))
            std::thread(watch, core).detach();
    }
    char byte = 0;
    while (read(STDIN_FILENO, &byte, 1) > 0) {
    }
    std::_Exit(EXIT_SUCCESS); // the threads never end
}
