// The time that a card keeps until it is given another.
#pragma once

#include "virtual-card/Instruments.h"

namespace tessara::virtualcard {

extern const TessaraVirtualCardTime machineTime;

} // namespace tessara::virtualcard
