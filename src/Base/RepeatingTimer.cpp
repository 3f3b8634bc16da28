#include "Base/RepeatingTimer.h"

namespace tessara {

RepeatingTimer::RepeatingTimer(Clock &clock, Seconds interval, std::function<void()> beat)
    : m_clock(clock)
    , m_interval(std::max(interval, Seconds{1e-6}))
    , m_beat(std::move(beat))
    , m_start(clock.now())
{
    schedule();
}

// Each beat is reckoned from the start, so that 1001/30000 s holds over any length of show.
Nanoseconds RepeatingTimer::dueOf(quint64 index) const
{
    return m_start + toNanoseconds(m_interval * double(index));
}

void RepeatingTimer::putOff(Nanoseconds delay)
{
    if (delay == Nanoseconds{0})
        return;
    m_start += delay;
    schedule();
}

void RepeatingTimer::schedule()
{
    m_alarm = m_clock.at(dueOf(m_next), [this] { ring(); });
}

void RepeatingTimer::ring()
{
    ++m_next;
    while (dueOf(m_next) <= m_clock.now()) {
        ++m_next;
        ++m_missed;
    }
    schedule();
    const auto beat = m_beat; // the beat may drop this timer
    beat();
}

} // namespace tessara
