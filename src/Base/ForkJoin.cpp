#include "Base/ForkJoin.h"

#include "Base/ProcessTuning.h"

#include <algorithm>

#include <pthread.h>

namespace tessara {

namespace {

constexpr int pieceBits = 20;
constexpr quint64 pieceMask = (quint64(1) << pieceBits) - 1;

quint64 ticketFor(quint64 generation, int pieces)
{
    return generation << (2 * pieceBits) | quint64(pieces) << pieceBits;
}
quint64 generationOf(quint64 ticket)
{
    return ticket >> (2 * pieceBits);
}
quint64 piecesOf(quint64 ticket)
{
    return ticket >> pieceBits & pieceMask;
}
quint64 nextOf(quint64 ticket)
{
    return ticket & pieceMask;
}

} // namespace

int ForkJoin::standardThreads()
{
    constexpr int most = 4; // memory is the limit beyond
    return std::clamp(int(std::thread::hardware_concurrency()), 1, most);
}

ForkJoin::ForkJoin(int threads)
{
    sched_getaffinity(0, sizeof m_cores, &m_cores);
    const bool isRaised = isThreadPriorityRaised();
    for (int thread = 1; thread < threads; ++thread) {
        m_workers.emplace_back([this, thread, isRaised] {
            if (isRaised)
                raiseThreadPriority();
            work(thread);
        });
    }
}

ForkJoin::~ForkJoin()
{
    m_isEnding = true;
    ++m_calls;
    m_calls.notify_all();
    for (std::thread &worker : m_workers)
        worker.join();
}

int ForkJoin::claim()
{
    quint64 ticket = m_ticket.load(std::memory_order_acquire);
    while (nextOf(ticket) < piecesOf(ticket)) {
        if (m_ticket.compare_exchange_weak(ticket, ticket + 1, std::memory_order_acq_rel))
            return int(nextOf(ticket));
    }
    return -1;
}

void ForkJoin::work(int thread)
{
    quint32 seen = 0;
    for (;;) {
        m_calls.wait(seen);
        seen = m_calls;
        if (m_isEnding)
            return;
        for (int piece = claim(); piece >= 0; piece = claim()) {
            m_call(m_context, piece, thread);
            m_doneByOthers.fetch_add(1, std::memory_order_release);
        }
    }
}

// Not every scheduler looks for an idle core when a thread is woken: on the caller's own it would
// wait for the caller, with half of the work undone and the other cores idle.
void ForkJoin::keepWorkersOffThisCore()
{
    const int core = sched_getcpu();
    if (core == m_callersCore || core < 0)
        return;
    m_callersCore = core;
    cpu_set_t others = m_cores;
    CPU_CLR(core, &others);
    if (CPU_COUNT(&others) == 0)
        return;
    for (std::thread &worker : m_workers)
        pthread_setaffinity_np(worker.native_handle(), sizeof others, &others);
}

void ForkJoin::runPieces(int pieces, int helpers)
{
    Q_ASSERT(pieces <= mostPieces);
    if (pieces < 1)
        return;
    const int asked = std::min({helpers, int(m_workers.size()), pieces - 1});
    m_doneByOthers.store(0, std::memory_order_relaxed);
    const quint64 generation = generationOf(m_ticket.load(std::memory_order_relaxed)) + 1;
    m_ticket.store(ticketFor(generation, pieces), std::memory_order_release);
    if (asked > 0) {
        keepWorkersOffThisCore();
        ++m_calls;
    }
    for (int helper = 0; helper < asked; ++helper)
        m_calls.notify_one();
    int own = 0;
    for (int piece = claim(); piece >= 0; piece = claim(), ++own)
        m_call(m_context, piece, 0);
    constexpr int patience = 20'000; // turns; a piece takes less as long as its thread runs
    for (int turn = 0; m_doneByOthers.load(std::memory_order_acquire) < pieces - own; ++turn) {
        if (turn < patience)
            __builtin_ia32_pause();
        else
            std::this_thread::yield();
    }
}

} // namespace tessara
