// Delays and ramps: cancellable coroutines on the main thread.
#pragma once

#include "Base/Clock.h"

#include <coroutine>
#include <exception>

namespace tessara {

/// A running coroutine. Cancelling or dropping it ends it where it waits; a task that cancels
/// itself runs on to its next wait, which then answers false.
///
/// It starts within the call that makes it. A task whose first step belongs to the next turn of the
/// main loop awaits `Clock::nextTurn()` first. Coroutines take their arguments by value.
class [[nodiscard]] Task
{
public:
    struct Control
    {
        std::coroutine_handle<> waiting; // empty while the body runs
        bool cancelled = false;
        bool finished = false;
    };

    struct promise_type
    {
        std::shared_ptr<Control> control = std::make_shared<Control>();

        Task get_return_object() { return Task(control); }
        std::suspend_never initial_suspend() noexcept { return {}; }
        std::suspend_never final_suspend() noexcept { return {}; }
        void return_void() { control->finished = true; }
        void unhandled_exception() { std::terminate(); }
    };

    Task() = default;
    Task(Task &&other) noexcept = default;
    Task &operator=(Task &&other) noexcept
    {
        if (this != &other) {
            cancel();
            m_control = std::move(other.m_control);
        }
        return *this;
    }
    ~Task() { cancel(); }

    bool isActive() const { return m_control && !m_control->finished && !m_control->cancelled; }

    void cancel()
    {
        const std::shared_ptr<Control> control = std::move(m_control);
        if (!control || control->finished)
            return;
        control->cancelled = true;
        if (const auto waiting = std::exchange(control->waiting, {}))
            waiting.destroy();
    }

private:
    explicit Task(std::shared_ptr<Control> control)
        : m_control(std::move(control))
    {
    }

    std::shared_ptr<Control> m_control;
};

class [[nodiscard]] SleepAwaiter
{
public:
    SleepAwaiter(Clock &clock, Nanoseconds due)
        : m_clock(clock)
        , m_due(due)
    {
    }

    bool await_ready() const { return false; }

    /// A task that has been cancelled goes on at once, to hear of it.
    bool await_suspend(std::coroutine_handle<Task::promise_type> task)
    {
        m_control = task.promise().control;
        if (m_control->cancelled)
            return false;
        m_control->waiting = task;
        m_alarm = m_clock.at(m_due, [control = m_control] {
            if (const auto waiting = std::exchange(control->waiting, {}))
                waiting.resume();
        });
        return true;
    }

    bool await_resume() const { return !m_control->cancelled; }

private:
    Clock &m_clock;
    Nanoseconds m_due;
    std::shared_ptr<Task::Control> m_control;
    Alarm m_alarm;
};

template <typename Count, typename Period>
SleepAwaiter Clock::sleep(std::chrono::duration<Count, Period> duration)
{
    return {*this, now() + toNanoseconds(duration)};
}

inline SleepAwaiter Clock::nextTurn()
{
    return {*this, now()};
}

} // namespace tessara
