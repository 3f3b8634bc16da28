// Writes the time of day into the clock layers.
#pragma once

#include "Base/RepeatingTimer.h"
#include "Models/CanvasDocument.h"

namespace tessara {

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
