// What was measured, a line at a time, and which of it is over its limit.
#pragma once

#include "bench/Measure.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tessara {

struct BenchRow
{
    QString name;
    std::optional<Ticks> ticks = {};
    double value = 0; // what the limit is of
    QString unit;     // "x painter"
    std::optional<double> limit = {};
    bool isLeast = false; // the limit is the least that will do
};

class BenchTable
{
public:
    void begin(const QString &title);
    void add(const BenchRow &row);

    /// The rows over their limit, by title and name.
    const QStringList &overLimit() const { return m_overLimit; }

private:
    QString m_title;
    QStringList m_overLimit;
};

} // namespace tessara
