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
        double processor = 0; // ms, of all threads of the process
        double elapsed = 0;   // ms
        quint64 allocations = 0;
    };

    void add(const Tick &tick) { m_ticks.push_back(tick); }

    std::size_t count() const { return m_ticks.size(); }
    /// The median, in ms of processor time: others of a busy machine take no part in it.
    double processor() const;
    /// The median, in ms that have passed.
    double elapsed() const;
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
