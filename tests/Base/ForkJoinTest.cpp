#include "Base/ForkJoin.h"
#include "Base/ProcessTuning.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tessara {
namespace {

/// How often each piece was made.
std::vector<int> countsOf(ForkJoin &workers, int pieces, int helpers)
{
    std::vector<std::atomic<int>> counts(static_cast<std::size_t>(pieces));
    workers.run(pieces, helpers, [&](int piece, int) { ++counts[std::size_t(piece)]; });
    return {counts.begin(), counts.end()};
}

class ForkJoinTest : public testing::TestWithParam<int>
{
protected:
    ForkJoin workers{GetParam()};
};

TEST_P(ForkJoinTest, MakesEveryPieceExactlyOnce)
{
    for (const int pieces : {1, 2, 3, 7, 64, 1000}) {
        for (const int helpers : {0, 1, 100})
            EXPECT_EQ(countsOf(workers, pieces, helpers), std::vector<int>(std::size_t(pieces), 1))
                << pieces << " pieces, " << helpers << " helpers";
    }
}

TEST_P(ForkJoinTest, DoesNothingForNoPieces)
{
    int calls = 0;

    workers.run(0, workers.threads() - 1, [&](int, int) { ++calls; });
    workers.run(-1, workers.threads() - 1, [&](int, int) { ++calls; });

    EXPECT_EQ(calls, 0);
}

TEST_P(ForkJoinTest, ShowsTheCallerWhatOthersHaveWritten)
{
    std::vector<quint64> results(4096); // plain memory
    const quint64 total = std::accumulate(results.begin(), results.end(), quint64(0));
    ASSERT_EQ(total, 0u);

    workers.run(int(results.size()), workers.threads() - 1,
                [&](int piece, int) { results[std::size_t(piece)] = quint64(piece) * piece; });

    for (std::size_t piece = 0; piece < results.size(); ++piece)
        ASSERT_EQ(results[piece], piece * piece);
}

TEST_P(ForkJoinTest, ShowsTheOthersWhatTheCallerHasWritten)
{
    std::vector<int> given(512);
    std::vector<int> taken(512);

    for (int round = 0; round < 200; ++round) {
        std::fill(given.begin(), given.end(), round);
        workers.run(int(given.size()), workers.threads() - 1,
                    [&](int piece, int) { taken[std::size_t(piece)] = given[std::size_t(piece)]; });
        ASSERT_EQ(taken, given);
    }
}

// A thread that wakes late comes into the middle of another work.
TEST_P(ForkJoinTest, MakesManyWorksBackToBack)
{
    int wrong = 0;

    for (int round = 0; round < 20'000; ++round) {
        const int pieces = 1 + round % 5;
        std::array<std::atomic<int>, 5> counts = {};
        workers.run(pieces, workers.threads() - 1,
                    [&](int piece, int) { ++counts[std::size_t(piece)]; });
        for (int piece = 0; piece < int(counts.size()); ++piece)
            wrong += counts[std::size_t(piece)] != (piece < pieces ? 1 : 0);
    }

    EXPECT_EQ(wrong, 0);
}

TEST_P(ForkJoinTest, GivesAThreadToOnePieceAtATime)
{
    std::vector<std::atomic<int>> inside(std::size_t(workers.threads()));
    std::atomic<int> clashes = 0;
    std::atomic<int> strangers = 0;

    workers.run(20'000, workers.threads() - 1, [&](int, int thread) {
        if (thread < 0 || thread >= workers.threads()) {
            ++strangers;
            return;
        }
        clashes += inside[std::size_t(thread)]++ != 0;
        --inside[std::size_t(thread)];
    });

    EXPECT_EQ(clashes, 0);
    EXPECT_EQ(strangers, 0);
}

INSTANTIATE_TEST_SUITE_P(Threads, ForkJoinTest, testing::Values(1, 2, 3, 8));

TEST(ForkJoin, WorksAloneWithOneThread)
{
    ForkJoin workers(1);
    const std::thread::id caller = std::this_thread::get_id();
    int elsewhere = 0;

    workers.run(100, 3, [&](int, int thread) {
        elsewhere += thread != 0 || std::this_thread::get_id() != caller;
    });

    EXPECT_EQ(workers.threads(), 1);
    EXPECT_EQ(elsewhere, 0);
}

TEST(ForkJoin, CountsTheCallerEvenWhereNoThreadIsWanted)
{
    EXPECT_EQ(ForkJoin(0).threads(), 1);
    EXPECT_EQ(ForkJoin(5).threads(), 5);
    EXPECT_GE(ForkJoin::standardThreads(), 1);
    EXPECT_LE(ForkJoin::standardThreads(), 4);
}

TEST(ForkJoin, HelpsARaisedThreadWithRaisedOnes)
{
    bool isCallerRaised = false;
    bool isOtherRaised = false;
    std::thread([&] {
        raiseThreadPriority();
        isCallerRaised = isThreadPriorityRaised();
        ForkJoin workers(2);
        std::atomic<bool> isSeen = false;
        const auto work = [&](int, int thread) {
            if (thread == 0) {
                while (!isSeen) // until the other has come
                    std::this_thread::yield();
                return;
            }
            isOtherRaised = isThreadPriorityRaised();
            isSeen = true;
        };
        workers.run(2, 1, work);
    }).join();

    EXPECT_EQ(isOtherRaised, isCallerRaised);
}

// Nobody is asked, so that nobody wakes: what the workers would do is left to the caller.
TEST(ForkJoin, EndsWithoutThoseWhoNeverWake)
{
    ForkJoin workers(4);
    std::vector<int> threads;

    workers.run(50, 0, [&](int, int thread) { threads.push_back(thread); });

    EXPECT_EQ(threads, std::vector<int>(50, 0));
}

// The caller holds its first piece until another thread has begun one: it must not be alone.
TEST(ForkJoin, HasTheHelpOfAnotherThread)
{
    ForkJoin workers(2);
    std::atomic<bool> hasBegun = false;

    workers.run(2, 1, [&](int, int thread) {
        if (thread != 0)
            hasBegun = true;
        while (!hasBegun)
            std::this_thread::yield();
    });

    EXPECT_TRUE(hasBegun);
}

TEST(ForkJoin, WaitsForAPieceThatAnotherHasBegun)
{
    ForkJoin workers(2);
    std::atomic<bool> hasBegun = false;
    std::atomic<bool> callerIsDone = false;
    std::atomic<bool> hasEnded = false;

    workers.run(2, 1, [&](int, int thread) {
        if (thread == 0) {
            while (!hasBegun)
                std::this_thread::yield();
            callerIsDone = true;
            return;
        }
        hasBegun = true;
        while (!callerIsDone)
            std::this_thread::yield();
        for (int turn = 0; turn < 1000; ++turn)
            std::this_thread::yield();
        hasEnded = true;
    });

    EXPECT_TRUE(hasEnded);
}

TEST(ForkJoin, EndsItsThreadsWheneverItGoes)
{
    for (int round = 0; round < 200; ++round) {
        ForkJoin workers(3);
        if (round % 2 == 0) {
            EXPECT_EQ(countsOf(workers, 4, 2), std::vector<int>(4, 1));
        }
    }
}

} // namespace
} // namespace tessara
