// How long a thread was held up.
#pragma once

#include "Base/Clock.h"

namespace tessara {

class WaitMeter
{
public:
    explicit WaitMeter(const Clock &clock)
        : m_clock(clock)
        , m_start(idle())
    {
    }

    /// Since the meter was made, without the time that this thread has worked.
    Nanoseconds waited() const { return idle() - m_start; }

private:
    Nanoseconds idle() const { return m_clock.now() - m_clock.worked(); }

    const Clock &m_clock;
    Nanoseconds m_start;
};

} // namespace tessara
