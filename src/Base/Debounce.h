// Watching a value that changes in bursts.
#pragma once

#include "Base/Clock.h"

#include <optional>

namespace tessara {

/// Delivers a watched value once it has been quiet for a while.
///
/// The value at the start counts as the first of the series. Equal neighbours are one. What has
/// stood for `quiet` passes, and the first that passes is dropped: it is the value at the start or,
/// if that changed within the quiet time, the change.
///
/// A value that is passed over counts as the present one and is not delivered. What waits then for
/// the end of its quiet time passes at once.
template <typename Value>
class Debounce
{
public:
    Debounce(Clock &clock, Seconds quiet, Value current, std::function<void(const Value &)> deliver)
        : m_clock(clock)
        , m_quiet(quiet)
        , m_latest(std::move(current))
        , m_deliver(std::move(deliver))
    {
        wait();
    }

    void push(Value value)
    {
        if (value == m_latest)
            return;
        m_latest = std::move(value);
        wait();
    }

    void passOver(Value value)
    {
        if (value == m_latest)
            return;
        passNow(std::exchange(m_latest, std::move(value)));
    }

    /// A number, higher than that of every earlier change, while a change waits for its quiet time.
    std::optional<quint64> waiting() const
    {
        return !m_isFirst && m_isWaiting ? std::optional(m_alarm.serial()) : std::nullopt;
    }

    /// Delivers a change that waits without waiting any longer.
    void passNow() { passNow(m_latest); }

private:
    void passNow(const Value &value)
    {
        if (!waiting())
            return;
        m_isWaiting = false;
        m_alarm.cancel();
        deliver(value);
    }

    void wait()
    {
        m_isWaiting = true;
        m_alarm = m_clock.at(m_clock.now() + toNanoseconds(m_quiet), [this] { pass(); });
    }

    void pass()
    {
        m_isWaiting = false;
        if (!std::exchange(m_isFirst, false))
            deliver(m_latest);
    }

    void deliver(Value value)
    {
        const auto receiver = m_deliver; // the delivery may end the watch
        receiver(value);
    }

    Clock &m_clock;
    Seconds m_quiet;
    Value m_latest;
    std::function<void(const Value &)> m_deliver;
    bool m_isFirst = true;
    bool m_isWaiting = false;
    Alarm m_alarm;
};

} // namespace tessara
