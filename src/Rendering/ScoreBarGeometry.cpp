#include "Rendering/ScoreBarGeometry.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

struct TemplateMeasures
{
    double barCornerRadius;
    double panelCornerRadius;
    double gap;         // between neighbouring panels
    double centerShare; // of the content's width
    double homeShare;   // of the content's width; the away team has the rest
    double insetX;
    double insetY;
};

TemplateMeasures measuresOf(ScoreTemplate scoreTemplate)
{
    switch (scoreTemplate) {
    case ScoreTemplate::wideBroadcast:
        return {16, 10, 10, 0.34, 0.33, 12, 18};
    case ScoreTemplate::compactStrip:
        return {12, 8, 8, 0.38, 0.31, 10, 16};
    case ScoreTemplate::titleBar:
        return {4, 2, 6, 0.31, 0.31, 10, 12};
    }
    Q_UNREACHABLE();
}

// At the panel's right end.
QRectF badgeIn(const QRectF &panel)
{
    const double width = std::clamp(panel.height() * 0.72, 58.0, 92.0);
    const double height = std::max(panel.height() * 0.74, 26.0);
    const double margin = std::max((panel.height() - height) * 0.5, 6.0);
    return {panel.right() - width - margin, panel.top() + margin, width, height};
}

} // namespace

ScoreBarGeometry makeScoreBarGeometry(QSizeF size, ScoreTemplate scoreTemplate)
{
    const TemplateMeasures measures = measuresOf(scoreTemplate);
    const double gap = measures.gap;
    const double contentWidth = std::max(size.width() - 2 * measures.insetX, 120.0);
    const double height = std::max(size.height() - 2 * measures.insetY, 32.0);
    const double homeWidth = std::trunc(measures.homeShare * contentWidth);
    const double centerWidth = std::trunc(measures.centerShare * contentWidth);
    const double awayWidth = std::max(contentWidth - homeWidth - centerWidth - 2 * gap, 80.0);

    ScoreBarGeometry geometry;
    geometry.barRect = {QPointF(0, 0), size};
    geometry.homeRect = {measures.insetX, measures.insetY, homeWidth, height};
    geometry.centerRect = {geometry.homeRect.right() + gap, measures.insetY, centerWidth, height};
    geometry.awayRect = {geometry.centerRect.right() + gap, measures.insetY, awayWidth, height};
    geometry.homeBadgeRect = badgeIn(geometry.homeRect);
    geometry.awayBadgeRect = badgeIn(geometry.awayRect);
    geometry.barCornerRadius = measures.barCornerRadius;
    geometry.panelCornerRadius = measures.panelCornerRadius;
    return geometry;
}

} // namespace tessara
