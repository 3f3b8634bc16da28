#include "Models/LayerPropertyTable.h"

#include "Base/RawString.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

// A codec writes a value as text, and reads it: nothing when the text changes nothing.

struct Verbatim
{
    static QString encode(const QString &value) { return value; }
    static std::optional<QString> decode(const QString &text, const QString &) { return text; }
};

struct OptionalVerbatim
{
    using Value = std::optional<QString>;

    static QString encode(const Value &value) { return value.value_or(QString()); }
    static std::optional<Value> decode(const QString &text, const Value &)
    {
        return text.isEmpty() ? Value() : Value(text);
    }
};

template <int decimals>
struct Number
{
    static QString encode(double value) { return encNumber(value, decimals); }
    static std::optional<double> decode(const QString &text, double)
    {
        return parseFiniteNumber(text);
    }
};

// Unlike the others, what isn't readable clears the value.
template <int decimals>
struct OptionalNumber
{
    using Value = std::optional<double>;

    static QString encode(const Value &value)
    {
        return value ? encNumber(*value, decimals) : QString();
    }
    static std::optional<Value> decode(const QString &text, const Value &)
    {
        const Value number = parseNumber(text);
        if (number && !std::isfinite(*number))
            return std::nullopt;
        return std::make_optional<Value>(number);
    }
};

struct Integer
{
    static QString encode(qint64 value) { return QString::number(value); }
    static std::optional<qint64> decode(const QString &text, qint64) { return parseInteger(text); }
};

struct Color
{
    static QString encode(const RGBAColor &value) { return encColor(value); }
    static std::optional<RGBAColor> decode(const QString &text, const RGBAColor &)
    {
        return parseColor(text);
    }
};

template <typename Enum>
struct CaseName
{
    static QString encode(Enum value) { return rawString(value); }
    static std::optional<Enum> decode(const QString &text, Enum)
    {
        return fromRawString<Enum>(text);
    }
};

// One number of a point or a size; the other stays.
template <typename Pair, auto read, auto write>
struct Coordinate
{
    static double part(const Pair &pair) { return (pair.*read)(); }
    static QString encode(double part) { return Number<2>::encode(part); }
    static std::optional<Pair> decode(const QString &text, Pair pair)
    {
        const std::optional<double> number = parseFiniteNumber(text);
        if (!number)
            return std::nullopt;
        (pair.*write)(*number);
        return pair;
    }
};

using X = Coordinate<QPointF, &QPointF::x, &QPointF::setX>;
using Y = Coordinate<QPointF, &QPointF::y, &QPointF::setY>;
using Width = Coordinate<QSizeF, &QSizeF::width, &QSizeF::setWidth>;
using Height = Coordinate<QSizeF, &QSizeF::height, &QSizeF::setHeight>;

/// Of a point or a size the one number, else the whole value.
template <typename Codec, typename Value>
QVariant watchedPart(const Value &value)
{
    if constexpr (requires { Codec::part(value); })
        return Codec::part(value);
    else
        return QVariant::fromValue(value);
}

template <typename Codec, typename Value>
QString textOf(const QVariant &watched)
{
    if constexpr (requires(const Value &value) { Codec::part(value); })
        return Codec::encode(watched.toDouble());
    else
        return Codec::encode(watched.value<Value>());
}

template <typename Class, typename Value>
Class ownerOf(Value (Class::*)() const);
template <typename Class, typename Value>
std::remove_cvref_t<Value> valueOf(Value (Class::*)() const);

template <auto get, auto set, typename Codec>
constexpr LayerPropertyRow row(const char *key, const char *property, int debounceMs,
                               const char *undoName)
{
    using Owner = decltype(ownerOf(get));
    return {QLatin1String(key),
            property,
            debounceMs,
            QLatin1String(undoName),
            [](const Layer &layer) {
                return watchedPart<Codec>((static_cast<const Owner &>(layer).*get)());
            },
            textOf<Codec, decltype(valueOf(get))>,
            [](Layer &layer, const QString &text) {
                auto &owner = static_cast<Owner &>(layer);
                if (const auto value = Codec::decode(text, (owner.*get)()))
                    (owner.*set)(*value);
            }};
}

constexpr LayerPropertyRow nameRow =
    row<&Layer::name, &Layer::setName, Verbatim>("name", "name", 500, "Rename Layer");
constexpr LayerPropertyRow posXRow =
    row<&Layer::position, &Layer::setPosition, X>("posX", "position", 500, "Move Layer");
constexpr LayerPropertyRow posYRow =
    row<&Layer::position, &Layer::setPosition, Y>("posY", "position", 500, "Move Layer");
constexpr LayerPropertyRow opacityRow =
    row<&SizedLayer::opacity, &SizedLayer::setOpacity, Number<4>>("opacity", "opacity", 300,
                                                                  "Change Opacity");
constexpr LayerPropertyRow sizeWRow =
    row<&SizedLayer::size, &SizedLayer::setSize, Width>("sizeW", "size", 500, "Resize Layer");
constexpr LayerPropertyRow sizeHRow =
    row<&SizedLayer::size, &SizedLayer::setSize, Height>("sizeH", "size", 500, "Resize Layer");

constexpr LayerPropertyRow textRows[] = {
    row<&TextLayer::text, &TextLayer::setText, Verbatim>("text", "text", 500, "Edit Text"),
    nameRow,
    row<&TextLayer::color, &TextLayer::setColor, Color>("color", "color", 300, "Change Color"),
    row<&TextLayer::outlineColor, &TextLayer::setOutlineColor, Color>(
        "outlineColor", "outlineColor", 300, "Change Outline Color"),
    row<&TextLayer::outlineWidth, &TextLayer::setOutlineWidth, Number<4>>(
        "outlineWidth", "outlineWidth", 300, "Change Outline"),
    row<&TextLayer::fontSize, &TextLayer::setFontSize, Number<2>>("fontSize", "fontSize", 300,
                                                                  "Change Font Size"),
    row<&TextLayer::fontFamily, &TextLayer::setFontFamily, OptionalVerbatim>(
        "fontFamily", "fontFamily", 500, "Change Font"),
    row<&TextLayer::fontWeight, &TextLayer::setFontWeight, OptionalNumber<0>>(
        "fontWeight", "fontWeight", 500, "Change Font Weight"),
    posXRow,
    posYRow,
    row<&TextLayer::horizontalAlignment, &TextLayer::setHorizontalAlignment,
        CaseName<TextLayerHorizontalAlignment>>("textAlign", "horizontalAlignment", 300,
                                                "Change Alignment")};

constexpr LayerPropertyRow imageRows[] = {nameRow, opacityRow, posXRow,
                                          posYRow, sizeWRow,   sizeHRow};

constexpr LayerPropertyRow shapeRows[] = {
    nameRow,
    row<&ShapeLayer::color, &ShapeLayer::setColor, Color>("color", "color", 300, "Change Color"),
    opacityRow,
    row<&ShapeLayer::cornerRadius, &ShapeLayer::setCornerRadius, Number<2>>(
        "cornerRadius", "cornerRadius", 300, "Change Corner Radius"),
    posXRow,
    posYRow,
    sizeWRow,
    sizeHRow,
    row<&ShapeLayer::kind, &ShapeLayer::setKind, CaseName<ShapeKind>>("shapeKind", "kind", 300,
                                                                      "Change Shape")};

constexpr LayerPropertyRow scoreRows[] = {
    nameRow,
    row<&ScoreLayer::homeTeam, &ScoreLayer::setHomeTeam, Verbatim>("homeTeam", "homeTeam", 400,
                                                                   "Edit Team"),
    row<&ScoreLayer::awayTeam, &ScoreLayer::setAwayTeam, Verbatim>("awayTeam", "awayTeam", 400,
                                                                   "Edit Team"),
    row<&ScoreLayer::homeScore, &ScoreLayer::setHomeScore, Integer>("homeScore", "homeScore", 200,
                                                                    "Edit Score"),
    row<&ScoreLayer::awayScore, &ScoreLayer::setAwayScore, Integer>("awayScore", "awayScore", 200,
                                                                    "Edit Score"),
    row<&ScoreLayer::period, &ScoreLayer::setPeriod, Verbatim>("period", "period", 400,
                                                               "Edit Period"),
    row<&ScoreLayer::clock, &ScoreLayer::setClock, Verbatim>("clock", "clock", 400, "Edit Clock"),
    opacityRow,
    posXRow,
    posYRow};

// A page, a model, a window and a countdown: their box and their content are no history.
constexpr LayerPropertyRow plainRows[] = {nameRow, opacityRow};

} // namespace

std::span<const LayerPropertyRow> layerPropertyRows(const CanvasLayerItem &item)
{
    using Rows = std::span<const LayerPropertyRow>;
    return std::visit(Overloaded{[](const TextLayer *) { return Rows(textRows); },
                                 [](const ImageLayer *) { return Rows(imageRows); },
                                 [](const ShapeLayer *) { return Rows(shapeRows); },
                                 [](const ScoreLayer *) { return Rows(scoreRows); },
                                 [](const WebLayer *) { return Rows(plainRows); },
                                 [](const Model3DLayer *) { return Rows(plainRows); },
                                 [](const WindowCaptureLayer *) { return Rows(plainRows); },
                                 [](const CountdownLayer *) { return Rows(plainRows); }},
                      item);
}

void applyLayerProperty(const CanvasLayerItem &item, const QString &key, const QString &value)
{
    const std::span<const LayerPropertyRow> rows = layerPropertyRows(item);
    const auto found = std::ranges::find(rows, key, &LayerPropertyRow::key);
    if (found != rows.end())
        found->apply(*layerOf(item), value);
}

} // namespace tessara
