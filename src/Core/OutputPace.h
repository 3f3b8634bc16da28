// When within a beat its frame is shown.
#pragma once

#include "Base/Seconds.h"

namespace tessara {

/// A still picture is composed in no time, a dissolve of everything is not. Shown as soon as they
/// are composed, the first frame of each dissolve would leave late, and the first after it early.
/// So each frame is shown as late after its beat as the slowest of the last minutes.
class OutputPace
{
public:
    explicit OutputPace(Nanoseconds interval);

    /// How long after its beat a frame is to be shown that took `composing`. One that took more
    /// than half an interval is an exception that the others don't wait for.
    Nanoseconds delayFor(Nanoseconds composing);

private:
    Nanoseconds m_longest;
    Nanoseconds m_delay{0};
};

} // namespace tessara
