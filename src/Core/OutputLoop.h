// The beat of a running output.
#pragma once

#include "Base/RepeatingTimer.h"
#include "Core/OutputLead.h"
#include "Core/OutputPhase.h"

namespace tessara {

/// Shows a frame at whole multiples of the output's interval, and composes each at a beat that
/// comes so much earlier that it is done by then. Each beat starts a task of its own on the main
/// thread, so that what is due in the same turn of the main loop, a step of a take above all, comes
/// before the frame.
class OutputLoop
{
public:
    /// What to do at a beat. Either may end the loop; `compose` then answers false, as it does when
    /// there is no frame to show.
    struct Frames
    {
        std::function<bool()> compose;
        std::function<void()> display;
    };

    /// `rate` in frames a second; below 1 counts as 1.
    OutputLoop(Clock &clock, double rate, Frames frames);

    Seconds interval() const { return m_timer.interval(); }
    /// Beats that the main thread was too busy to take.
    quint64 missedTicks() const { return m_timer.missedBeats(); }
    /// The display calls of this beat have held the main thread for `waited` without any work.
    void noteDisplay(Nanoseconds waited) { m_timer.putOff(m_phase.delayAfter(waited)); }

private:
    Task takeBeat();
    void noteReady();

    Clock &m_clock;
    Frames m_frames;
    Task m_task;
    RepeatingTimer m_timer;
    OutputPhase m_phase;
    OutputLead m_lead;
};

} // namespace tessara
