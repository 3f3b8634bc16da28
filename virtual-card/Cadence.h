// When frames go out: in the exact steps of a mode's rate.
#pragma once

#include <cstdint>

namespace tessara::virtualcard {

class Cadence
{
public:
    using Time = std::int64_t; // ns of a clock that never jumps

    /// A rate of timeScale / frameDuration frames a second.
    Cadence(std::int64_t frameDuration, std::int64_t timeScale);

    /// When a frame that is offered now can be taken: now, or when the frame before has gone out.
    Time turn(Time now) const;
    void take(Time now);

private:
    Time tick(std::int64_t index) const;
    std::int64_t firstTickAfter(Time now) const;

    std::int64_t m_frameDuration;
    std::int64_t m_timeScale;
    bool m_isRunning = false;
    Time m_firstTick = 0;
    std::int64_t m_nextTick = 0; // at which the frame that was taken last goes out
};

} // namespace tessara::virtualcard
