#include "Models/PropertyText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

bool isFinite(double number)
{
    return std::isfinite(number);
}

} // namespace

// Not by Qt, which rounds a tie such as 0.125 away from zero.
QString encNumber(double value, int decimals)
{
    char digits[std::numeric_limits<double>::max_exponent10 + 32];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), value,
                                            std::chars_format::fixed, decimals);
    Q_ASSERT(error == std::errc());
    return QString::fromLatin1(digits, end - digits);
}

std::optional<double> parseNumber(QStringView text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    // A number too large for a double comes as a failure and an infinity.
    return isNumber || std::isinf(number) ? std::optional(number) : std::nullopt;
}

std::optional<double> parseFiniteNumber(QStringView text)
{
    const std::optional<double> number = parseNumber(text);
    return number && isFinite(*number) ? number : std::nullopt;
}

std::optional<qint64> parseInteger(QStringView text)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

QString encColor(const RGBAColor &color)
{
    constexpr int decimals = 6;
    QStringList parts;
    for (const double part : {color.red, color.green, color.blue, color.alpha})
        parts << encNumber(part, decimals);
    return parts.join(QLatin1Char(','));
}

QList<double> colorNumbers(QStringView text)
{
    QList<double> numbers;
    for (const QStringView part : text.tokenize(u',')) {
        if (const std::optional<double> number = parseNumber(part))
            numbers << *number;
    }
    return numbers;
}

std::optional<RGBAColor> parseColor(QStringView text)
{
    const QList<double> numbers = colorNumbers(text);
    if (numbers.size() != 4 || !std::all_of(numbers.begin(), numbers.end(), isFinite))
        return std::nullopt;
    return RGBAColor{numbers[0], numbers[1], numbers[2], numbers[3]};
}

} // namespace tessara
