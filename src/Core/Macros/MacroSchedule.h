// The seconds of the wall clock, as macros are scheduled by them.
#pragma once

#include <QSet>
#include <QString>
#include <QUuid>

#include "Base/Clock.h"

namespace tessara {

/// "HH:mm:ss", two digits each, as a macro can be scheduled: any other text is never due.
bool isValidScheduleTime(const QString &time);

/// Tells each second of the wall clock by its "HH:mm:ss", right at its beginning, and remembers
/// what has fired in it. A clock that is set goes on from where it stands; what lay between is
/// passed over, as are the seconds in which the program was busy or the machine asleep.
class MacroSchedule
{
public:
    MacroSchedule(Clock &clock, std::function<void(const QString &)> second);

    /// True for the first of an id in the second that is being told.
    bool markFired(const QUuid &id);
    /// True when that time of day went by, untold, right before the second that is being told.
    bool hasPassedOver(const QString &time) const;

private:
    void waitForNextSecond();
    void tell();

    Clock &m_clock;
    std::function<void(const QString &)> m_second;
    // What the clock on the wall shows, told last and before that, whatever became of it meanwhile.
    QDateTime m_told;
    QDateTime m_toldBefore;
    QString m_lastScheduleSecond;
    QSet<QUuid> m_scheduleFiredThisSecond;
    Alarm m_alarm;
};

} // namespace tessara
