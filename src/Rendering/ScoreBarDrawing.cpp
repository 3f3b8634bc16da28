#include "Rendering/ScoreBarDrawing.h"

#include "Models/LayerGeometry.h"
#include "Models/ScoreLayer.h"
#include "Rendering/ScoreBarGeometry.h"
#include "Rendering/TextBlockCache.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tessara {

namespace {

// The whole bar in canvas coordinates; the layer's frame shows a part of it.
QRectF laidOutBar(const ScoreLayer &layer, const QRectF &frame)
{
    constexpr double leastSide = 0.0001; // of the bar
    const QRectF crop =
        sanitizedNormalizedRect(layer.cropRectNormalized().value_or(QRectF(0, 0, 1, 1)));
    const double width = frame.width() / std::max(crop.width(), leastSide);
    const double height = frame.height() / std::max(crop.height(), leastSide);
    return {frame.left() - width * crop.left(), frame.top() - height * crop.top(), width, height};
}

RGBAColor withAlpha(RGBAColor color, double alpha)
{
    color.alpha = alpha;
    return color;
}

RGBAColor systemYellow(double alpha)
{
    return {1, 0.8, 0, alpha};
}

void fillRounded(QPainter &painter, const QRectF &rect, double radius, const RGBAColor &color)
{
    const double fitting = std::min({radius, rect.width() * 0.5, rect.height() * 0.5});
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(rect, fitting, fitting);
    painter.fillPath(path, color.color());
}

// The palette's own alphas give way to those of the bar.
void drawPanels(QPainter &painter, const ScoreBarGeometry &geometry, const ScorePalette &palette,
                double opacity)
{
    const double corner = geometry.panelCornerRadius;
    fillRounded(painter, geometry.barRect, geometry.barCornerRadius,
                withAlpha(palette.background, opacity * 0.78));
    fillRounded(painter, geometry.homeRect, corner, withAlpha(palette.home, opacity));
    fillRounded(painter, geometry.centerRect, corner, withAlpha(palette.center, opacity * 0.9));
    fillRounded(painter, geometry.awayRect, corner, withAlpha(palette.away, opacity));
}

void drawBadges(QPainter &painter, const ScoreBarGeometry &geometry, const ScorePalette &palette,
                double opacity)
{
    constexpr double corner = 8;
    for (const QRectF &badge : {geometry.homeBadgeRect, geometry.awayBadgeRect})
        fillRounded(painter, badge, corner, withAlpha(palette.badge, opacity));
}

// Points at the centre panel from outside; `direction` is -1 on the left and 1 on the right.
void drawPointer(QPainter &painter, double edge, double direction, const QRectF &center)
{
    const double tip = edge + direction * 3;
    const double base = tip + direction * std::max(center.height() * 0.12, 9.0);
    const double halfHeight = std::max(center.height() * 0.34, 18.0) * 0.5;
    const double middle = center.center().y();
    QPainterPath path;
    path.addPolygon({{{tip, middle}, {base, middle - halfHeight}, {base, middle + halfHeight}}});
    path.closeSubpath();
    painter.fillPath(path, systemYellow(0.95).color());
}

// Fully there as long as the bar is: no opacity reaches them.
void drawTitleBarOrnaments(QPainter &painter, const ScoreBarGeometry &geometry)
{
    constexpr double inset = 7;
    constexpr double lift = 2; // from the bar's lower edge
    QPainterPath hairline({inset, lift});
    hairline.lineTo(std::max(geometry.barRect.width() - inset, inset), lift);
    painter.strokePath(
        hairline, QPen(withAlpha(RGBAColor::white, 0.62).color(), 1.2, Qt::SolidLine, Qt::FlatCap));
    const QRectF &center = geometry.centerRect;
    drawPointer(painter, center.left(), -1, center);
    drawPointer(painter, center.right(), 1, center);
}

struct Inscription
{
    QString text;
    SizedFont font;
    RGBAColor color;
    QRectF target; // the text stands in its middle and may be larger
};

struct BarFonts
{
    SizedFont team;
    SizedFont score;
    SizedFont period;
    SizedFont clock;
};

BarFonts standardFonts(double height)
{
    return {systemFont(std::max(height * 0.17, 16.0), QFont::Bold),
            monospacedDigitSystemFont(std::max(height * 0.26, 20.0), QFont::Bold),
            systemFont(std::max(height * 0.14, 13.0), QFont::DemiBold),
            monospacedDigitSystemFont(std::max(height * 0.19, 16.0), QFont::Bold)};
}

BarFonts titleBarFonts(double height)
{
    return {systemFont(std::max(height * 0.38, 26.0), QFont::Black),
            monospacedDigitSystemFont(std::max(height * 0.46, 34.0), QFont::Black),
            systemFont(std::max(height * 0.34, 24.0), QFont::Black),
            monospacedDigitSystemFont(std::max(height * 0.40, 28.0), QFont::Black)};
}

QRectF besideBadge(const QRectF &panel, const QRectF &badge)
{
    return {panel.left() + 8, panel.top(), panel.width() - badge.width() - 20, panel.height()};
}

// `from` is counted from the lower edge, in fractions of the height like `height`.
QRectF band(const QRectF &rect, double from, double height)
{
    return {rect.left(), rect.top() + rect.height() * from, rect.width(), rect.height() * height};
}

// `from` is counted from the left edge, in fractions of the width like `width`.
QRectF column(const QRectF &rect, double from, double width)
{
    return {rect.left() + rect.width() * from, rect.top(), rect.width() * width, rect.height()};
}

std::vector<Inscription> standardInscriptions(const ScoreLayer &layer,
                                              const ScoreBarGeometry &geometry)
{
    const BarFonts fonts = standardFonts(geometry.barRect.height());
    const RGBAColor text = layer.palette().text;
    const RGBAColor black{0, 0, 0, 0.86};
    const QRectF &center = geometry.centerRect;
    const QRectF &homeBadge = geometry.homeBadgeRect;
    const QRectF &awayBadge = geometry.awayBadgeRect;
    return {
        {layer.homeTeam().toUpper(), fonts.team, text, besideBadge(geometry.homeRect, homeBadge)},
        {QString::number(layer.homeScore()), fonts.score, black, homeBadge},
        {layer.awayTeam().toUpper(), fonts.team, text, besideBadge(geometry.awayRect, awayBadge)},
        {QString::number(layer.awayScore()), fonts.score, black, awayBadge},
        {layer.period().toUpper(), fonts.period, withAlpha(text, 0.94), band(center, 0.06, 0.46)},
        {layer.clock().toUpper(), fonts.clock, text, band(center, 0.44, 0.52)},
    };
}

// The two sides are no mirror images, neither in colour nor in measure.
std::vector<Inscription> titleBarInscriptions(const ScoreLayer &layer,
                                              const ScoreBarGeometry &geometry)
{
    const BarFonts fonts = titleBarFonts(geometry.barRect.height());
    const RGBAColor text = layer.palette().text;
    const RGBAColor yellow = systemYellow(0.96);
    const QRectF &home = geometry.homeRect;
    const QRectF &center = geometry.centerRect;
    const QRectF &away = geometry.awayRect;
    return {
        {layer.homeTeam().toUpper(), fonts.team, text, column(home, 0, 0.64)},
        {QString::number(layer.homeScore()), fonts.score, yellow, column(home, 0.62, 0.34)},
        {layer.period().toUpper(), fonts.period, yellow, column(center, 0.02, 0.44)},
        {layer.clock().toUpper(), fonts.clock, text, column(center, 0.48, 0.48)},
        {layer.awayTeam().toUpper(), fonts.team, text, column(away, 0, 0.62)},
        {QString::number(layer.awayScore()), fonts.score, text, column(away, 0.64, 0.34)},
    };
}

// Upright, hence not in the bar's own turned coordinates.
void drawInscription(QPainter &painter, const Inscription &inscription, const QRectF &bar,
                     TextBlockCache &texts)
{
    if (inscription.text.isEmpty())
        return;
    const auto block =
        texts.block(inscription.text, inscription.font, TextLayerHorizontalAlignment::center);
    const QPointF middle = inscription.target.center();
    const QPointF half = QPointF(block->size().width(), block->size().height()) * 0.5;
    block->draw(painter, QPointF(bar.left() + middle.x(), bar.bottom() - middle.y()) - half,
                {inscription.color.color(), {}, 0});
}

// A painter clips by whole pixels: outward, so that the bar's own edges stay soft between two rows.
QRectF visiblePart(const QPainter &painter, const QRectF &frame)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
    const QRectF pixels = toDevice.mapRect(frame).intersected(device).toAlignedRect();
    return toDevice.inverted().mapRect(pixels);
}

bool hasArea(const QRectF &frame)
{
    return !frame.isEmpty() && std::isfinite(frame.left()) && std::isfinite(frame.right())
           && std::isfinite(frame.top()) && std::isfinite(frame.bottom());
}

} // namespace

void drawScoreBar(QPainter &painter, const ScoreLayer &layer, const QRectF &frame,
                  double runOpacity, TextBlockCache &texts)
{
    const QRectF visible = hasArea(frame) ? visiblePart(painter, frame) : QRectF();
    if (visible.isEmpty())
        return;
    const QRectF bar = laidOutBar(layer, frame);
    const bool isTitleBar = layer.scoreTemplate() == ScoreTemplate::titleBar;
    const ScoreBarGeometry geometry = makeScoreBarGeometry(bar.size(), layer.scoreTemplate());
    const ScorePalette palette = layer.palette();
    const double opacity = layer.opacity() * runOpacity;

    painter.setClipRect(visible, Qt::IntersectClip);
    painter.save();
    painter.translate(bar.bottomLeft());
    painter.scale(1, -1);
    drawPanels(painter, geometry, palette, opacity);
    if (isTitleBar)
        drawTitleBarOrnaments(painter, geometry);
    else
        drawBadges(painter, geometry, palette, opacity);
    painter.restore();

    painter.setOpacity(runOpacity);
    for (const Inscription &inscription :
         isTitleBar ? titleBarInscriptions(layer, geometry) : standardInscriptions(layer, geometry))
        drawInscription(painter, inscription, bar, texts);
}

} // namespace tessara
