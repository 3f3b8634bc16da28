// Short work, shared with the other cores while the caller waits.
#pragma once

#include <QtGlobal>

#include <atomic>
#include <thread>
#include <vector>

namespace tessara {

/// Pieces are taken one by one by whoever is free, the caller first of all. It waits for pieces
/// that another thread has begun and for nothing else: a thread that the system wakes late finds
/// the work done, and costs nobody anything. One caller at a time; the others run before ordinary
/// threads where the thread that has made them does.
class ForkJoin
{
    Q_DISABLE_COPY_MOVE(ForkJoin)

public:
    static constexpr int mostPieces = (1 << 20) - 1;

    /// As many as this machine has cores, and no more than a short work can use.
    static int standardThreads();

    /// `threads` counts the caller.
    explicit ForkJoin(int threads = standardThreads());
    ~ForkJoin();

    int threads() const { return int(m_workers.size()) + 1; }

    /// Calls `work(piece, thread)` for every piece from 0 to below `pieces`, `thread` being below
    /// `threads()` and that of one piece at a time. `helpers` others are asked at most.
    template <typename Work>
    void run(int pieces, int helpers, const Work &work)
    {
        m_context = &work;
        m_call = [](const void *context, int piece, int thread) {
            (*static_cast<const Work *>(context))(piece, thread);
        };
        runPieces(pieces, helpers);
    }

private:
    using Call = void (*)(const void *context, int piece, int thread);

    void runPieces(int pieces, int helpers);
    void work(int thread);
    /// The next piece of the work that is under way; below 0 for none.
    int claim();

    // Which work, how many pieces, and which comes next, in one word: a thread that is late can't
    // take a piece of the next work for one of the last.
    std::atomic<quint64> m_ticket = 0;
    std::atomic<int> m_doneByOthers = 0;
    std::atomic<quint32> m_calls = 0; // changes to wake the workers
    std::atomic<bool> m_isEnding = false;
    const void *m_context = nullptr;
    Call m_call = nullptr;
    std::vector<std::thread> m_workers;
};

} // namespace tessara
