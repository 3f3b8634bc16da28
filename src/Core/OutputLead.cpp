#include "Core/OutputLead.h"

#include <algorithm>

namespace tessara {

OutputLead::OutputLead(Nanoseconds interval)
    : m_longest(interval * 17 / 20) // what is left is for what else there is to do
{
}

void OutputLead::noteReady(Nanoseconds afterBeat)
{
    constexpr int memory = 4096; // beats until a third is left; more than a minute
    if (afterBeat <= m_longest)
        m_value = std::min(std::max(2 * afterBeat, m_value - m_value / memory), m_longest);
}

} // namespace tessara
