// The machine's own time, to the nanosecond where the kernel keeps it.
#pragma once

#include <QSocketNotifier>

#include "Base/Clock.h"

namespace tessara {

/// Needs a running Qt event loop. One timer of the kernel wakes it for the next alarm, since a
/// QTimer counts whole milliseconds and could not hold a rate of 29.97.
class RealClock : public Clock
{
public:
    RealClock();
    ~RealClock() override;

    Nanoseconds now() const override;
    QDateTime wallClock() const override;

protected:
    void alarmsChanged() override;

private:
    void wake();
    void arm();

    Nanoseconds m_start;
    Nanoseconds m_armedFor{-1};
    bool m_isInTurn = false;
    int m_timer = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tessara
