#include "Core/Macros/MacroSchedule.h"

#include <QRegularExpression>

namespace tessara {

namespace {

/// Without daylight saving: an hour that is left out has gone by.
QDateTime faceOf(const QDateTime &time)
{
    return {time.date(), QTime(time.time().hour(), time.time().minute(), time.time().second()),
            Qt::UTC};
}

} // namespace

bool isValidScheduleTime(const QString &time)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]\\z"));
    return form.match(time).hasMatch();
}

MacroSchedule::MacroSchedule(Clock &clock, std::function<void(const QString &)> second)
    : m_clock(clock)
    , m_second(std::move(second))
    , m_told(faceOf(clock.wallClock()))
    , m_toldBefore(m_told)
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
    m_toldBefore = std::exchange(m_told, faceOf(m_clock.wallClock()));
    const QString time = m_told.time().toString(QStringLiteral("HH:mm:ss"));
    if (time != m_lastScheduleSecond) {
        m_lastScheduleSecond = time;
        m_scheduleFiredThisSecond.clear();
    }
    m_second(time);
}

bool MacroSchedule::hasPassedOver(const QString &time) const
{
    if (m_toldBefore.secsTo(m_told) <= 1 || !isValidScheduleTime(time))
        return false;
    QDateTime due(m_toldBefore.date(), QTime::fromString(time, QStringLiteral("HH:mm:ss")),
                  Qt::UTC);
    if (due <= m_toldBefore)
        due = due.addDays(1);
    return due < m_told;
}

bool MacroSchedule::markFired(const QUuid &id)
{
    if (m_scheduleFiredThisSecond.contains(id))
        return false;
    m_scheduleFiredThisSecond.insert(id);
    return true;
}

} // namespace tessara
