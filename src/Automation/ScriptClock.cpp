#include "Automation/ScriptClock.h"

#include "Base/ManualClock.h"

#include <QEventLoop>

namespace tessara {

ScriptClock::ScriptClock(Clock &clock)
    : m_clock(clock)
{
}

double ScriptClock::now() const
{
    return Seconds(m_clock.now()).count();
}

ScriptResult ScriptClock::advance(double seconds)
{
    constexpr double longest = 1e6; // s; every beat of every timer within it is run
    if (!(seconds >= 0))
        return tl::unexpected(QStringLiteral("time doesn't go back"));
    if (seconds > longest)
        return tl::unexpected(QStringLiteral("at most %1 seconds at once").arg(longest, 0, 'f', 0));
    if (auto *manual = dynamic_cast<ManualClock *>(&m_clock)) {
        manual->advance(Seconds{seconds});
        return QJsonValue();
    }
    QEventLoop loop;
    const Alarm alarm =
        m_clock.at(m_clock.now() + toNanoseconds(Seconds{seconds}), [&loop] { loop.quit(); });
    loop.exec();
    return QJsonValue();
}

ScriptResult ScriptClock::setWallClock(const QString &time)
{
    auto *manual = dynamic_cast<ManualClock *>(&m_clock);
    if (!manual)
        return tl::unexpected(QStringLiteral("only the manual clock can be set"));
    const QDateTime wallClock = QDateTime::fromString(time, Qt::ISODateWithMs);
    if (!wallClock.isValid())
        return tl::unexpected(QStringLiteral("'%1' is no date and time").arg(time));
    manual->setWallClock(wallClock);
    return QJsonValue();
}

} // namespace tessara
