// Presets in a script: their file's own JSON.
#pragma once

#include "Automation/Codec.h"

#include <map>

namespace tessara {

std::map<int, Codec> presetCodecs();

} // namespace tessara
