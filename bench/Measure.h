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
    void add(double milliseconds, quint64 allocations);

    std::size_t count() const { return m_milliseconds.size(); }
    /// The tick that `share` of all ticks don't exceed, in ms.
    double percentile(double share) const;
    double p50() const { return percentile(0.5); }
    double p99() const { return percentile(0.99); }
    double best() const { return percentile(0); }
    /// The mean of a tick.
    double allocations() const;

private:
    std::vector<double> m_milliseconds;
    quint64 m_allocations = 0;
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
