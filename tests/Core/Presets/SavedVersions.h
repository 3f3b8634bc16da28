// What the preset that is saved over and over holds.
#pragma once

#include <QString>

namespace tessara {

/// Of different lengths, so that no mixture of both passes for one.
inline QString pictureOf(int version)
{
    return version == 0 ? QString(400'000, QLatin1Char('A')) : QString(100'000, QLatin1Char('B'));
}

} // namespace tessara
