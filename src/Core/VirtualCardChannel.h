// Where the virtual card of one set of user data is seen by other programs.
#pragma once

#include "Base/ApplicationSupport.h"

namespace tessara {

enum class CardPace {
    realTime,   // frames go out at the mode's rate
    freeRunning // no call ever waits, for a clock that isn't real
};

/// The same data folder gives the same channel in every program; the user's own folder has the
/// card's default one, which is empty here.
QString virtualCardChannel(const ApplicationSupport &support);

/// Sets up the virtual card of this process, before its first use. Nothing happens where a real
/// driver is loaded. A free-running card has a channel of this process alone.
void prepareVirtualCard(const ApplicationSupport &support, CardPace pace);

} // namespace tessara
