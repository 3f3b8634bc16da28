// The beat of a running output.
#pragma once

#include "Base/RepeatingTimer.h"
#include "Core/OutputPhase.h"

namespace tessara {

/// Sends a frame at whole multiples of the output's interval. Each beat starts a task of its own on
/// the main thread, so that what is due in the same turn of the main loop, a step of a take above
/// all, comes before the frame.
class OutputLoop
{
public:
    /// `rate` in frames a second; below 1 counts as 1. `send` may end the loop.
    OutputLoop(Clock &clock, double rate, std::function<void()> send);

    Seconds interval() const { return m_timer.interval(); }
    /// Beats that the main thread was too busy to take.
    quint64 missedTicks() const { return m_timer.missedBeats(); }
    /// The display calls of this beat have taken so long.
    void noteDisplay(Nanoseconds duration) { m_timer.putOff(m_phase.delayAfter(duration)); }

private:
    Task takeBeat();

    Clock &m_clock;
    std::function<void()> m_send;
    Task m_task;
    RepeatingTimer m_timer;
    OutputPhase m_phase;
};

} // namespace tessara
