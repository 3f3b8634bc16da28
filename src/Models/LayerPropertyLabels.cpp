#include "Models/LayerPropertyLabels.h"

#include "Models/PropertyText.h"

#include "Base/RawString.h"
#include "Models/LayerEnums.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

namespace {

using Format = QString (*)(const QString &value);

QString verbatim(const QString &value)
{
    return value;
}

QString percent(const QString &value)
{
    const std::optional<double> number = parseFiniteNumber(value);
    return number ? encNumber(*number * 100, 0) + QLatin1Char('%') : value;
}

template <int decimals>
QString number(const QString &value)
{
    const std::optional<double> number = parseFiniteNumber(value);
    return number ? encNumber(*number, decimals) : value;
}

QString points(const QString &value)
{
    return parseFiniteNumber(value) ? number<1>(value) + QStringLiteral(" pt") : value;
}

QString hexColor(const QString &value)
{
    const QList<double> parts = colorNumbers(value);
    if (parts.size() < 3)
        return value;
    QString text(QLatin1Char('#'));
    for (const double part : parts.first(3)) {
        const double byte = part * 255;
        if (!(std::abs(byte) <= std::numeric_limits<int>::max()))
            return value; // no integer holds it
        text += QString::asprintf("%02X", unsigned(int(byte)));
    }
    return text;
}

QString alignment(const QString &value)
{
    const auto side = fromRawString<TextLayerHorizontalAlignment>(value);
    if (!side)
        return value;
    switch (*side) {
    case TextLayerHorizontalAlignment::leading:
        return QStringLiteral("Left");
    case TextLayerHorizontalAlignment::center:
        return QStringLiteral("Center");
    case TextLayerHorizontalAlignment::trailing:
        return QStringLiteral("Right");
    }
    Q_UNREACHABLE();
}

struct KeyLook
{
    QLatin1String key;
    QLatin1String label;
    QLatin1String icon;
    Format format = verbatim;
};

constexpr QLatin1String arrowsOfMoving("arrow.up.and.down.and.arrow.left.and.right");
constexpr QLatin1String arrowsOfSizing("arrow.left.and.right");

constexpr KeyLook keyLooks[] = {
    {QLatin1String("text"), QLatin1String("Text"), QLatin1String("text.cursor")},
    {QLatin1String("name"), QLatin1String("Rename"), QLatin1String("pencil")},
    {QLatin1String("color"), QLatin1String("Color"), QLatin1String("paintbrush.fill"), hexColor},
    {QLatin1String("outlineColor"), QLatin1String("Outline Color"),
     QLatin1String("paintbrush.fill"), hexColor},
    {QLatin1String("outlineWidth"), QLatin1String("Outline Width"), QLatin1String("pencil.tip"),
     number<1>},
    {QLatin1String("fontSize"), QLatin1String("Font Size"), QLatin1String("textformat.size"),
     points},
    {QLatin1String("fontFamily"), QLatin1String("Font Family"), QLatin1String("textformat")},
    {QLatin1String("fontWeight"), QLatin1String("Font Weight"), QLatin1String("bold")},
    {QLatin1String("opacity"), QLatin1String("Opacity"), QLatin1String("circle.lefthalf.filled"),
     percent},
    {QLatin1String("posX"), QLatin1String("Position X"), arrowsOfMoving, number<1>},
    {QLatin1String("posY"), QLatin1String("Position Y"), arrowsOfMoving, number<1>},
    {QLatin1String("sizeW"), QLatin1String("Width"), arrowsOfSizing, number<0>},
    {QLatin1String("sizeH"), QLatin1String("Height"), arrowsOfSizing, number<0>},
    {QLatin1String("cornerRadius"), QLatin1String("Corner Radius"),
     QLatin1String("rectangle.roundedtop"), number<0>},
    {QLatin1String("textAlign"), QLatin1String("Alignment"), QLatin1String("text.aligncenter"),
     alignment},
    {QLatin1String("shapeKind"), QLatin1String("Shape"), QLatin1String("square.on.circle")},
    {QLatin1String("homeTeam"), QLatin1String("Home Team"), QLatin1String("person.2")},
    {QLatin1String("awayTeam"), QLatin1String("Away Team"), QLatin1String("person.2")},
    {QLatin1String("homeScore"), QLatin1String("Home Score"), QLatin1String("sportscourt")},
    {QLatin1String("awayScore"), QLatin1String("Away Score"), QLatin1String("sportscourt")},
    {QLatin1String("period"), QLatin1String("Period"), QLatin1String("clock")},
    {QLatin1String("clock"), QLatin1String("Clock"), QLatin1String("clock")}};

struct TypeLook
{
    QLatin1String type;
    QLatin1String label;
    QLatin1String icon;
};

constexpr TypeLook typeLooks[] = {
    {QLatin1String("text"), QLatin1String("Text"), QLatin1String("text.bubble")},
    {QLatin1String("shape"), QLatin1String("Shape"), QLatin1String("square.on.circle")},
    {QLatin1String("image"), QLatin1String("Image"), QLatin1String("photo")},
    {QLatin1String("score"), QLatin1String("Score"), QLatin1String("sportscourt")},
    {QLatin1String("web"), QLatin1String("Web"), QLatin1String("globe")},
    {QLatin1String("model"), QLatin1String("3D Model"), QLatin1String("cube")},
    {QLatin1String("windowCapture"), QLatin1String("Window Capture"), QLatin1String("macwindow")},
    {QLatin1String("countdown"), QLatin1String("Countdown"), QLatin1String("timer")}};

const KeyLook *lookOfKey(const QString &key)
{
    const auto *look = std::ranges::find(keyLooks, key, &KeyLook::key);
    return look != std::end(keyLooks) ? look : nullptr;
}

const TypeLook *lookOfType(const QString &type)
{
    const auto *look = std::ranges::find(typeLooks, type, &TypeLook::type);
    return look != std::end(typeLooks) ? look : nullptr;
}

} // namespace

QString propKeyLabel(const QString &key)
{
    const KeyLook *look = lookOfKey(key);
    return look ? QString(look->label) : key;
}

QString propKeyIcon(const QString &key)
{
    const KeyLook *look = lookOfKey(key);
    return look ? QString(look->icon) : QStringLiteral("slider.horizontal.3");
}

QString propValueLabel(const QString &key, const QString &value)
{
    const KeyLook *look = lookOfKey(key);
    return look ? look->format(value) : value;
}

QString layerTypeLabel(const QString &type)
{
    const TypeLook *look = lookOfType(type);
    return look ? QString(look->label) : type;
}

QString layerTypeIcon(const QString &type)
{
    const TypeLook *look = lookOfType(type);
    return look ? QString(look->icon) : QStringLiteral("plus.square");
}

QString layerTypeName(const QString &type)
{
    return layerTypeLabel(type) + QStringLiteral(" Layer");
}

} // namespace tessara
