#include "Rendering/LayerPrimitives.h"

#include "Models/LayerGeometry.h"
#include "Models/ScoreLayer.h"
#include "Rendering/DrawnText.h"
#include "Rendering/ScoreBarGeometry.h"
#include "Rendering/TextBlockCache.h"

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

// Draws in the bar's own coordinates, y upward.
class BarDrawing
{
public:
    BarDrawing(std::vector<Primitive> &primitives, const QRectF &bar, const QRectF &frame)
        : m_primitives(primitives)
        , m_clip(frame)
    {
        m_toCanvas.translate(bar.left(), bar.bottom());
        m_toCanvas.scale(1, -1);
    }

    void fill(const QPainterPath &path, const RGBAColor &color, const Fading &fading)
    {
        m_primitives.push_back({FilledPath{path, color}, m_toCanvas, fading, m_clip});
    }
    void fillRounded(const QRectF &rect, double radius, const RGBAColor &color,
                     const Fading &fading)
    {
        const double fitting = std::min({radius, rect.width() * 0.5, rect.height() * 0.5});
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        path.addRoundedRect(rect, fitting, fitting);
        fill(path, color, fading);
    }

private:
    std::vector<Primitive> &m_primitives;
    QRectF m_clip;
    QTransform m_toCanvas;
};

// The palette's own alphas give way to those of the bar.
void drawPanels(BarDrawing &drawing, const ScoreBarGeometry &geometry, const ScorePalette &palette,
                const Fading &fading)
{
    const double corner = geometry.panelCornerRadius;
    drawing.fillRounded(geometry.barRect, geometry.barCornerRadius,
                        withAlpha(palette.background, 0.78), fading);
    drawing.fillRounded(geometry.homeRect, corner, withAlpha(palette.home, 1), fading);
    drawing.fillRounded(geometry.centerRect, corner, withAlpha(palette.center, 0.9), fading);
    drawing.fillRounded(geometry.awayRect, corner, withAlpha(palette.away, 1), fading);
}

void drawBadges(BarDrawing &drawing, const ScoreBarGeometry &geometry, const ScorePalette &palette,
                const Fading &fading)
{
    constexpr double corner = 8;
    for (const QRectF &badge : {geometry.homeBadgeRect, geometry.awayBadgeRect})
        drawing.fillRounded(badge, corner, withAlpha(palette.badge, 1), fading);
}

// Points at the centre panel from outside; `direction` is -1 on the left and 1 on the right.
QPainterPath pointer(double edge, double direction, const QRectF &center)
{
    const double tip = edge + direction * 3;
    const double base = tip + direction * std::max(center.height() * 0.12, 9.0);
    const double halfHeight = std::max(center.height() * 0.34, 18.0) * 0.5;
    const double middle = center.center().y();
    QPainterPath path;
    path.addPolygon({{{tip, middle}, {base, middle - halfHeight}, {base, middle + halfHeight}}});
    path.closeSubpath();
    return path;
}

// Fully there as long as the bar is: no opacity reaches them.
void drawTitleBarOrnaments(BarDrawing &drawing, const ScoreBarGeometry &geometry)
{
    constexpr double inset = 7;
    constexpr double lift = 2; // from the bar's lower edge
    constexpr double hairlineWidth = 1.2;
    const Fading never{Fading::Means::none};
    const double end = std::max(geometry.barRect.width() - inset, inset);
    QPainterPath hairline;
    hairline.addRect(inset, lift - hairlineWidth / 2, end - inset, hairlineWidth);
    drawing.fill(hairline, withAlpha(RGBAColor::white, 0.62), never);
    const QRectF &center = geometry.centerRect;
    drawing.fill(pointer(center.left(), -1, center), systemYellow(0.95), never);
    drawing.fill(pointer(center.right(), 1, center), systemYellow(0.95), never);
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
        {drawnText(layer.homeTeam()).toUpper(), fonts.team, text,
         besideBadge(geometry.homeRect, homeBadge)},
        {QString::number(layer.homeScore()), fonts.score, black, homeBadge},
        {drawnText(layer.awayTeam()).toUpper(), fonts.team, text,
         besideBadge(geometry.awayRect, awayBadge)},
        {QString::number(layer.awayScore()), fonts.score, black, awayBadge},
        {drawnText(layer.period()).toUpper(), fonts.period, withAlpha(text, 0.94),
         band(center, 0.06, 0.46)},
        {drawnText(layer.clock()).toUpper(), fonts.clock, text, band(center, 0.44, 0.52)},
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
        {drawnText(layer.homeTeam()).toUpper(), fonts.team, text, column(home, 0, 0.64)},
        {QString::number(layer.homeScore()), fonts.score, yellow, column(home, 0.62, 0.34)},
        {drawnText(layer.period()).toUpper(), fonts.period, yellow, column(center, 0.02, 0.44)},
        {drawnText(layer.clock()).toUpper(), fonts.clock, text, column(center, 0.48, 0.48)},
        {drawnText(layer.awayTeam()).toUpper(), fonts.team, text, column(away, 0, 0.62)},
        {QString::number(layer.awayScore()), fonts.score, text, column(away, 0.64, 0.34)},
    };
}

// Upright, hence not in the bar's own turned coordinates.
void appendInscription(std::vector<Primitive> &primitives, const Inscription &inscription,
                       const QRectF &bar, const QRectF &frame, TextBlockCache &texts)
{
    if (inscription.text.isEmpty())
        return;
    const auto block =
        texts.block(inscription.text, inscription.font, TextLayerHorizontalAlignment::center);
    const QPointF middle = inscription.target.center();
    const QPointF half = QPointF(block->size().width(), block->size().height()) * 0.5;
    const std::size_t before = primitives.size();
    appendText(primitives, *block,
               QPointF(bar.left() + middle.x(), bar.bottom() - middle.y()) - half,
               {inscription.color}, {}, frame.adjusted(-2, -2, 2, 2));
    for (std::size_t index = before; index < primitives.size(); ++index)
        primitives[index].clip = frame;
}

bool hasArea(const QRectF &frame)
{
    return !frame.isEmpty() && std::isfinite(frame.left()) && std::isfinite(frame.right())
           && std::isfinite(frame.top()) && std::isfinite(frame.bottom());
}

} // namespace

std::vector<Primitive> scoreBarPrimitives(const ScoreLayer &layer, const QRectF &frame,
                                          TextBlockCache &texts)
{
    if (!hasArea(frame))
        return {};
    const QRectF bar = laidOutBar(layer, frame);
    const bool isTitleBar = layer.scoreTemplate() == ScoreTemplate::titleBar;
    const ScoreBarGeometry geometry = makeScoreBarGeometry(bar.size(), layer.scoreTemplate());
    const ScorePalette palette = layer.palette();
    const Fading fading{Fading::Means::color, layer.opacity()};
    std::vector<Primitive> primitives;
    BarDrawing drawing(primitives, bar, frame);
    drawPanels(drawing, geometry, palette, fading);
    if (isTitleBar)
        drawTitleBarOrnaments(drawing, geometry);
    else
        drawBadges(drawing, geometry, palette, fading);
    for (const Inscription &inscription :
         isTitleBar ? titleBarInscriptions(layer, geometry) : standardInscriptions(layer, geometry))
        appendInscription(primitives, inscription, bar, frame, texts);
    return primitives;
}

} // namespace tessara
