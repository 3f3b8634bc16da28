// Notices as often as an eye can follow.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace tessara {

/// Turns a series of requests into a notice now and then: the first comes at the next turn of the
/// main loop, the others once a period.
class Throttle : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 period = 33; // ms

    Throttle();

    void request();
    /// What was requested is done by now, and the period begins anew.
    void satisfy();

signals:
    void due();

private:
    QTimer m_pause;
    QElapsedTimer m_sinceLast;
};

} // namespace tessara
