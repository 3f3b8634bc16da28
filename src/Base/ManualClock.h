// A clock that stands still but for `advance()`.
#pragma once

#include "Base/Clock.h"

namespace tessara {

class ManualClock : public Clock
{
public:
    Nanoseconds now() const override { return m_now; }
    QDateTime wallClock() const override;

    /// Runs what is due now, then moves on from deadline to deadline until `duration` has passed.
    /// With no duration it is one turn of the main loop.
    template <typename Count, typename Period>
    void advance(std::chrono::duration<Count, Period> duration)
    {
        advanceTo(m_now + toNanoseconds(duration));
    }
    /// From here on the wall clock moves with `advance()`.
    void setWallClock(const QDateTime &time);
    /// The machine was too busy to look at its alarms: time has passed, and none rang in time.
    void stall(Seconds duration) { m_now += toNanoseconds(duration); }
    /// A call has held this thread until `moment`, and no alarm rang.
    void waitUntil(Nanoseconds moment);

private:
    void advanceTo(Nanoseconds end);

    Nanoseconds m_now{0};
    QDateTime m_wallClockAtStart = QDateTime(QDate(2026, 1, 1), QTime(12, 0));
};

} // namespace tessara
