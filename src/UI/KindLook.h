// How the kinds of layers look in lists and heads.
#pragma once

#include <QString>

#include "Models/CanvasLayerItem.h"

namespace tessara {

struct KindLook
{
    QString icon;
    QString typeText;
    bool isLiveView = false; // shown on the canvas, and never on a card
};

KindLook lookOf(const CanvasLayerItem &item);

} // namespace tessara
