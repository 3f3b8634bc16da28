// Where in a card's frame the beat of an output falls.
#pragma once

#include "Base/Seconds.h"

namespace tessara {

/// A card holds one frame ahead. Once a beat was late enough for the card to go on without it, each
/// of the next finds the card full, and its display call holds the main thread until the card's
/// next frame: for up to a whole interval, on every beat from then on. So the beat moves on until
/// calls find room again, by steps that nobody sees as late frames.
///
/// A card that holds every call can't be got away from: where waits soon come back, the beat has
/// moved by little more than two intervals in all, and then stays.
class OutputPhase
{
public:
    explicit OutputPhase(Nanoseconds interval);

    /// How much later the next beats are to come, after one whose display calls have waited for
    /// `waited`.
    Nanoseconds delayAfter(Nanoseconds waited);

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
