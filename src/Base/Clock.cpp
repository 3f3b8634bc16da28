#include "Base/Clock.h"

namespace tessara {

namespace detail {

AlarmQueue::Key AlarmQueue::add(Nanoseconds due, std::function<void()> ring)
{
    const Key key{due, m_serial++};
    m_alarms.emplace(key, std::move(ring));
    return key;
}

bool AlarmQueue::ringOne(Nanoseconds now, quint64 serial)
{
    for (auto alarm = m_alarms.begin(); alarm != m_alarms.end() && alarm->first.first <= now;
         ++alarm) {
        if (alarm->first.second >= serial)
            continue;
        // Out of the queue first: the call may set and cancel alarms.
        const auto ring = std::move(alarm->second);
        m_alarms.erase(alarm);
        ring();
        return true;
    }
    return false;
}

} // namespace detail

Clock::Clock()
    : m_alarms(std::make_shared<detail::AlarmQueue>())
{
}

Clock::~Clock() = default;

Alarm Clock::at(Nanoseconds due, std::function<void()> ring)
{
    const auto key = m_alarms->add(due, std::move(ring));
    alarmsChanged();
    return {m_alarms, key};
}

void Clock::runTurn()
{
    const quint64 serial = m_alarms->nextSerial();
    const Nanoseconds turn = now();
    while (m_alarms->ringOne(turn, serial)) {
    }
}

} // namespace tessara
