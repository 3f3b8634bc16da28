#include "Core/OutputPhase.h"

#include <utility>

namespace tessara {

OutputPhase::OutputPhase(Nanoseconds interval)
    : m_negligible(interval / 20)
    , m_step(interval / 10)
    , m_farthest(2 * interval)
{
}

Nanoseconds OutputPhase::delayAfter(Nanoseconds duration)
{
    return duration > m_negligible ? delayAfterWait() : delayAfterRoom();
}

Nanoseconds OutputPhase::delayAfterWait()
{
    constexpr int patience = 3; // beats: a single wait ends by itself
    m_rooms = 0;
    ++m_waits;
    m_isMoving = m_waits >= patience && m_moved < m_farthest;
    return m_isMoving ? moveBy(m_step) : Nanoseconds{0};
}

Nanoseconds OutputPhase::delayAfterRoom()
{
    constexpr int aWhile = 50; // beats
    m_waits = 0;
    if (++m_rooms >= aWhile)
        m_moved = Nanoseconds{0};
    // Further into the open, so that a beat that is early doesn't wait either.
    return std::exchange(m_isMoving, false) ? moveBy(m_step) : Nanoseconds{0};
}

Nanoseconds OutputPhase::moveBy(Nanoseconds delay)
{
    m_moved += delay;
    return delay;
}

} // namespace tessara
