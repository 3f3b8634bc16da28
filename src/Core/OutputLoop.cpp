#include "Core/OutputLoop.h"

#include <algorithm>

namespace tessara {

OutputLoop::OutputLoop(Clock &clock, double rate, std::function<void()> send)
    : m_clock(clock)
    , m_send(std::move(send))
    , m_timer(clock, Seconds{1.0 / std::max(rate, 1.0)}, [this] { m_task = takeBeat(); })
    , m_phase(toNanoseconds(m_timer.interval()))
{
}

Task OutputLoop::takeBeat()
{
    const bool started = co_await m_clock.nextTurn();
    if (!started)
        co_return;
    const std::function<void()> send = m_send; // it may end the loop
    send();
}

} // namespace tessara
