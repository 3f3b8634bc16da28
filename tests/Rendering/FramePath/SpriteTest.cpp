#include "Rendering/FramePath/SpriteFixture.h"

#include "Base/Pixels/RowBlending.h"

namespace tessara {
namespace {

std::shared_ptr<const Sprite> madeOf(const Primitive &primitive, const QRect &area)
{
    return Sprite::make(primitive, QTransform(), area);
}

TEST(Sprite, HoldsTheCoverageThatAPainterGives)
{
    const QRect area(-20, -10, 300, 200);
    for (const QPainterPath &path :
         {rectangle({3.25, 4.5, 100, 50}), ellipse({-10, 5, 250.5, 120}), ellipse({3, 3, 0.5, 0.5}),
          rectangle({-500, -500, 2000, 2000}), rectangle({250, 100, 400, 400})}) {
        const Primitive primitive = fillOf(path, {0.3, 0.7});

        const auto sprite = madeOf(primitive, area);

        EXPECT_EQ(sprite->kind(), Sprite::Kind::mask);
        EXPECT_EQ(unpacked(*sprite, area), painted(primitive, area));
    }
}

TEST(Sprite, HoldsThePixelsThatAPainterGives)
{
    const QRect area(0, 0, 200, 150);
    for (const QRectF &box : {QRectF(10, 20, 64, 40), QRectF(10.5, 20.25, 100, 90),
                              QRectF(5, 5, 20, 10), QRectF(150, 100, 100, 100)}) {
        for (const int alpha : {255, 120}) {
            const Primitive primitive = pictureOf(gradient({64, 40}, alpha), box);

            const auto sprite = madeOf(primitive, area);

            EXPECT_EQ(sprite->kind(), Sprite::Kind::picture);
            EXPECT_EQ(unpacked(*sprite, area), painted(primitive, area)) << box.x() << ' ' << alpha;
        }
    }
}

TEST(Sprite, ShowsAPictureThroughItsMask)
{
    const QRect area(0, 0, 100, 100);
    Primitive primitive = pictureOf(gradient({50, 50}), {10, 10, 80, 80});
    std::get<PlacedPicture>(primitive.what).mask = ellipse({20, 20, 50.5, 60});

    const auto sprite = madeOf(primitive, area);

    EXPECT_EQ(unpacked(*sprite, area), painted(primitive, area));
    EXPECT_TRUE(QRect(18, 18, 55, 65).contains(sprite->bounds()));
}

// A painter that sees nothing but the straight part of a mask's edge takes it for hard.
TEST(Sprite, KeepsTheSoftEdgeOfAMaskThatIsWiderThanThePicture)
{
    const QRect area(0, 0, 100, 100);
    Primitive primitive = pictureOf(gradient({16, 22}), {19.3, 0, 12, 17}, {7.7, 44.4681});
    QPainterPath mask;
    mask.addRoundedRect(QRectF(0, 0, 50.6, 17), 2, 2);
    std::get<PlacedPicture>(primitive.what).mask = mask;

    const auto sprite = madeOf(primitive, area);

    EXPECT_EQ(unpacked(*sprite, area), painted(primitive, area));
}

// A painter rounds halves away from zero, and a strip has its zero elsewhere.
TEST(Sprite, PutsAPictureBetweenTwoPixelsWhereTheFrameHasIt)
{
    const QRect area(0, 0, 900, 1400); // several strips
    for (const QPointF place : {QPointF(12.5, 10.5), QPointF(-3.5, -20.5)}) {
        for (const std::optional<QRectF> &clip : {std::optional<QRectF>(), {{16, 22, 500, 900}}}) {
            Primitive primitive = pictureOf(gradient({800, 1300}), {0, 0, 800, 1300}, place);
            primitive.clip = clip;

            const auto sprite = madeOf(primitive, area);

            EXPECT_EQ(unpacked(*sprite, area), painted(primitive, area)) << place.x();
        }
    }
}

TEST(Sprite, KnowsNothingBeyondItsAreaAndItsClip)
{
    Primitive primitive = fillOf(rectangle({0, 0, 100, 100}));

    EXPECT_EQ(madeOf(primitive, {10, 20, 30, 40})->bounds(), QRect(10, 20, 30, 40));
    primitive.clip = QRectF(15.5, 0, 10, 500);
    EXPECT_EQ(madeOf(primitive, {10, 20, 30, 40})->bounds(), QRect(15, 20, 11, 40));
}

TEST(Sprite, IsEmptyWhereNothingIsCovered)
{
    const QRect area(0, 0, 100, 100);

    EXPECT_TRUE(madeOf(fillOf(rectangle({200, 0, 10, 10})), area)->bounds().isEmpty());
    EXPECT_TRUE(madeOf(fillOf(QPainterPath()), area)->bounds().isEmpty());
    EXPECT_TRUE(madeOf(pictureOf(gradient({5, 5}), {0, 300, 10, 10}), area)->bounds().isEmpty());
}

// Their edges would show in the frame.
TEST(Sprite, IsTheSameInStripsAsInOnePiece)
{
    const QRect area(-7, -3, 1900, 1400); // several strips
    const Primitive fill = fillOf(ellipse({10.3, 20.7, 1800, 1300}), {0.25, 0.5});
    const Primitive slanted = [] {
        QPainterPath path;
        path.addPolygon(QPolygonF({{3.3, 1.7}, {1850.1, 700.2}, {900, 1390.9}, {3.3, 1.7}}));
        return fillOf(path);
    }();
    const Primitive withGap = [] {
        QPainterPath path = ellipse({10, 10, 1800, 90});
        path.addRect(500.5, 1200.5, 900, 100);
        return fillOf(path);
    }();
    const Primitive picture = pictureOf(gradient({700, 500}), {3.5, 2.25, 1800, 1300});

    for (const Primitive &primitive : {fill, slanted, withGap, picture}) {
        const auto sprite = madeOf(primitive, area);

        EXPECT_EQ(unpacked(*sprite, area), painted(primitive, area));
    }
}

TEST(Sprite, HasRunsOfWholeCellsFromLeftToRight)
{
    const auto sprite = madeOf(fillOf(ellipse({3, 3, 400, 250})), {0, 0, 500, 300});

    for (int row = 0; row < sprite->bounds().height(); ++row) {
        int end = 0;
        for (const SpriteRun &run : sprite->row(row)) {
            EXPECT_EQ(run.x % cellWidth, 0);
            EXPECT_EQ(run.pixels % cellWidth, 0);
            EXPECT_GT(run.pixels, 0);
            EXPECT_GE(run.x, end);
            EXPECT_EQ(run.data == nullptr, run.isFull);
            end = run.x + run.pixels;
        }
    }
}

TEST(Sprite, LeavesOutWhatIsEmpty)
{
    QPainterPath path = rectangle({0, 0, 16, 10});
    path.addRect(400, 0, 16, 10);

    const auto sprite = madeOf(fillOf(path), {0, 0, 500, 20});

    ASSERT_EQ(sprite->bounds(), QRect(0, 0, 416, 10));
    ASSERT_EQ(sprite->row(5).size(), 2u);
    EXPECT_EQ(sprite->row(5)[0].x, 0);
    EXPECT_EQ(sprite->row(5)[1].x, 400);
    EXPECT_LE(sprite->bytes(), 10 * 2 * 16);
}

TEST(Sprite, TellsTheLongestFullStretchOfEachRow)
{
    QPainterPath path = rectangle({0, 0, 160, 10});
    path.addRect(200, 0, 320, 10);
    path.addRect(0, 10, 8, 10);

    const auto sprite = madeOf(fillOf(path), {0, 0, 600, 20});

    EXPECT_TRUE(sprite->hasFullSpans());
    EXPECT_EQ(sprite->fullSpan(5).x, 200);
    EXPECT_EQ(sprite->fullSpan(5).pixels, 320);
    EXPECT_EQ(sprite->fullSpan(15).pixels, 0); // too short to be worth it
}

TEST(Sprite, CallsOnlyWhatIsOpaqueFull)
{
    const QRect area(0, 0, 200, 100);

    EXPECT_TRUE(madeOf(pictureOf(gradient({160, 90}), {0, 0, 160, 90}), area)->hasFullSpans());
    EXPECT_FALSE(
        madeOf(pictureOf(gradient({160, 90}, 254), {0, 0, 160, 90}), area)->hasFullSpans());
    // 8 px that reach a row's end by 4 are no whole cell.
    const auto narrow = madeOf(fillOf(rectangle({0, 0, 84, 10})), area);
    EXPECT_EQ(narrow->fullSpan(0).pixels, 80);
}

TEST(Sprite, HasANumberOfItsOwn)
{
    const Primitive primitive = fillOf(rectangle({0, 0, 10, 10}));

    const auto one = madeOf(primitive, {0, 0, 20, 20});
    const auto other = madeOf(primitive, {0, 0, 20, 20});

    EXPECT_NE(one->serial(), other->serial());
}

} // namespace
} // namespace tessara
