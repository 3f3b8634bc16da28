#include "Core/Macros/MacroSchedule.h"

#include <QStringList>

namespace tessara {

bool isValidScheduleTime(const QString &time)
{
    if (time.size() != 8)
        return false;
    const QStringList parts = time.split(QLatin1Char(':'));
    if (parts.size() != 3)
        return false;
    const int limits[] = {24, 60, 60};
    for (int index = 0; index < 3; ++index) {
        bool isNumber = false;
        const int number = parts[index].toInt(&isNumber);
        if (!isNumber || number < 0 || number >= limits[index])
            return false;
    }
    return true;
}

MacroSchedule::MacroSchedule(Clock &clock, std::function<void(const QString &)> second)
    : m_clock(clock)
    , m_second(std::move(second))
{
    waitForNextSecond();
}

// From second to second rather than by a beat of its own: a beat between two seconds could fall
// into one of them twice and leave the next one out.
void MacroSchedule::waitForNextSecond()
{
    const std::chrono::milliseconds rest{1000 - m_clock.wallClock().time().msec()};
    m_alarm = m_clock.at(m_clock.now() + rest, [this] { tell(); });
}

void MacroSchedule::tell()
{
    waitForNextSecond();
    const QString time = m_clock.wallClock().time().toString(QStringLiteral("HH:mm:ss"));
    if (time != m_lastScheduleSecond) {
        m_lastScheduleSecond = time;
        m_scheduleFiredThisSecond.clear();
    }
    m_second(time);
}

bool MacroSchedule::markFired(const QUuid &id)
{
    if (m_scheduleFiredThisSecond.contains(id))
        return false;
    m_scheduleFiredThisSecond.insert(id);
    return true;
}

} // namespace tessara
