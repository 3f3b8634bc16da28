#include "Core/RealtimeClock.h"

#include <QLocale>

#include <algorithm>

namespace tessara {

namespace {

constexpr Seconds tickInterval{1.0};

// The locale's own time with seconds, less any name of a time zone.
QString timeFormat()
{
    QString format = QLocale().timeFormat(QLocale::LongFormat);
    format.remove(QLatin1Char('t'));
    return format.trimmed();
}

} // namespace

RealtimeClock::RealtimeClock(Clock &clock, CanvasDocument &document)
    : m_clock(clock)
    , m_document(document)
    , m_ticker(clock, tickInterval, [this] { update(); })
{
}

QString RealtimeClock::text() const
{
    ++m_formattings;
    return QLocale().toString(m_clock.wallClock().time(), timeFormat());
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
