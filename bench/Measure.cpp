#include "bench/Measure.h"

#include "bench/Allocations.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tessara {

namespace {

using Timer = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr Milliseconds blockLength{30};
constexpr int mostTicksOfBlock = 40;
constexpr std::size_t leastTicks = 5;
constexpr int warmUpTicks = 8; // until kept buffers and caches have their size

double runTick(const Work &work, Ticks *ticks)
{
    if (work.prepare)
        work.prepare();
    const quint64 allocations = heapAllocations();
    const Timer::time_point start = Timer::now();
    work.tick();
    const double taken = Milliseconds(Timer::now() - start).count();
    if (ticks)
        ticks->add(taken, heapAllocations() - allocations);
    return taken;
}

void warmUp(const Work &work)
{
    constexpr Milliseconds patience{100};
    const Timer::time_point start = Timer::now();
    for (int tick = 0; tick < warmUpTicks && Timer::now() - start < patience; ++tick)
        runTick(work, nullptr);
}

void runBlock(const Work &work, Ticks &ticks)
{
    const Timer::time_point end =
        Timer::now() + std::chrono::duration_cast<Timer::duration>(blockLength);
    // Another's turn has left its own in the caches; what takes longer than a block fills them anew
    // in any case.
    const bool isLong = ticks.count() > 0 && ticks.best() >= blockLength.count();
    if (!isLong)
        runTick(work, nullptr);
    int done = 0;
    do {
        runTick(work, &ticks);
    } while (++done < mostTicksOfBlock && Timer::now() < end);
}

} // namespace

void Ticks::add(double milliseconds, quint64 allocations)
{
    m_milliseconds.push_back(milliseconds);
    m_allocations += allocations;
}

double Ticks::percentile(double share) const
{
    if (m_milliseconds.empty())
        return 0;
    std::vector<double> sorted = m_milliseconds;
    const auto rank = std::size_t(std::ceil(share * double(sorted.size())));
    const auto place = sorted.begin() + std::ptrdiff_t(std::max<std::size_t>(rank, 1) - 1);
    std::nth_element(sorted.begin(), place, sorted.end());
    return *place;
}

double Ticks::allocations() const
{
    return count() == 0 ? 0 : double(m_allocations) / double(count());
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
