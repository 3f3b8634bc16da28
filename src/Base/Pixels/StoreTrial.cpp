#include "Base/Pixels/StoreTrial.h"

#include <algorithm>
#include <ctime>
#include <utility>
#include <vector>

namespace tessara {

namespace {

constexpr qsizetype rowWidth = 3840;         // px, a row of the largest frames
constexpr qsizetype rowBytes = rowWidth * 4; // fits the first cache
constexpr qsizetype rowsOfATurn = 128;       // about 2 MB
constexpr qsizetype turnBytes = rowBytes * rowsOfATurn;
constexpr int turnsOfEach = 8;

/// The thread's own time: others that run in between don't count, waiting for memory does.
qint64 threadTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

qint64 median(std::vector<qint64> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Every turn has memory of its own, and as much again was touched after it, so that little of it
/// is in the cache.
RowStores triedStores()
{
    constexpr qsizetype pieces = 2 * turnsOfEach;
    std::vector<quint8> memory(std::size_t(2 * pieces * turnBytes));
    // Kernels may read a little beyond a row.
    const std::vector<quint32> row(std::size_t(rowWidth) + 16, 0x80402010);
    quint8 *piece = memory.data();
    const auto turn = [&](RowStores stores) {
        const OutputKernels &kernels = outputKernels(stores);
        const qint64 begin = threadTime();
        for (qsizetype y = 0; y < rowsOfATurn; ++y)
            kernels.bgra(piece + y * rowBytes, row.data(), rowWidth);
        finishStreaming();
        piece += turnBytes;
        return threadTime() - begin;
    };
    return fasterStores(turn, turnsOfEach);
}

} // namespace

RowStores fasterStores(const StoreTurn &turn, int turns)
{
    Q_ASSERT(turns > 0);
    std::vector<qint64> fetching;
    std::vector<qint64> streaming;
    for (int index = 0; index < turns; ++index) {
        fetching.push_back(turn(RowStores::fetching));
        streaming.push_back(turn(RowStores::streaming));
    }
    return median(std::move(fetching)) < median(std::move(streaming)) ? RowStores::fetching
                                                                      : RowStores::streaming;
}

RowStores storesForLargeFrames()
{
    static const RowStores stores = triedStores();
    return stores;
}

} // namespace tessara
