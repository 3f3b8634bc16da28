#include "Models/CountdownLayer.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr Seconds tickInterval{0.05};
constexpr double longestTime = 3.6e9; // s; a million hours

} // namespace

CountdownLayer::CountdownLayer(Clock &clock, const QUuid &id, const QString &name, QPointF position,
                               QSizeF size)
    : SizedLayer(id, name, position, size)
    , m_clock(clock)
{
}

void CountdownLayer::start()
{
    if (m_isRunning || !(m_remainingSeconds > 0))
        return;
    m_isRunning = true;
    m_lastTick = m_clock.now();
    m_timer.emplace(m_clock, tickInterval, [this] { tick(); });
    emit isRunningChanged();
}

void CountdownLayer::pause()
{
    if (m_isRunning)
        stop();
}

// By the time that has passed, not by counting ticks: a late tick loses nothing.
void CountdownLayer::tick()
{
    const Nanoseconds now = m_clock.now();
    const double elapsed = Seconds(now - m_lastTick.value_or(now)).count();
    m_lastTick = now;
    const double left = std::max(0.0, m_remainingSeconds - elapsed); // 0 for what is no number
    setRemainingSeconds(left);
    if (left <= 0)
        stop();
}

void CountdownLayer::stop()
{
    m_isRunning = false;
    m_timer.reset();
    m_lastTick.reset();
    emit isRunningChanged();
}

QString CountdownLayer::formattedTime() const
{
    const double shown = std::isfinite(m_remainingSeconds) ? m_remainingSeconds : 0;
    const auto time = qint64(std::clamp(shown, 0.0, longestTime));
    const auto two = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    };
    const QString minutesAndSeconds = two((time / 60) % 60) + QLatin1Char(':') + two(time % 60);
    if (time < 3600)
        return minutesAndSeconds;
    return two(time / 3600) + QLatin1Char(':') + minutesAndSeconds;
}

RGBAColor CountdownLayer::currentColor() const
{
    if (m_remainingSeconds <= m_urgentThreshold)
        return m_urgentColor;
    if (m_remainingSeconds <= m_warningThreshold)
        return m_warningColor;
    return m_textColor;
}

QFont::Weight CountdownLayer::resolvedFontWeight() const
{
    constexpr QFont::Weight weights[] = {QFont::Thin,   QFont::ExtraLight, QFont::Light,
                                         QFont::Normal, QFont::Medium,     QFont::DemiBold,
                                         QFont::Bold,   QFont::ExtraBold};
    if (m_fontWeight < 1 || m_fontWeight > qint64(std::size(weights)))
        return QFont::Black;
    return weights[m_fontWeight - 1];
}

SizedFont CountdownLayer::resolvedFont() const
{
    const QFont::Weight weight = resolvedFontWeight();
    if (m_fontFamily) {
        if (const std::optional<SizedFont> font = familyFont(*m_fontFamily, m_fontSize, weight))
            return *font;
    }
    return monospacedDigitSystemFont(m_fontSize, weight);
}

} // namespace tessara
