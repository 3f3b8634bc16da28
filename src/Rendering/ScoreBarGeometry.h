// Where the parts of a score bar lie.
#pragma once

#include <QRectF>

#include "Models/LayerEnums.h"

namespace tessara {

/// From the bar's lower left corner with y upward: a rectangle's `top()` is its lower edge.
struct ScoreBarGeometry
{
    QRectF barRect;
    QRectF homeRect;
    QRectF centerRect; // period and clock
    QRectF awayRect;
    QRectF homeBadgeRect; // score of the home team, inside its panel
    QRectF awayBadgeRect;
    double barCornerRadius = 0;
    double panelCornerRadius = 0;

    bool operator==(const ScoreBarGeometry &) const = default;
};

/// The parts have least sizes: those of a very small bar reach beyond it.
ScoreBarGeometry makeScoreBarGeometry(QSizeF size, ScoreTemplate scoreTemplate);

} // namespace tessara
