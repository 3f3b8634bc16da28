// How long ticks take, with several kinds of them in turns.
#pragma once

#include <QtGlobal>

#include <functional>
#include <vector>

namespace tessara {

/// What the measured ticks of one work took.
class Ticks
{
public:
    struct Tick
    {
        double milliseconds = 0;
        long interruptions = 0; // how often the system gave the processor to others meanwhile
        quint64 allocations = 0;
    };

    void add(const Tick &tick) { m_ticks.push_back(tick); }

    std::size_t count() const { return m_ticks.size(); }
    /// The median of the quiet ticks, in ms: of those with the fewest interruptions, a quarter of
    /// all at least. What others take of a busy machine would otherwise count for long ticks and
    /// not for short ones.
    double p50() const;
    /// Of all ticks, in ms.
    double p99() const;
    double best() const;
    /// The share of ticks without any interruption, 0 to 1.
    double undisturbedShare() const;
    /// The mean of a tick.
    double allocations() const;

private:
    std::vector<Tick> m_ticks;
};

struct Work
{
    std::function<void()> tick;
    std::function<void()> prepare = {}; // before each tick, and not measured
};

/// Runs each of the works for about `seconds`, in the order of `works`: a short block of ticks of
/// the first, one of the second, and so on until the time is over, so that whatever disturbs the
/// machine disturbs all of them alike.
std::vector<Ticks> measureInTurns(const std::vector<Work> &works, double seconds);

} // namespace tessara
