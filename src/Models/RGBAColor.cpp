#include "Models/RGBAColor.h"

#include <algorithm>
#include <cmath>

namespace tessara {

const RGBAColor RGBAColor::white{1, 1, 1, 1};

namespace {

float fraction(double value)
{
    return std::isfinite(value) ? float(std::clamp(value, 0.0, 1.0)) : 0.0F;
}

} // namespace

RGBAColor RGBAColor::fromColor(const QColor &color)
{
    if (!color.isValid())
        return white;
    const QColor rgb = color.toRgb();
    return {rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()};
}

QColor RGBAColor::color() const
{
    return QColor::fromRgbF(fraction(red), fraction(green), fraction(blue), fraction(alpha));
}

QJsonObject RGBAColor::toJson() const
{
    return {{QStringLiteral("red"), red},
            {QStringLiteral("green"), green},
            {QStringLiteral("blue"), blue},
            {QStringLiteral("alpha"), alpha}};
}

tl::expected<RGBAColor, QString> RGBAColor::fromJson(const QJsonValue &value)
{
    if (!value.isObject())
        return tl::unexpected(QStringLiteral("a colour is an object"));
    const QJsonObject object = value.toObject();
    RGBAColor result;
    const std::pair<const char *, double *> parts[] = {{"red", &result.red},
                                                       {"green", &result.green},
                                                       {"blue", &result.blue},
                                                       {"alpha", &result.alpha}};
    for (const auto &[key, part] : parts) {
        const QJsonValue number = object.value(QLatin1String(key));
        if (!number.isDouble())
            return tl::unexpected(
                QStringLiteral("a colour needs a number '%1'").arg(QLatin1String(key)));
        *part = number.toDouble();
    }
    return result;
}

} // namespace tessara
