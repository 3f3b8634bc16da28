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

private:
    void wait()
    {
        m_alarm = m_clock.at(m_clock.now() + toNanoseconds(m_quiet), [this] { pass(); });
    }

    void pass()
    {
        if (std::exchange(m_isFirst, false))
            return;
        const auto deliver = m_deliver; // the delivery may end the watch
        const Value value = m_latest;
        deliver(value);
    }

    Clock &m_clock;
    Seconds m_quiet;
    Value m_latest;
    std::function<void(const Value &)> m_deliver;
    bool m_isFirst = true;
    Alarm m_alarm;
};

} // namespace tessara
