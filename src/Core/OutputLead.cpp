#include "Core/OutputLead.h"

#include <algorithm>

namespace tessara {

OutputLead::OutputLead(Nanoseconds interval)
    : m_longest(interval * 3 / 5) // what is left is for the card to fetch it
{
}

void OutputLead::noteReady(Nanoseconds afterBeat)
{
    constexpr int memory = 4096; // beats until a third is left; more than a minute
    if (afterBeat <= m_longest)
        m_value = std::min(std::max(2 * afterBeat, m_value - m_value / memory), m_longest);
}

} // namespace tessara
