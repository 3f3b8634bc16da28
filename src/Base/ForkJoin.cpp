#include "Base/ForkJoin.h"

#include "Base/ProcessTuning.h"

#include <algorithm>

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
            m_doneByOthers.notify_one();
        }
    }
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
    if (asked > 0)
        ++m_calls;
    for (int helper = 0; helper < asked; ++helper)
        m_calls.notify_one();
    int own = 0;
    for (int piece = claim(); piece >= 0; piece = claim(), ++own)
        m_call(m_context, piece, 0);
    for (int done = m_doneByOthers.load(std::memory_order_acquire); done < pieces - own;
         done = m_doneByOthers.load(std::memory_order_acquire))
        m_doneByOthers.wait(done, std::memory_order_acquire);
}

} // namespace tessara
