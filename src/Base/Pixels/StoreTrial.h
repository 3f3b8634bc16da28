// Which way into memory is the shorter one, found out by trying.
#pragma once

#include "Base/Pixels/RowOutput.h"

#include <functional>

namespace tessara {

/// Writes a piece of memory with these stores and tells how long it took, in any unit.
using StoreTurn = std::function<qint64(RowStores stores)>;

/// Fetching or streaming stores, whichever takes less; both have `turns` turns, alternately. The
/// median counts, since the system disturbs some; of equals it is streaming, which leaves the
/// cache to others.
RowStores fasterStores(const StoreTurn &turn, int turns);

/// For frames too large to stay in the cache until they are written again. Past the cache is the
/// lighter way where memory answers at once; where it takes its time, on processors with many
/// cores and under other guests of the same host, the few writes that may be under way at once
/// wait for each other. Tried at the first call, in 10 to 100 ms; on any thread.
RowStores storesForLargeFrames();

} // namespace tessara
