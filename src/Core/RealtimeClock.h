// Writes the time of day into the clock layers.
#pragma once

#include "Base/RepeatingTimer.h"
#include "Models/CanvasDocument.h"

class QLocale;

namespace tessara {

/// Hours of 0 to 23, minutes and seconds in the locale's own order and with its separators.
QString timeOfDayFormat(const QLocale &locale);

class RealtimeClock
{
public:
    RealtimeClock(Clock &clock, CanvasDocument &document);

    /// The time of day as the user's locale writes it, with seconds.
    QString text() const;
    /// With no clock layer the time is not even formatted.
    void update();
    qsizetype clockLayerCount() const;
    /// How often the time has been put into words.
    quint64 formattings() const { return m_formattings; }

private:
    Clock &m_clock;
    CanvasDocument &m_document;
    mutable quint64 m_formattings = 0;
    RepeatingTimer m_ticker;
};

} // namespace tessara
