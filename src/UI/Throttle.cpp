#include "UI/Throttle.h"

#include <algorithm>

namespace tessara {

Throttle::Throttle()
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        satisfy();
        emit due();
    });
}

void Throttle::request()
{
    if (m_pause.isActive())
        return;
    const qint64 since = m_sinceLast.isValid() ? m_sinceLast.elapsed() : period;
    m_pause.start(int(std::clamp(period - since, qint64(0), period)));
}

void Throttle::satisfy()
{
    m_pause.stop();
    m_sinceLast.start();
}

} // namespace tessara
