#include "virtual-card/MachineTime.h"

#include <time.h>

#include <cerrno>

namespace tessara::virtualcard {
namespace {

constexpr std::int64_t second = 1'000'000'000; // ns

std::int64_t now(void *)
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * second + time.tv_nsec;
}

void waitUntil(void *, std::int64_t moment)
{
    const timespec time{moment / second, moment % second};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr) == EINTR) {
    }
}

} // namespace

constinit const TessaraVirtualCardTime machineTime{nullptr, now, waitUntil};

} // namespace tessara::virtualcard
