// Sprites made ahead of their time, on a thread of its own.
#pragma once

#include "Rendering/FramePath/Sprite.h"

#include <atomic>
#include <thread>

namespace tessara {

/// Takes one batch at a time and is asked from one thread. What it makes is out of the way of the
/// frames, and nobody waits for it.
class SpriteMaker
{
    Q_DISABLE_COPY_MOVE(SpriteMaker)

public:
    struct Order
    {
        Primitive primitive;
        QTransform canvasToDevice;
        QRect area;
    };

    SpriteMaker() = default;
    /// Waits for the sprite that is under way.
    ~SpriteMaker();

    bool isIdle() const { return m_state == State::idle; }
    bool isDone() const { return m_state == State::done; }
    /// Only while it is idle; it is not before the results have been taken.
    void start(std::vector<Order> orders);
    /// In the order of the batch, once it is done.
    std::vector<std::shared_ptr<const Sprite>> takeResults();

private:
    enum class State { idle, ordered, done, ending };

    void work();

    std::atomic<State> m_state = State::idle;
    std::atomic<bool> m_isEnding = false;
    std::vector<Order> m_orders;
    std::vector<std::shared_ptr<const Sprite>> m_results;
    std::thread m_thread; // from the first batch on
};

} // namespace tessara
