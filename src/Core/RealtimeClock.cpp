#include "Core/RealtimeClock.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>

namespace tessara {

namespace {

constexpr Seconds tickInterval{1.0};

// What of a time format is a pattern and not a quoted text.
QString withoutQuotedTexts(const QString &format)
{
    QString patterns = format;
    bool isQuoted = false;
    for (QChar &character : patterns) {
        if (character == QLatin1Char('\''))
            isQuoted = !isQuoted;
        else if (isQuoted)
            character = QLatin1Char(' ');
    }
    return patterns;
}

} // namespace

QString timeOfDayFormat(const QLocale &locale)
{
    const QString format = locale.timeFormat(QLocale::LongFormat);
    const QString patterns = withoutQuotedTexts(format);
    const qsizetype hour = patterns.indexOf(QLatin1Char('h'), 0, Qt::CaseInsensitive);
    const qsizetype second = patterns.lastIndexOf(QLatin1Char('s'));
    if (hour < 0 || second < hour)
        return QStringLiteral("HH:mm:ss");
    // From the hour to the second, so that half of the day and time zone fall away around them.
    QString time = format.mid(hour, second + 1 - hour);
    const bool countsToTwelve = patterns.contains(QLatin1Char('a'), Qt::CaseInsensitive);
    if (countsToTwelve)
        time.replace(QRegularExpression(QStringLiteral("^[hH]+")), QStringLiteral("HH"));
    return time;
}

RealtimeClock::RealtimeClock(Clock &clock, CanvasDocument &document)
    : m_clock(clock)
    , m_document(document)
    , m_ticker(clock, tickInterval, [this] { update(); })
{
}

QString RealtimeClock::text() const
{
    ++m_formattings;
    return QLocale().toString(m_clock.wallClock().time(), timeOfDayFormat(QLocale()));
}

void RealtimeClock::update()
{
    if (clockLayerCount() > 0)
        m_document.setRealtimeTimerText(text());
}

qsizetype RealtimeClock::clockLayerCount() const
{
    const QList<TextLayer *> &layers = m_document.layersOf<TextLayer>();
    return std::count_if(layers.begin(), layers.end(), [](const TextLayer *layer) {
        return layer->fieldKind() == TemplateFieldKind::timer;
    });
}

} // namespace tessara
