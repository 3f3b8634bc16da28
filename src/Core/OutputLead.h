// How long before its time a frame is begun.
#pragma once

#include "Base/Seconds.h"

namespace tessara {

/// A still picture is composed in no time, a dissolve of everything is not, and a machine that has
/// other things to do takes twice as long for it. Frames leave evenly where each is begun so early
/// that the slowest of the last minutes would have been done in half the time.
class OutputLead
{
public:
    explicit OutputLead(Nanoseconds interval);

    Nanoseconds value() const { return m_value; }
    /// A frame was ready so long after its beat. What took more than most of an interval is an
    /// exception that no other frame is begun earlier for.
    void noteReady(Nanoseconds afterBeat);

private:
    Nanoseconds m_longest;
    Nanoseconds m_value{0};
};

} // namespace tessara
