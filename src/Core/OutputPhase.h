// Where in a card's frame the beat of an output falls.
#pragma once

#include "Base/Seconds.h"

namespace tessara {

/// For cards whose display call returns as soon as they have room, and waits for it while they are
/// full: they hold one frame ahead. Once a beat was late enough for such a card to go on without
/// it, each of the next finds it full, and the call holds the main thread until the card's next
/// frame: for up to a whole interval, on every beat from then on. So the beat moves on until calls
/// find room again, by steps that nobody sees as late frames.
///
/// A card that holds every call, until the frame is out or while it copies, can't be got away from:
/// where long calls soon come back, the beat has moved by little more than two intervals in all,
/// and then stays.
class OutputPhase
{
public:
    explicit OutputPhase(Nanoseconds interval);

    /// How much later the next beats are to come, after one whose display calls have taken
    /// `duration`, of which less than a twentieth of an interval counts as no wait.
    Nanoseconds delayAfter(Nanoseconds duration);

private:
    Nanoseconds delayAfterWait();
    Nanoseconds delayAfterRoom();
    Nanoseconds moveBy(Nanoseconds delay);

    Nanoseconds m_negligible;
    Nanoseconds m_step;
    Nanoseconds m_farthest;
    Nanoseconds m_moved{0}; // since calls last found room for a while
    bool m_isMoving = false;
    int m_waits = 0; // in a row
    int m_rooms = 0; // in a row
};

} // namespace tessara
