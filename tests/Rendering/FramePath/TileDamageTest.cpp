#include "Rendering/FramePath/TileDamage.h"

#include "Rendering/FramePath/Dice.h"

#include <gtest/gtest.h>

#include <utility>

namespace tessara {
namespace {

using Stretches = std::vector<std::pair<int, int>>;

Stretches stretches(const TileDamage &damage, quint64 tiles)
{
    Stretches found;
    damage.forEachStretch(tiles, [&](int from, int to) { found.push_back({from, to}); });
    return found;
}

bool isDamaged(const TileDamage &damage, int x, int y)
{
    for (const auto &[from, to] : stretches(damage, damage.band(y / TileDamage::bandRows))) {
        if (x >= from && x < to)
            return true;
    }
    return false;
}

TEST(TileDamage, IsEmptyAtTheStart)
{
    const TileDamage damage({1920, 1080});

    EXPECT_TRUE(damage.isEmpty());
    EXPECT_EQ(damage.tiles(), 0);
    EXPECT_EQ(damage.bands(), 68);
}

TEST(TileDamage, HasNoPlaceForAnythingWithoutAFrame)
{
    TileDamage damage;

    damage.add(QRect(0, 0, 100, 100));
    damage.addAll();

    EXPECT_TRUE(damage.isEmpty());
    EXPECT_EQ(damage.bands(), 0);
}

TEST(TileDamage, HasNoMoreTilesAcrossThanAWordHasBits)
{
    for (const int width : {1, 15, 16, 17, 1023, 1024, 1025, 1920, 2048, 3840, 7680, 32767}) {
        TileDamage damage({width, 20});

        damage.addAll();

        EXPECT_EQ(stretches(damage, damage.band(0)), (Stretches{{0, width}})) << width;
        EXPECT_LE((width + damage.tileWidth() - 1) / damage.tileWidth(), 64) << width;
        EXPECT_EQ(damage.tileWidth() % 16, 0) << width;
    }
}

TEST(TileDamage, HoldsEveryPixelThatWasAddedAndNoTileMore)
{
    Dice dice(1);
    for (int round = 0; round < 300; ++round) {
        const QSize frame(1 + dice.below(2500), 1 + dice.below(100));
        TileDamage damage(frame);
        const QRect pixels(dice.below(2800) - 150, dice.below(150) - 25, 1 + dice.below(300),
                           1 + dice.below(60));

        damage.add(pixels);

        const QRect inside = pixels.intersected({QPoint(), frame});
        const auto tileOf = [&](int x, int y) {
            return QRect(x / damage.tileWidth() * damage.tileWidth(),
                         y / TileDamage::bandRows * TileDamage::bandRows, damage.tileWidth(),
                         TileDamage::bandRows);
        };
        for (int y = 0; y < frame.height(); y += 3) {
            for (int x = 0; x < frame.width(); x += 7)
                ASSERT_EQ(isDamaged(damage, x, y), tileOf(x, y).intersects(inside))
                    << x << ", " << y;
        }
    }
}

TEST(TileDamage, KeepsItsLastPixelRowAndColumn)
{
    TileDamage damage({1921, 1081});

    damage.add(QRect(1920, 1080, 1, 1));

    EXPECT_EQ(damage.tiles(), 1);
    EXPECT_TRUE(isDamaged(damage, 1920, 1080));
    EXPECT_FALSE(isDamaged(damage, 1919, 1079));
}

TEST(TileDamage, IgnoresWhatLiesBesideTheFrame)
{
    TileDamage damage({100, 100});

    damage.add(QRect(100, 0, 10, 10));
    damage.add(QRect(0, -10, 10, 10));
    damage.add(QRect());

    EXPECT_TRUE(damage.isEmpty());
}

TEST(TileDamage, TakesOverWhatAnotherHas)
{
    TileDamage one({500, 100});
    TileDamage other({500, 100});
    one.add(QRect(0, 0, 1, 1));
    other.add(QRect(499, 99, 1, 1));

    one.add(other);

    EXPECT_EQ(one.tiles(), 2);
    EXPECT_TRUE(isDamaged(one, 0, 0));
    EXPECT_TRUE(isDamaged(one, 499, 99));
    EXPECT_EQ(other.tiles(), 1);
}

TEST(TileDamage, ForgetsAllAtOnce)
{
    TileDamage damage({500, 100});
    damage.addAll();

    damage.clear();

    EXPECT_TRUE(damage.isEmpty());
}

TEST(TileDamage, JoinsNeighboursAndOnlyThem)
{
    const TileDamage damage({1024, 16});

    EXPECT_EQ(stretches(damage, 0), Stretches());
    EXPECT_EQ(stretches(damage, 0b1), (Stretches{{0, 16}}));
    EXPECT_EQ(stretches(damage, 0b1101100), (Stretches{{32, 64}, {80, 112}}));
    EXPECT_EQ(stretches(damage, quint64(1) << 63), (Stretches{{1008, 1024}}));
    EXPECT_EQ(stretches(damage, ~quint64(0)), (Stretches{{0, 1024}}));
    EXPECT_EQ(stretches(damage, ~quint64(2)), (Stretches{{0, 16}, {32, 1024}}));
}

} // namespace
} // namespace tessara
