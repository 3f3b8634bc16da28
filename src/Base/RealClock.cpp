#include "Base/RealClock.h"

#include <sys/timerfd.h>
#include <unistd.h>

namespace tessara {

namespace {

Nanoseconds monotonicTime()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::chrono::seconds{time.tv_sec} + Nanoseconds{time.tv_nsec};
}

} // namespace

RealClock::RealClock()
    : m_start(monotonicTime())
    , m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_timer < 0)
        qFatal("The kernel gave no timer: %s", strerror(errno));
    m_notifier = std::make_unique<QSocketNotifier>(m_timer, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { wake(); });
}

RealClock::~RealClock()
{
    m_notifier.reset();
    close(m_timer);
}

Nanoseconds RealClock::now() const
{
    return monotonicTime() - m_start;
}

QDateTime RealClock::wallClock() const
{
    return QDateTime::currentDateTime();
}

// A turn sets many alarms; the timer is set once, at its end.
void RealClock::alarmsChanged()
{
    if (!m_isInTurn)
        arm();
}

void RealClock::wake()
{
    quint64 expirations = 0;
    [[maybe_unused]] const auto size = read(m_timer, &expirations, sizeof expirations);
    m_armedFor = Nanoseconds{-1};
    m_isInTurn = true;
    runTurn();
    m_isInTurn = false;
    arm();
}

void RealClock::arm()
{
    if (alarms().isEmpty() || alarms().nextDue() == m_armedFor)
        return;
    m_armedFor = alarms().nextDue();
    const Nanoseconds due = m_start + std::max(m_armedFor, Nanoseconds{1});
    itimerspec wakeUp{};
    wakeUp.it_value.tv_sec = due / std::chrono::seconds{1};
    wakeUp.it_value.tv_nsec = (due % std::chrono::seconds{1}).count();
    timerfd_settime(m_timer, TFD_TIMER_ABSTIME, &wakeUp, nullptr);
}

} // namespace tessara
