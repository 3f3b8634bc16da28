#include "Rendering/FramePath/RandomLayers.h"

#include <QPainter>

#include <cmath>
#include <limits>

namespace tessara {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double endless = std::numeric_limits<double>::infinity();

// Big and opaque, soft, noisy, thin, a single pixel.
QImage randomImage(Dice &dice)
{
    const QSize size(dice.oneOf({1, 3, 16, 40, 64, 129, 300}), dice.oneOf({1, 2, 17, 40, 90, 200}));
    QImage image(size, QImage::Format_ARGB32);
    const int kind = dice.below(5);
    const QRgb color = dice.word();
    for (int y = 0; y < size.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const int across = 255 * x / size.width();
            const int down = 255 * y / size.height();
            switch (kind) {
            case 0:
                row[x] = qRgb(across, down, 128);
                break;
            case 1:
                row[x] = qRgba(across, 255 - across, down, down);
                break;
            case 2:
                row[x] = dice.word();
                break;
            case 3:
                row[x] = (x / 8 + y / 8) % 2 == 0 ? color | 0xff000000 : 0;
                break;
            default:
                row[x] = color;
            }
        }
    }
    return image;
}

// Made once, for its smaller levels take time.
const std::vector<Picture> &sharedPictures()
{
    static const std::vector<Picture> pictures = [] {
        Dice dice(4711);
        std::vector<Picture> made(48);
        for (Picture &picture : made)
            picture = Picture(randomImage(dice));
        return made;
    }();
    return pictures;
}

} // namespace

double RandomLayers::opacity()
{
    if (m_dice.chance(0.5))
        return 1;
    return m_dice.oneOf({0.0, none, 1.7, -0.3, endless, 0.5, 1 / 255.0, 0.999, m_dice.fraction(),
                         m_dice.fraction(), m_dice.fraction()});
}

double RandomLayers::radius()
{
    return m_dice.oneOf({0.0, 0.0, 3.0, 8.5, 1000.0, none, endless, m_dice.between(0, 30)});
}

RGBAColor RandomLayers::color()
{
    RGBAColor color{m_dice.fraction(), m_dice.fraction(), m_dice.fraction(), 1};
    if (m_dice.chance(0.4))
        color.alpha = opacity();
    if (m_dice.chance(0.1))
        color = {1, 1, 1, color.alpha};
    return color;
}

QPointF RandomLayers::place(QSizeF canvas)
{
    const QPointF point(m_dice.between(-0.2, 1) * canvas.width(),
                        m_dice.between(-0.2, 1) * canvas.height());
    const double share = m_dice.fraction();
    if (share < 0.45)
        return {std::floor(point.x()), std::floor(point.y())};
    if (share < 0.93)
        return point;
    return m_dice.oneOf({QPointF(-1e4, 0), QPointF(3 * canvas.width(), 10), QPointF(1e6, -1e6),
                         point * 20, QPointF(0, canvas.height() - 0.5), QPointF(none, 10),
                         QPointF(10, endless), QPointF(-endless, none), QPointF(1e300, -1e300)});
}

double RandomLayers::side(double canvas)
{
    const double share = m_dice.fraction();
    if (share < 0.4)
        return std::floor(m_dice.between(1, 0.7 * canvas));
    if (share < 0.8)
        return m_dice.between(0.5, 0.9 * canvas);
    if (share < 0.9)
        return std::floor(canvas * m_dice.between(1, 1.5));
    return m_dice.oneOf({0.0, 0.01, 0.4, 1.0, -5.0, 3 * canvas, 30 * canvas, 1e5, none, endless});
}

QSizeF RandomLayers::size(QSizeF canvas)
{
    if (m_dice.chance(0.1))
        return canvas;
    const double width = side(canvas.width());
    return {width, side(canvas.height())};
}

QString RandomLayers::words()
{
    static const QStringList all = {
        "",
        "Title",
        "EVENING NEWS",
        "A longer line, which wraps in a box",
        "Two\nlines",
        "  trailing  ",
        "สวัสดีชาวโลก",
        "ข่าวภาคค่ำ ก็ดี ที่นี่",
        "مرحبا بالعالم",
        "خبر 2026 عاجل",
        "日本語の見出し",
        "今晚新闻",
        "뉴스 속보",
        "Goal ⚽ 🎉",
        "👍🏽👨‍👩‍👧",
        "e\u0301a\u0308 ﬁ",
        "12:34:56",
        "\r\n\n.",
    };
    return m_dice.anyOf(all);
}

double RandomLayers::fontSize()
{
    // From a few, so that most texts are laid out already.
    return m_dice.oneOf({12.0, 18.0, 18.5, 30.0, 30.0, 46.3, 0.6, 70.0, none, -3.0});
}

std::optional<QString> RandomLayers::family()
{
    return m_dice.oneOf<std::optional<QString>>(
        {std::nullopt, std::nullopt, QString("DejaVu Serif"), QString("No such face")});
}

Picture RandomLayers::picture()
{
    if (m_dice.chance(0.04))
        return {};
    return m_dice.chance(0.1) ? Picture(randomImage(m_dice)) : m_dice.anyOf(sharedPictures());
}

std::optional<QRectF> RandomLayers::crop()
{
    if (m_dice.chance(0.4))
        return std::nullopt;
    return QRectF(m_dice.between(-0.2, 0.8), m_dice.between(0, 0.8), m_dice.between(0, 1.1),
                  m_dice.between(0.01, 1));
}

void RandomLayers::editPlace(Layer &layer, QSizeF canvas)
{
    const QPointF old = layer.position();
    if (m_dice.chance(0.4))
        layer.setPosition(old + QPointF(m_dice.below(9) - 4, m_dice.below(9) - 4));
    else if (m_dice.chance(0.15))
        layer.setPosition(old + QPointF(m_dice.between(-1, 1), m_dice.between(-1, 1)));
    else
        layer.setPosition(place(canvas));
    if (m_dice.chance(0.05))
        layer.setIsHidden(!layer.isHidden());
    if (m_dice.chance(0.05))
        layer.setName(words());
}

void RandomLayers::editSize(SizedLayer &layer, QSizeF canvas)
{
    if (m_dice.chance(0.5))
        layer.setSize(size(canvas));
    else
        layer.setOpacity(opacity());
}

void RandomLayers::edit(TextLayer &layer, QSizeF canvas)
{
    switch (m_dice.below(9)) {
    case 0:
        return layer.setText(words());
    case 1:
        return layer.setFontSize(fontSize());
    case 2:
        return layer.setFontFamily(family());
    case 3:
        return layer.setFontWeight(
            m_dice.oneOf<std::optional<double>>({std::nullopt, 100, 400, 900}));
    case 4:
        return layer.setColor(color());
    case 5:
        return layer.setOutlineColor(color());
    case 6:
        return layer.setOutlineWidth(m_dice.oneOf({0.0, 0.0, 2.0, 7.5, 40.0, none}));
    case 7:
        if (m_dice.chance(0.4))
            return layer.setTextBoxSize(std::nullopt);
        return layer.setTextBoxSize(QSizeF(m_dice.oneOf({0.2, 60.0, 120.0, canvas.width()}),
                                           m_dice.oneOf({0.0, 40.0, 90.5, canvas.height()})));
    default:
        using enum TextLayerHorizontalAlignment;
        return layer.setHorizontalAlignment(m_dice.oneOf({leading, center, trailing}));
    }
}

void RandomLayers::edit(ImageLayer &layer, QSizeF canvas)
{
    switch (m_dice.below(7)) {
    case 0:
        return layer.setImage(picture());
    case 1:
        return layer.setCropRectNormalized(crop());
    case 2:
        using enum ImageLayerContentMode;
        return layer.setContentMode(m_dice.oneOf({fillCrop, fitInside}));
    case 3: {
        using enum ImageLayerMaskShape;
        return layer.setMaskShape(
            m_dice.oneOf({rectangle, roundedRectangle, circle, hexagon, shield, customPolygon}));
    }
    case 4:
        return layer.setMaskPadding(m_dice.oneOf({0.0, 0.0, 4.0, 7.25, 500.0, -3.0, none}));
    default:
        return editSize(layer, canvas);
    }
}

void RandomLayers::edit(ShapeLayer &layer, QSizeF canvas)
{
    switch (m_dice.below(6)) {
    case 0: {
        using enum ShapeKind;
        return layer.setKind(
            m_dice.oneOf({rectangle, ellipse, triangle, diamond, star, line, custom}));
    }
    case 1:
        return layer.setColor(color());
    case 2:
        return layer.setCornerRadius(radius());
    case 3: {
        QList<QPointF> points(m_dice.oneOf({0, 1, 2, 3, 5, 12}));
        for (QPointF &point : points)
            point = {m_dice.between(-0.1, 1.1), m_dice.between(-0.1, 1.1)};
        if (!points.isEmpty() && m_dice.chance(0.1))
            points.first().setX(m_dice.oneOf({none, endless}));
        return layer.setCustomPoints(points);
    }
    default:
        return editSize(layer, canvas);
    }
}

void RandomLayers::edit(ScoreLayer &layer, QSizeF canvas)
{
    switch (m_dice.below(8)) {
    case 0: {
        using enum ScoreTemplate;
        return layer.setScoreTemplate(m_dice.oneOf({wideBroadcast, compactStrip, titleBar}));
    }
    case 1: {
        using enum ScoreSportPreset;
        layer.setSportPreset(
            m_dice.oneOf({football, basketball, volleyball, badminton, futsal, baseball}));
        return m_dice.chance(0.5) ? layer.applySportPreset() : layer.applyTemplateSize();
    }
    case 2:
        return layer.setHomeTeam(words());
    case 3:
        layer.setHomeScore(m_dice.below(12));
        return layer.setAwayScore(m_dice.below(12));
    case 4:
        return layer.setClock(m_dice.oneOf<QString>({"12:00", "00:01", "LIVE", ""}));
    case 5:
        if (m_dice.chance(0.5))
            return layer.setCustomPalette(std::nullopt);
        return layer.setCustomPalette(
            ScorePalette{color(), color(), color(), color(), color(), color()});
    case 6:
        return layer.setCropRectNormalized(crop());
    default:
        return editSize(layer, canvas);
    }
}

void RandomLayers::edit(CountdownLayer &layer, QSizeF canvas)
{
    switch (m_dice.below(8)) {
    case 0:
        return layer.setRemainingSeconds(m_dice.oneOf({0.0, 9.5, 25.0, 61.0, 4000.0}));
    case 1:
        return layer.setFontSize(fontSize());
    case 2:
        return layer.setTextColor(color());
    case 3:
        return layer.setShowBackground(!layer.showBackground());
    case 4:
        return layer.setBackgroundColor(color());
    case 5:
        return layer.setCornerRadius(radius());
    case 6:
        return layer.isRunning() ? layer.pause() : layer.start();
    default:
        return editSize(layer, canvas);
    }
}

void RandomLayers::edit(WebLayer &layer, QSizeF canvas)
{
    editSize(layer, canvas);
}

void RandomLayers::edit(Model3DLayer &layer, QSizeF canvas)
{
    editSize(layer, canvas);
}

void RandomLayers::edit(WindowCaptureLayer &layer, QSizeF canvas)
{
    editSize(layer, canvas);
}

void RandomLayers::edit(const CanvasLayerItem &item, QSizeF canvas)
{
    if (m_dice.chance(0.25))
        editPlace(*layerOf(item), canvas);
    else
        std::visit([&](auto *layer) { edit(*layer, canvas); }, item);
}

CanvasLayerItem RandomLayers::layer(const QUuid &id, QSizeF canvas)
{
    const QPointF at = place(canvas);
    const QSizeF box = size(canvas);
    const auto made = [&]() -> CanvasLayerItem {
        const int share = m_dice.below(100);
        if (share < 22)
            return new TextLayer(id, "Text", words(), at);
        if (share < 48)
            return new ImageLayer(id, "Picture", picture(), QUrl(), at, box, {});
        if (share < 76)
            return new ShapeLayer(id, "Shape", ShapeKind::rectangle, at, box);
        if (share < 84)
            return new ScoreLayer(id, "Score", ScoreTemplate::wideBroadcast,
                                  ScoreSportPreset::football, at, box);
        if (share < 94)
            return new CountdownLayer(m_clock, id, "Countdown", at, box);
        if (share < 96)
            return new WebLayer(id, "Web", "about:blank", at, box);
        if (share < 98)
            return new Model3DLayer(id, "Model", at, box);
        return new WindowCaptureLayer(id, "Window", at, box);
    }();
    if (auto *const *text = std::get_if<TextLayer *>(&made))
        (*text)->setFontSize(fontSize());
    if (auto *const *countdown = std::get_if<CountdownLayer *>(&made))
        (*countdown)->setFontSize(fontSize());
    for (int edits = m_dice.below(10); edits > 0; --edits)
        std::visit([&](auto *layer) { edit(*layer, canvas); }, made);
    return made;
}

} // namespace tessara
