#include "Rendering/FramePath/SpriteMaker.h"

namespace tessara {

SpriteMaker::~SpriteMaker()
{
    if (!m_thread.joinable())
        return;
    m_isEnding = true;
    m_state = State::ending;
    m_state.notify_one();
    m_thread.join();
}

void SpriteMaker::start(std::vector<Order> orders)
{
    Q_ASSERT(isIdle());
    m_orders = std::move(orders);
    m_results.clear();
    m_state = State::ordered;
    m_state.notify_one();
    if (!m_thread.joinable())
        m_thread = std::thread([this] { work(); });
}

std::vector<std::shared_ptr<const Sprite>> SpriteMaker::takeResults()
{
    Q_ASSERT(isDone());
    m_orders.clear();
    m_state = State::idle;
    return std::move(m_results);
}

// At ordinary priority: below it, a lock that it holds could keep the frames waiting.
void SpriteMaker::work()
{
    while (!m_isEnding) {
        const State state = m_state;
        if (state != State::ordered) {
            m_state.wait(state);
            continue;
        }
        for (const Order &order : m_orders) {
            if (m_isEnding)
                return;
            m_results.push_back(Sprite::make(order.primitive, order.canvasToDevice, order.area));
        }
        State ordered = State::ordered;
        m_state.compare_exchange_strong(ordered, State::done);
    }
}

} // namespace tessara
