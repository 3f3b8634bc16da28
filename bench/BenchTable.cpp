#include "bench/BenchTable.h"

#include <algorithm>
#include <cstdio>

namespace tessara {

namespace {

// A few significant digits, whether it is a nanosecond or a second.
QString number(double value)
{
    if (value < 0.001)
        return QString::number(value, 'g', 2);
    const int decimals = value >= 100 ? 0 : value >= 10 ? 1 : value >= 1 ? 2 : value >= 0.1 ? 3 : 4;
    return QString::number(value, 'f', decimals);
}

QString limitText(const BenchRow &row)
{
    if (!row.limit)
        return {};
    return (row.isLeast ? QStringLiteral("at least ") : QString()) + QString::number(*row.limit);
}

bool isOver(const BenchRow &row)
{
    if (!row.limit)
        return false;
    return row.isLeast ? row.value < *row.limit : row.value > *row.limit;
}

} // namespace

void BenchTable::begin(const QString &title)
{
    m_title = title;
    std::printf("\n%-42s %8s %8s %8s %7s %7s %10s %-13s %11s %7s\n", qPrintable(title), "p50 ms",
                "p99 ms", "best ms", "ticks", "quiet", "allocs", "  measured", "limit", "others");
}

void BenchTable::add(const BenchRow &row, double others)
{
    std::printf("%-42s ", qPrintable(row.name));
    if (row.ticks) {
        std::printf("%8s %8s %8s %7zu %5.0f %% %10s ", qPrintable(number(row.ticks->p50())),
                    qPrintable(number(row.ticks->p99())), qPrintable(number(row.ticks->best())),
                    row.ticks->count(), row.ticks->undisturbedShare() * 100,
                    qPrintable(QString::number(row.ticks->allocations(), 'g', 3)));
    } else {
        std::printf("%53s ", "");
    }
    std::printf("%6s %-10s %11s %5.0f %%%s\n", qPrintable(number(row.value)), qPrintable(row.unit),
                qPrintable(limitText(row)), others * 100, isOver(row) ? "  OVER" : "");
    std::fflush(stdout);
    if (isOver(row))
        m_overLimit.append(
            QStringLiteral("%1 %2: %3 %4, limit %5")
                .arg(m_title, row.name, number(row.value), row.unit, limitText(row)));
    m_mostOthers = std::max(m_mostOthers, others);
}

} // namespace tessara
