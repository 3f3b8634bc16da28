// How often this program asks the heap for memory.
#pragma once

#include <QtGlobal>

namespace tessara {

/// Since the start, on all threads: malloc and its kin, and with them operator new. The program
/// that links this counts from its first instruction.
quint64 heapAllocations();

} // namespace tessara
