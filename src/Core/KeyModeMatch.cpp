#include "Core/KeyModeMatch.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr double rateTolerance = 0.02; // frames a second; from there on two modes don't match

} // namespace

std::optional<DeckLinkDisplayMode> matchingMode(const QList<DeckLinkDisplayMode> &modes,
                                                const DeckLinkDisplayMode &wanted)
{
    const auto same = std::find_if(modes.begin(), modes.end(),
                                   [&](const auto &mode) { return mode.modeID == wanted.modeID; });
    if (same != modes.end())
        return *same;
    const auto alike = std::find_if(modes.begin(), modes.end(), [&](const auto &mode) {
        return mode.width == wanted.width && mode.height == wanted.height
               && std::abs(mode.rate() - wanted.rate()) < rateTolerance;
    });
    return alike == modes.end() ? std::nullopt : std::optional(*alike);
}

} // namespace tessara
