#include "Core/OutputPace.h"

#include <algorithm>

namespace tessara {

OutputPace::OutputPace(Nanoseconds interval)
    : m_longest(interval / 2)
{
}

Nanoseconds OutputPace::delayFor(Nanoseconds composing)
{
    constexpr int halfLife = 4096; // beats, nearly; more than a minute
    if (composing > m_longest)
        return m_delay;
    m_delay = std::max(composing, m_delay - m_delay / halfLife);
    return m_delay;
}

} // namespace tessara
