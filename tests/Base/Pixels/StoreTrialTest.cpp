#include "Base/Pixels/StoreTrial.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessara {

namespace {

struct Trial
{
    std::vector<qint64> fetching;
    std::vector<qint64> streaming;
    std::vector<RowStores> turns = {};

    RowStores result()
    {
        const auto turn = [this](RowStores stores) {
            const std::size_t round = turns.size() / 2;
            turns.push_back(stores);
            return (stores == RowStores::fetching ? fetching : streaming).at(round);
        };
        return fasterStores(turn, int(fetching.size()));
    }
};

} // namespace

TEST(StoreTrialTest, TakesWhatIsFaster)
{
    EXPECT_EQ((Trial{{5, 5, 5}, {8, 8, 8}}.result()), RowStores::fetching);
    EXPECT_EQ((Trial{{8, 8, 8}, {5, 5, 5}}.result()), RowStores::streaming);
}

TEST(StoreTrialTest, OfEqualsLeavesTheCacheToOthers)
{
    EXPECT_EQ((Trial{{5}, {5}}.result()), RowStores::streaming);
}

TEST(StoreTrialTest, IsNotMisledByATurnThatWasDisturbed)
{
    EXPECT_EQ((Trial{{5, 900, 6}, {8, 8, 8}}.result()), RowStores::fetching);
    EXPECT_EQ((Trial{{5, 9, 9}, {800, 8, 8}}.result()), RowStores::streaming);
}

TEST(StoreTrialTest, TurnsAlternateSoThatASlowMomentIsSlowForBoth)
{
    Trial trial{{1, 1}, {2, 2}};

    trial.result();

    EXPECT_EQ(trial.turns, (std::vector{RowStores::fetching, RowStores::streaming,
                                        RowStores::fetching, RowStores::streaming}));
}

TEST(StoreTrialTest, LargeFramesKeepTheirStores)
{
    const RowStores stores = storesForLargeFrames();

    EXPECT_NE(stores, RowStores::plain);
    EXPECT_EQ(storesForLargeFrames(), stores);
}

} // namespace tessara
