// Time, as scripts move it.
#pragma once

#include "Automation/ValueCodec.h"

#include <QObject>

namespace tessara {

class Clock;

class ScriptClock : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double now READ now FINAL) // s since the start

public:
    explicit ScriptClock(Clock &clock);

    double now() const;
    /// Answers when all that fell due within the time has run. The real clock takes that long.
    Q_INVOKABLE tessara::ScriptResult advance(double seconds);
    /// The manual clock's alone; "2026-11-20T20:29:58".
    Q_INVOKABLE tessara::ScriptResult setWallClock(const QString &time);

private:
    Clock &m_clock;
};

} // namespace tessara
