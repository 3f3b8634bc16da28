#include "bench/Measure.h"

#include "bench/Allocations.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include <sys/resource.h>

namespace tessara {

namespace {

using Timer = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr Milliseconds blockLength{30};
constexpr int mostTicksOfBlock = 40;
constexpr std::size_t leastTicks = 5;
constexpr int warmUpTicks = 8; // until kept buffers and caches have their size

/// What a `share` of the values doesn't exceed; 0 without any.
template <typename Value>
Value percentile(std::vector<Value> values, double share)
{
    if (values.empty())
        return {};
    const auto rank = std::size_t(std::ceil(share * double(values.size())));
    const auto place = values.begin() + std::ptrdiff_t(std::max<std::size_t>(rank, 1) - 1);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

std::vector<double> milliseconds(const std::vector<Ticks::Tick> &ticks)
{
    std::vector<double> values;
    for (const Ticks::Tick &tick : ticks)
        values.push_back(tick.milliseconds);
    return values;
}

/// Of this thread, since it began.
long interruptions()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nivcsw;
}

Ticks::Tick runTick(const Work &work)
{
    if (work.prepare)
        work.prepare();
    const long before = interruptions();
    const quint64 allocations = heapAllocations();
    const Timer::time_point start = Timer::now();
    work.tick();
    const double taken = Milliseconds(Timer::now() - start).count();
    const quint64 made = heapAllocations() - allocations;
    return {taken, interruptions() - before, made};
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
    const Timer::time_point end =
        Timer::now() + std::chrono::duration_cast<Timer::duration>(blockLength);
    // Another's turn has left its own in the caches; what takes longer than a block fills them anew
    // in any case.
    const bool isLong = ticks.count() > 0 && ticks.best() >= blockLength.count();
    if (!isLong)
        runTick(work);
    int done = 0;
    do {
        ticks.add(runTick(work));
    } while (++done < mostTicksOfBlock && Timer::now() < end);
}

} // namespace

double Ticks::p50() const
{
    constexpr double quietShare = 0.25;
    std::vector<long> interruptions;
    for (const Tick &tick : m_ticks)
        interruptions.push_back(tick.interruptions);
    const long most = percentile(interruptions, quietShare);
    std::vector<double> quiet;
    for (const Tick &tick : m_ticks) {
        if (tick.interruptions <= most)
            quiet.push_back(tick.milliseconds);
    }
    return percentile(quiet, 0.5);
}

double Ticks::p99() const
{
    return percentile(milliseconds(m_ticks), 0.99);
}

double Ticks::best() const
{
    return percentile(milliseconds(m_ticks), 0);
}

double Ticks::undisturbedShare() const
{
    const auto undisturbed = std::ranges::count(m_ticks, 0, &Tick::interruptions);
    return m_ticks.empty() ? 0 : double(undisturbed) / double(m_ticks.size());
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
