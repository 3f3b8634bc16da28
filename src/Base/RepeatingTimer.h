// A steady beat on the main thread.
#pragma once

#include "Base/Clock.h"

namespace tessara {

/// Calls back at whole multiples of its interval. Beats that the main thread was too busy to take
/// are counted and left out, never made up for. Dropping the timer stops it.
class RepeatingTimer
{
public:
    RepeatingTimer(Clock &clock, Seconds interval, std::function<void()> beat);

    Seconds interval() const { return m_interval; }
    quint64 missedBeats() const { return m_missed; }

    /// All beats to come are later by `delay`. None is missed by it.
    void putOff(Nanoseconds delay);

private:
    void schedule();
    void ring();
    Nanoseconds dueOf(quint64 index) const;

    Clock &m_clock;
    Seconds m_interval;
    std::function<void()> m_beat;
    Nanoseconds m_start;
    quint64 m_next = 1;
    quint64 m_missed = 0;
    Alarm m_alarm;
};

} // namespace tessara
