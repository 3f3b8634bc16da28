#include "Base/ManualClock.h"

#include <limits>

namespace tessara {

QDateTime ManualClock::wallClock() const
{
    return m_wallClockAtStart.addMSecs(m_now / std::chrono::milliseconds{1});
}

void ManualClock::advanceTo(Nanoseconds end)
{
    runTurn();
    if (end == m_now)
        return;
    while (!alarms().isEmpty() && alarms().nextDue() <= end) {
        m_now = std::max(m_now, alarms().nextDue());
        alarms().ringOne(m_now, std::numeric_limits<quint64>::max());
    }
    m_now = std::max(m_now, end); // a call may have held the thread for longer
}

void ManualClock::waitUntil(Nanoseconds moment)
{
    m_now = std::max(m_now, moment);
}

void ManualClock::setWallClock(const QDateTime &time)
{
    m_wallClockAtStart = time.addMSecs(-(m_now / std::chrono::milliseconds{1}));
}

} // namespace tessara
