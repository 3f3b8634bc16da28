#include "Core/OutputPhase.h"

namespace tessara {

OutputPhase::OutputPhase(Nanoseconds interval)
    : m_step(interval / 20)
    , m_farthest(2 * interval)
{
}

Nanoseconds OutputPhase::delayAfter(Nanoseconds waited)
{
    constexpr int patience = 3;         // beats: a single wait ends by itself
    constexpr int stepsIntoTheOpen = 2; // so that a beat that is early doesn't wait either
    if (waited <= m_step) {
        const bool hasMoved = m_moved > Nanoseconds{0};
        m_waits = 0;
        m_moved = Nanoseconds{0};
        return hasMoved ? stepsIntoTheOpen * m_step : Nanoseconds{0};
    }
    ++m_waits;
    // A card that holds every call, wherever it falls, can't be got away from.
    if (m_waits < patience || m_moved >= m_farthest)
        return Nanoseconds{0};
    m_moved += m_step;
    return m_step;
}

} // namespace tessara
