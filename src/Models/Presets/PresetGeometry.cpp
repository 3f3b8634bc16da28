#include "Models/Presets/PresetGeometry.h"

#include <QJsonObject>

#include <optional>
#include <utility>

namespace tessara {

namespace {

using Numbers = std::pair<double, double>;

std::optional<Numbers> numbersIn(const QJsonValue &array)
{
    const QJsonArray elements = array.toArray();
    if (!elements.at(0).isDouble() || !elements.at(1).isDouble())
        return std::nullopt;
    return Numbers(elements.at(0).toDouble(), elements.at(1).toDouble());
}

std::optional<Numbers> numbersAt(const QJsonObject &object, QLatin1String first,
                                 QLatin1String second)
{
    const QJsonValue firstNumber = object.value(first);
    const QJsonValue secondNumber = object.value(second);
    if (!firstNumber.isDouble() || !secondNumber.isDouble())
        return std::nullopt;
    return Numbers(firstNumber.toDouble(), secondNumber.toDouble());
}

std::optional<QPointF> pointIn(const QJsonObject &object)
{
    const auto numbers = numbersAt(object, QLatin1String("x"), QLatin1String("y"));
    return numbers ? std::optional(QPointF(numbers->first, numbers->second)) : std::nullopt;
}

std::optional<QSizeF> sizeIn(const QJsonObject &object)
{
    const auto numbers = numbersAt(object, QLatin1String("width"), QLatin1String("height"));
    return numbers ? std::optional(QSizeF(numbers->first, numbers->second)) : std::nullopt;
}

bool isAbsent(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull();
}

bool isNumberOrAbsent(const QJsonValue &value)
{
    return value.isDouble() || isAbsent(value);
}

/// A member of the wrong type is an error even if another one decides.
tl::expected<QRectF, QString> rectIn(const QJsonObject &object)
{
    const QJsonValue origin = object.value(QLatin1String("origin"));
    const QJsonValue size = object.value(QLatin1String("size"));
    const QJsonValue x = object.value(QLatin1String("x"));
    const QJsonValue y = object.value(QLatin1String("y"));
    const QJsonValue width = object.value(QLatin1String("width"));
    const QJsonValue height = object.value(QLatin1String("height"));
    const std::optional<QPointF> originPoint = pointIn(origin.toObject());
    const std::optional<QSizeF> sizeValue = sizeIn(size.toObject());
    if (!originPoint && !isAbsent(origin))
        return tl::unexpected(QStringLiteral("an origin needs the numbers 'x' and 'y'"));
    if (!sizeValue && !isAbsent(size))
        return tl::unexpected(QStringLiteral("a size needs the numbers 'width' and 'height'"));
    for (const QJsonValue &number : {x, y, width, height}) {
        if (!isNumberOrAbsent(number))
            return tl::unexpected(
                QStringLiteral("'x', 'y', 'width' and 'height' of a rectangle are numbers"));
    }
    if (originPoint && sizeValue)
        return QRectF(*originPoint, *sizeValue);
    return QRectF(x.toDouble(), y.toDouble(), width.toDouble(), height.toDouble());
}

} // namespace

QJsonArray geometryToJson(QPointF point)
{
    return {point.x(), point.y()};
}

QJsonArray geometryToJson(QSizeF size)
{
    return {size.width(), size.height()};
}

QJsonArray geometryToJson(QRectF rect)
{
    return {geometryToJson(rect.topLeft()), geometryToJson(rect.size())};
}

tl::expected<QPointF, QString> pointFromJson(const QJsonValue &json)
{
    if (const auto numbers = numbersIn(json))
        return QPointF(numbers->first, numbers->second);
    if (const auto point = pointIn(json.toObject()))
        return *point;
    return tl::unexpected(QStringLiteral("a point needs the numbers 'x' and 'y'"));
}

tl::expected<QSizeF, QString> sizeFromJson(const QJsonValue &json)
{
    if (const auto numbers = numbersIn(json))
        return QSizeF(numbers->first, numbers->second);
    if (const auto size = sizeIn(json.toObject()))
        return *size;
    return tl::unexpected(QStringLiteral("a size needs the numbers 'width' and 'height'"));
}

tl::expected<QRectF, QString> rectFromJson(const QJsonValue &json)
{
    const QJsonArray parts = json.toArray();
    const std::optional<Numbers> origin = numbersIn(parts.at(0));
    const std::optional<Numbers> size = numbersIn(parts.at(1));
    if (origin && size)
        return QRectF(origin->first, origin->second, size->first, size->second);
    if (!json.isObject())
        return tl::unexpected(
            QStringLiteral("a rectangle is [[x, y], [width, height]] or an object"));
    return rectIn(json.toObject());
}

} // namespace tessara
