#include "bench/Measure.h"

#include "bench/Allocations.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace tessara {

namespace {

using Timer = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr Milliseconds blockLength{30};
constexpr int mostTicksOfBlock = 40;
constexpr std::size_t leastTicks = 5;
constexpr int warmUpTicks = 8; // until kept buffers and caches have their size

/// 0 without any values.
double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Milliseconds processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

Ticks::Tick runTick(const Work &work)
{
    if (work.prepare)
        work.prepare();
    const quint64 allocations = heapAllocations();
    const Timer::time_point start = Timer::now();
    const Milliseconds processor = processorTime();
    work.tick();
    return {(processorTime() - processor).count(), Milliseconds(Timer::now() - start).count(),
            heapAllocations() - allocations};
}

void warmUp(const Work &work)
{
    constexpr Milliseconds patience{100};
    runTick(work); // which makes all sprites, and is like no other
    const Timer::time_point start = Timer::now();
    for (int tick = 0; tick < warmUpTicks && Timer::now() - start < patience; ++tick)
        runTick(work);
}

void runBlock(const Work &work, Ticks &ticks)
{
    // Another's turn has left its own in the caches; what takes as long as a block fills them anew
    // in any case.
    Ticks::Tick tick = runTick(work);
    if (tick.elapsed >= blockLength.count()) {
        ticks.add(tick);
        return;
    }
    const Timer::time_point start = Timer::now();
    for (int done = 0; done < mostTicksOfBlock && Timer::now() - start < blockLength; ++done)
        ticks.add(runTick(work));
}

} // namespace

double Ticks::processor() const
{
    std::vector<double> values;
    for (const Tick &tick : m_ticks)
        values.push_back(tick.processor);
    return median(std::move(values));
}

double Ticks::elapsed() const
{
    std::vector<double> values;
    for (const Tick &tick : m_ticks)
        values.push_back(tick.elapsed);
    return median(std::move(values));
}

double Ticks::allocations() const
{
    quint64 all = 0;
    for (const Tick &tick : m_ticks)
        all += tick.allocations;
    return m_ticks.empty() ? 0 : double(all) / double(m_ticks.size());
}

std::vector<Ticks> measureInTurns(const std::vector<Work> &works, double seconds)
{
    std::vector<Ticks> ticks(works.size());
    const auto isEnough = [&] {
        return std::ranges::all_of(ticks,
                                   [](const Ticks &each) { return each.count() >= leastTicks; });
    };
    for (const Work &work : works)
        warmUp(work);
    const Milliseconds all(seconds * 1000 * double(works.size()));
    const Timer::time_point start = Timer::now();
    while (Timer::now() - start < all || !isEnough()) {
        for (std::size_t index = 0; index < works.size(); ++index)
            runBlock(works[index], ticks[index]);
    }
    return ticks;
}

} // namespace tessara
