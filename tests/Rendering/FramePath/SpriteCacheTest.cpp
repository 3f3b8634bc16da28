#include "Rendering/FramePath/SpriteCache.h"

#include "Rendering/FramePath/SpriteFixture.h"

#include <map>

namespace tessara {
namespace {

constexpr QRect area(0, 0, 400, 400);

class SpriteCacheTest : public testing::Test
{
protected:
    static SpriteKey keyOf(const Primitive &primitive) { return {primitive, QTransform()}; }

    std::shared_ptr<const Sprite> insert(const Primitive &primitive)
    {
        const auto sprite = Sprite::make(primitive, QTransform(), area);
        cache.insert(keyOf(primitive), sprite);
        return sprite;
    }
    std::optional<PlacedSprite> found(const Primitive &primitive)
    {
        return cache.find(keyOf(primitive), [](const PlacedSprite &) { return true; });
    }

    SpriteCache cache;
};

TEST_F(SpriteCacheTest, FindsWhatItWasGiven)
{
    const auto sprite = insert(fillOf(ellipse({0, 0, 30, 20}), {5, 6}));

    const auto again = found(fillOf(ellipse({0, 0, 30, 20}), {5, 6}));

    ASSERT_TRUE(again);
    EXPECT_EQ(again->sprite, sprite);
    EXPECT_EQ(again->shift, QPoint());
}

TEST_F(SpriteCacheTest, FindsWhatHasMovedByWholePixels)
{
    const auto sprite = insert(fillOf(ellipse({0, 0, 30, 20}), {5.25, 6.5}));

    const auto moved = found(fillOf(ellipse({0, 0, 30, 20}), {105.25, -13.5}));

    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->sprite, sprite);
    EXPECT_EQ(moved->shift, QPoint(100, -20));
    EXPECT_EQ(moved->bounds(), sprite->bounds().translated(100, -20));
    EXPECT_EQ(moved->area(), area.translated(100, -20));
}

// How it is drawn hangs on the last bit of its place.
TEST_F(SpriteCacheTest, DoesNotMoveAThinPicture)
{
    const QImage image = gradient({30, 20});
    insert(pictureOf(image, {0, 0, 0.4, 20}, {5.25, 6.5}));
    insert(pictureOf(image, {0, 0, 30, 1.9}, {5.25, 6.5}));
    insert(pictureOf(image, {0, 0, 2.5, 20}, {5.25, 6.5}));

    EXPECT_TRUE(found(pictureOf(image, {0, 0, 0.4, 20}, {5.25, 6.5})));
    EXPECT_FALSE(found(pictureOf(image, {0, 0, 0.4, 20}, {6.25, 6.5})));
    EXPECT_FALSE(found(pictureOf(image, {0, 0, 30, 1.9}, {5.25, 7.5})));
    EXPECT_TRUE(found(pictureOf(image, {0, 0, 2.5, 20}, {6.25, 6.5})));
}

TEST_F(SpriteCacheTest, DoesNotTakeAnotherFractionForTheSame)
{
    insert(fillOf(ellipse({0, 0, 30, 20}), {5.25, 6.5}));

    EXPECT_FALSE(found(fillOf(ellipse({0, 0, 30, 20}), {5.26, 6.5})));
    EXPECT_FALSE(found(fillOf(ellipse({0, 0, 30, 20}), {5.25, 6.499})));
    EXPECT_FALSE(found(fillOf(ellipse({0, 0, 30, 20}), {5, 6})));
}

TEST_F(SpriteCacheTest, TakesAHairForNothing)
{
    insert(fillOf(ellipse({0, 0, 30, 20}), {7, 6.5}));

    const auto reached = found(fillOf(ellipse({0, 0, 30, 20}), {2.9999999999, 6.5}));

    ASSERT_TRUE(reached);
    EXPECT_EQ(reached->shift, QPoint(-4, 0));
}

TEST_F(SpriteCacheTest, TellsShapesApartToTheLastBit)
{
    insert(fillOf(ellipse({0, 0, 30, 20})));

    EXPECT_FALSE(found(fillOf(ellipse({0, 0, 30, 20.0000001}))));
    EXPECT_FALSE(found(fillOf(rectangle({0, 0, 30, 20}))));
    EXPECT_FALSE(found(pictureOf(gradient({30, 20}), {0, 0, 30, 20})));
}

TEST_F(SpriteCacheTest, TellsFillRulesApart)
{
    QPainterPath path = rectangle({0, 0, 30, 20});
    path.addRect(5, 5, 10, 10);
    insert(fillOf(path));

    path.setFillRule(Qt::WindingFill);

    EXPECT_FALSE(found(fillOf(path)));
}

TEST_F(SpriteCacheTest, TellsPicturesBoxesAndMasksApart)
{
    const QImage image = gradient({30, 20});
    const Primitive picture = pictureOf(image, {0, 0, 30, 20});
    Primitive masked = picture;
    std::get<PlacedPicture>(masked.what).mask = ellipse({0, 0, 30, 20});
    Primitive otherwiseMasked = picture;
    std::get<PlacedPicture>(otherwiseMasked.what).mask = rectangle({0, 0, 30, 20});
    insert(picture);
    insert(masked);

    EXPECT_TRUE(found(picture));
    EXPECT_TRUE(found(masked));
    EXPECT_NE(found(picture)->sprite, found(masked)->sprite);
    EXPECT_FALSE(found(otherwiseMasked));
    EXPECT_FALSE(found(pictureOf(image.copy(), {0, 0, 30, 20})));
    EXPECT_FALSE(found(pictureOf(image, {0, 0, 30, 20.5})));
}

TEST_F(SpriteCacheTest, TellsClipsApart)
{
    Primitive primitive = fillOf(rectangle({0, 0, 30, 20}));
    primitive.clip = QRectF(0, 0, 10, 10);
    insert(primitive);

    primitive.toCanvas.translate(50, 0);
    EXPECT_FALSE(found(primitive)); // moved under its clip
    primitive.clip->translate(50, 0);
    EXPECT_TRUE(found(primitive)); // and with it
}

TEST_F(SpriteCacheTest, DoesNotCareForColourAndFading)
{
    Primitive primitive = fillOf(rectangle({0, 0, 30, 20}));
    insert(primitive);

    std::get<FilledPath>(primitive.what).color = {1, 0, 0, 0.5};
    primitive.fading = {Fading::Means::color, 0.3};

    EXPECT_TRUE(found(primitive));
}

TEST_F(SpriteCacheTest, AsksWhetherOneFits)
{
    const Primitive primitive = fillOf(rectangle({0, 0, 30, 20}));
    const auto one = insert(primitive);
    const auto other = insert(primitive);

    const auto found = cache.find(
        keyOf(primitive), [&](const PlacedSprite &placed) { return placed.sprite == other; });

    ASSERT_TRUE(found);
    EXPECT_EQ(found->sprite, other);
    EXPECT_FALSE(cache.find(keyOf(primitive), [](const PlacedSprite &) { return false; }));
}

TEST_F(SpriteCacheTest, KeepsNoMoreSparesThanItMay)
{
    const auto nth = [](int index) { return fillOf(ellipse({0, 0, 100.0 + index, 50})); };
    const qsizetype one = Sprite::make(nth(0), QTransform(), area)->bytes();
    cache = SpriteCache(one * 3 + one / 2);
    for (int index = 0; index < 6; ++index)
        insert(nth(index));

    insert(nth(6)); // in hand while it comes, so that it doesn't count

    EXPECT_FALSE(found(nth(0)));
    EXPECT_FALSE(found(nth(1)));
    EXPECT_TRUE(found(nth(5)));
    EXPECT_TRUE(found(nth(6)));
}

// The outline of a long text takes more than its raster.
TEST_F(SpriteCacheTest, CountsTheOutlinesAsWell)
{
    const auto nth = [](int index) {
        QPainterPath path;
        for (int point = 0; point < 10000; ++point)
            path.lineTo(10 + point % 7, index + point % 3);
        return fillOf(path);
    };
    constexpr qsizetype bytesOfElement = 24;
    EXPECT_GT(keyOf(nth(0)).bytes(), 10000 * bytesOfElement);
    cache = SpriteCache(keyOf(nth(0)).bytes() * 7 / 2);
    for (int index = 0; index < 6; ++index)
        insert(nth(index));

    EXPECT_FALSE(found(nth(0)));
    EXPECT_FALSE(found(nth(1)));
    EXPECT_TRUE(found(nth(5)));
}

TEST_F(SpriteCacheTest, LetsGoFirstOfWhatWasNotUsedForLongest)
{
    const auto nth = [](int index) { return fillOf(ellipse({0, 0, 100.0 + index, 50})); };
    const qsizetype one = Sprite::make(nth(9), QTransform(), area)->bytes();
    cache = SpriteCache(one * 3 + one / 2);
    for (int index = 0; index < 3; ++index)
        insert(nth(index));

    EXPECT_TRUE(found(nth(0)));
    insert(nth(3));
    insert(nth(4));

    EXPECT_TRUE(found(nth(0)));
    EXPECT_FALSE(found(nth(1)));
}

TEST_F(SpriteCacheTest, KeepsWhatIsInUseWhateverItTakes)
{
    cache = SpriteCache(0);
    std::map<int, std::shared_ptr<const Sprite>> used;
    for (int index = 0; index < 5; ++index)
        used[index] = insert(fillOf(ellipse({0, 0, 100.0 + index, 50})));

    for (int index = 0; index < 5; ++index)
        EXPECT_TRUE(found(fillOf(ellipse({0, 0, 100.0 + index, 50}))));
}

} // namespace
} // namespace tessara
