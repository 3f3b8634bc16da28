// Numbers and colours as macro steps and undo entries spell them.
#pragma once

#include "Models/RGBAColor.h"

#include <QList>

#include <optional>

namespace tessara {

/// With a point whatever the locale, rounded as C's "%.*f" does.
QString encNumber(double value, int decimals);
/// By the rules of C whatever the locale. "nan", "inf" and what is beyond a double are numbers too,
/// and not finite.
std::optional<double> parseNumber(QStringView text);
std::optional<double> parseFiniteNumber(QStringView text);
/// Decimal, within 64 bits.
std::optional<qint64> parseInteger(QStringView text);

/// Red, green, blue and alpha with six digits each, joined by commas.
QString encColor(const RGBAColor &color);
/// The numbers between the commas; what is no number is left out.
QList<double> colorNumbers(QStringView text);
/// Nothing unless there are just four numbers, all finite. Parts may be beyond 0 to 1.
std::optional<RGBAColor> parseColor(QStringView text);

} // namespace tessara
