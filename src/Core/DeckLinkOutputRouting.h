// How the frame leaves: which devices, over what background, with which key.
#pragma once

#include <QObject>
#include <QString>

namespace tessara {

// An enumeration of its own, since the namespace's vocabulary header belongs to the layers.
class OutputRouting
{
    Q_GADGET

public:
    enum class DeckLinkOutputRouting { fillOnly, greenScreen, keyAndFill, keyAndFillAB };
    Q_ENUM(DeckLinkOutputRouting)
};
using DeckLinkOutputRouting = OutputRouting::DeckLinkOutputRouting;

/// As the routing picker names it.
QString label(DeckLinkOutputRouting routing);

} // namespace tessara
