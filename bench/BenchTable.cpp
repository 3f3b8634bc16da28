#include "bench/BenchTable.h"

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
    std::printf("\n%-42s %12s %10s %7s %10s %-14s %12s\n", qPrintable(title), "processor ms",
                "elapsed ms", "ticks", "allocs", "  measured", "limit");
}

void BenchTable::add(const BenchRow &row)
{
    std::printf("%-42s ", qPrintable(row.name));
    if (row.ticks) {
        std::printf("%12s %10s %7zu %10s ", qPrintable(number(row.ticks->processor())),
                    qPrintable(number(row.ticks->elapsed())), row.ticks->count(),
                    qPrintable(QString::number(row.ticks->allocations(), 'g', 3)));
    } else {
        std::printf("%42s ", "");
    }
    std::printf("%6s %-11s %8s%s\n", qPrintable(number(row.value)), qPrintable(row.unit),
                qPrintable(limitText(row)), isOver(row) ? "  OVER" : "");
    std::fflush(stdout);
    if (isOver(row))
        m_overLimit.append(
            QStringLiteral("%1 %2: %3 %4, limit %5")
                .arg(m_title, row.name, number(row.value), row.unit, limitText(row)));
}

} // namespace tessara
