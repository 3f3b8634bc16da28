#include "virtual-card/Cadence.h"

#include <algorithm>

namespace tessara::virtualcard {
namespace {

constexpr Cadence::Time second = 1'000'000'000;

} // namespace

Cadence::Cadence(std::int64_t frameDuration, std::int64_t timeScale)
    : m_frameDuration(frameDuration)
    , m_timeScale(timeScale)
{
}

Cadence::Time Cadence::turn(Time now) const
{
    return m_isRunning ? std::max(now, tick(m_nextTick)) : now;
}

void Cadence::take(Time now)
{
    if (m_isRunning) {
        m_nextTick = std::max(m_nextTick + 1, firstTickAfter(now));
        return;
    }
    m_isRunning = true;
    // Half a frame away from a caller at the mode's own rate, who may then be early or late.
    m_firstTick = now + second * m_frameDuration / m_timeScale / 2;
    m_nextTick = 0;
}

// Seconds and the rest apart: no product overflows, and no rounding adds up over a long show.
Cadence::Time Cadence::tick(std::int64_t index) const
{
    const std::int64_t units = index * m_frameDuration;
    return m_firstTick + units / m_timeScale * second + units % m_timeScale * second / m_timeScale;
}

std::int64_t Cadence::firstTickAfter(Time now) const
{
    const double period = double(second) * double(m_frameDuration) / double(m_timeScale);
    auto index = std::max<std::int64_t>(0, std::int64_t(double(now - m_firstTick) / period));
    while (index > 0 && tick(index - 1) > now)
        --index;
    while (tick(index) <= now)
        ++index;
    return index;
}

} // namespace tessara::virtualcard
