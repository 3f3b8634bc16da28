#include "DeckLink/DeckLinkModels.h"

namespace tessara {
namespace {

/// Drivers spell names with and without spaces.
QString plainName(const QString &name)
{
    return name.toLower().remove(QLatin1Char(' '));
}

} // namespace

double DeckLinkDisplayMode::rate() const
{
    return frameDuration < 1 || timeScale < 1 ? 0 : double(timeScale) / double(frameDuration);
}

QString DeckLinkDisplayMode::displayLabel() const
{
    const QString size = QStringLiteral("%1x%2").arg(width).arg(height);
    if (rate() <= 0)
        return name + QStringLiteral(" (") + size + QLatin1Char(')');
    return name + QStringLiteral(" (") + size + QStringLiteral(" @ ")
           + QString::number(rate(), 'f', 2) + QStringLiteral(" fps)");
}

int DeckLinkDisplayMode::modeScore() const
{
    const QString plain = plainName(name);
    if (plain.contains(QLatin1String("1080p50")))
        return 0;
    if (plain.contains(QLatin1String("1080p59.94")) || plain.contains(QLatin1String("1080p5994")))
        return 1;
    if (plain.contains(QLatin1String("1080p59")))
        return 2;
    return width == 1920 && height == 1080 ? 3 : 10;
}

bool DeckLinkDisplayMode::isPreferred() const
{
    const QString plain = plainName(name);
    return plain.contains(QLatin1String("1080p50")) || plain.contains(QLatin1String("1080p59.94"))
           || plain.contains(QLatin1String("1080p59"));
}

} // namespace tessara
