#include "Core/OutputLoop.h"

#include <algorithm>

namespace tessara {

OutputLoop::OutputLoop(Clock &clock, double rate, Frames frames)
    : m_clock(clock)
    , m_frames(std::move(frames))
    , m_timer(clock, Seconds{1.0 / std::max(rate, 1.0)}, [this] { m_task = takeBeat(); })
    , m_phase(toNanoseconds(m_timer.interval()))
    , m_lead(toNanoseconds(m_timer.interval()))
{
}

Task OutputLoop::takeBeat()
{
    const bool started = co_await m_clock.nextTurn();
    if (!started)
        co_return;
    const Frames frames = m_frames; // they may end the loop
    const bool isComposed = frames.compose();
    if (!isComposed)
        co_return;
    const Nanoseconds time = m_timer.lastBeat() + m_lead.value();
    noteReady();
    if (const Nanoseconds early = time - m_clock.now(); early > Nanoseconds{0}) {
        const bool waited = co_await m_clock.sleep(early);
        if (!waited)
            co_return;
    }
    frames.display();
}

// A frame's time stays where it is, whenever its beat is.
void OutputLoop::noteReady()
{
    const Nanoseconds before = m_lead.value();
    m_lead.noteReady(m_clock.now() - m_timer.lastBeat());
    m_timer.putOff(before - m_lead.value());
}

} // namespace tessara
