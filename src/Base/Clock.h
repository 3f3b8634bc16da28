// Where time comes from: one queue of alarms on the main thread.
#pragma once

#include "Base/Seconds.h"

#include <QDateTime>

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace tessara {

namespace detail {

/// Alarms in due order; those due together keep the order in which they were set.
class AlarmQueue
{
public:
    using Key = std::pair<Nanoseconds, quint64>;

    Key add(Nanoseconds due, std::function<void()> ring);
    void remove(const Key &key) { m_alarms.erase(key); }
    bool isEmpty() const { return m_alarms.empty(); }
    Nanoseconds nextDue() const { return m_alarms.begin()->first.first; }
    quint64 nextSerial() const { return m_serial; }
    /// Rings the first alarm that is due by `now` and was set before `serial`; false with none.
    bool ringOne(Nanoseconds now, quint64 serial);

private:
    std::map<Key, std::function<void()>> m_alarms;
    quint64 m_serial = 0;
};

} // namespace detail

/// A pending call; dropping it calls it off.
class [[nodiscard]] Alarm
{
public:
    Alarm() = default;
    Alarm(std::weak_ptr<detail::AlarmQueue> queue, detail::AlarmQueue::Key key)
        : m_queue(std::move(queue))
        , m_key(key)
    {
    }
    Alarm(Alarm &&other) noexcept = default;
    Alarm &operator=(Alarm &&other) noexcept
    {
        cancel();
        m_queue = std::move(other.m_queue);
        m_key = other.m_key;
        return *this;
    }
    ~Alarm() { cancel(); }

    /// Higher than that of every alarm that was set before.
    quint64 serial() const { return m_key.second; }

    void cancel()
    {
        if (const auto queue = m_queue.lock())
            queue->remove(m_key);
        m_queue.reset();
    }

private:
    std::weak_ptr<detail::AlarmQueue> m_queue;
    detail::AlarmQueue::Key m_key{};
};

class SleepAwaiter;

/// Handed to everything that waits; nothing in the core reads the machine's time by itself.
class Clock
{
public:
    Clock();
    virtual ~Clock();
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;

    /// Since the clock was made. It never goes back.
    virtual Nanoseconds now() const = 0;
    /// Local date and time of day, which the user may set at will.
    virtual QDateTime wallClock() const = 0;

    /// Calls `ring` on the main thread once `due` has come, never within this call.
    Alarm at(Nanoseconds due, std::function<void()> ring);

    /// To be awaited in a `Task`: true after the wait, false if the task was cancelled.
    template <typename Count, typename Period>
    SleepAwaiter sleep(std::chrono::duration<Count, Period> duration);
    /// To be awaited in a `Task`: goes on in the next turn of the main loop.
    SleepAwaiter nextTurn();

protected:
    /// Called when the next alarm may have moved.
    virtual void alarmsChanged() {}
    /// Rings what was due at the start of the call: one turn of the main loop.
    void runTurn();
    detail::AlarmQueue &alarms() { return *m_alarms; }

private:
    std::shared_ptr<detail::AlarmQueue> m_alarms;
};

} // namespace tessara

#include "Base/Task.h"
