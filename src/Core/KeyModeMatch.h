// Which mode of the key device goes with the fill's.
#pragma once

#include "DeckLink/DeckLinkModels.h"

#include <QList>

#include <optional>

namespace tessara {

/// The same mode if it is among `modes`, else the first of the same size and nearly the same rate.
std::optional<DeckLinkDisplayMode> matchingMode(const QList<DeckLinkDisplayMode> &modes,
                                                const DeckLinkDisplayMode &wanted);

} // namespace tessara
