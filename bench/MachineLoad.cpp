#include "bench/MachineLoad.h"

#include <QFile>
#include <QList>

#include <algorithm>
#include <chrono>

#include <sys/resource.h>
#include <unistd.h>

namespace tessara {

namespace {

double secondsOf(const timeval &time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

double processorSeconds(int whose)
{
    rusage usage{};
    getrusage(whose, &usage);
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

double busySeconds()
{
    // user, nice, system, idle, iowait, irq, softirq, steal
    constexpr qsizetype idle = 4;
    constexpr qsizetype wait = 5;
    constexpr qsizetype steal = 8;
    QFile file(QStringLiteral("/proc/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = file.readLine().simplified().split(' ');
    double ticks = 0;
    for (qsizetype index = 1; index <= steal && index < fields.size(); ++index) {
        if (index != idle && index != wait)
            ticks += fields[index].toDouble();
    }
    return ticks / double(sysconf(_SC_CLK_TCK));
}

} // namespace

MachineLoad::MachineLoad() = default;

MachineLoad::Sample MachineLoad::sample()
{
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return {now.count(), busySeconds(),
            processorSeconds(RUSAGE_SELF) + processorSeconds(RUSAGE_CHILDREN)};
}

double MachineLoad::othersShare() const
{
    const Sample end = sample();
    const double all = (end.wall - m_start.wall) * double(sysconf(_SC_NPROCESSORS_ONLN));
    const double others = (end.busy - m_start.busy) - (end.own - m_start.own);
    return all > 0 ? std::clamp(others / all, 0.0, 1.0) : 0;
}

} // namespace tessara
