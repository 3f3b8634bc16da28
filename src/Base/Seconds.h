// Durations as the operator and the files speak of them, and as the clock counts them.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tessara {

using Seconds = std::chrono::duration<double>;
using Nanoseconds = std::chrono::nanoseconds;

/// The nearest whole nanosecond; a negative or non-finite duration is none at all.
template <typename Count, typename Period>
Nanoseconds toNanoseconds(std::chrono::duration<Count, Period> duration)
{
    if constexpr (std::chrono::treat_as_floating_point_v<Count>) {
        constexpr double longest = 9.0e18; // ns; 285 years
        const double nanoseconds = Seconds(duration).count() * 1e9;
        if (!(nanoseconds > 0))
            return Nanoseconds{0};
        return Nanoseconds{std::llround(std::min(nanoseconds, longest))};
    } else {
        return std::max(Nanoseconds{duration}, Nanoseconds{0});
    }
}

} // namespace tessara
