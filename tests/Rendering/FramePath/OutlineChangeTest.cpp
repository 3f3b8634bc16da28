#include "Rendering/FramePath/OutlineChange.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tessara {
namespace {

constexpr double size = 8;

OutlineShape rectangle(double height)
{
    QPainterPath path;
    path.addRect(0, 0, size, height);
    return OutlineShape::of(path);
}

/// Squares below each other, from each of these heights.
OutlineParts squares(std::initializer_list<double> tops)
{
    static const OutlineShape square = rectangle(size);
    std::vector<PlacedShape> shapes;
    for (const double top : tops)
        shapes.push_back({square, QPointF(0, top)});
    return outlineOf(shapes).parts;
}

void expectRows(const OutlineParts &before, const OutlineParts &after, int top, int bottom,
                const QTransform &toPixels = {})
{
    const std::optional<OutlineRows> rows = changedRows(before, after, toPixels);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->top, top);
    EXPECT_EQ(rows->bottom, bottom);
}

TEST(OutlineChange, EqualOutlinesDifferNowhere)
{
    expectRows(squares({0, 10, 20}), squares({0, 10, 20}), 0, -1);
    expectRows(squares({}), squares({}), 0, -1);
}

TEST(OutlineChange, ReachesAroundWhatIsReplaced)
{
    expectRows(squares({0, 20, 40, 60, 80}), squares({0, 20, 45, 60, 80}), 39, 54);
}

TEST(OutlineChange, ReachesAroundWhatCameOrWent)
{
    expectRows(squares({0, 20, 60}), squares({0, 20, 40, 60}), 39, 49);
    expectRows(squares({0, 20, 40, 60}), squares({0, 20, 60}), 39, 49);
    expectRows(squares({0, 20}), squares({0, 20, 40}), 39, 49);
    expectRows(squares({0, 20}), squares({20}), -1, 9);
    expectRows(squares({}), squares({20}), 19, 29);
}

// The first and the last that differ meet in the middle of equal ones.
TEST(OutlineChange, OfEqualsInARowOneMore)
{
    expectRows(squares({20, 20}), squares({20, 20, 20}), 19, 29);
    expectRows(squares({20, 20, 20}), squares({20}), 19, 29);
}

TEST(OutlineChange, AnotherShapeAtTheSamePlaceIsAChange)
{
    const OutlineShape low = rectangle(size);
    const OutlineShape high = rectangle(30);
    const PlacedShape before[] = {{low, {0, 0}}, {low, {20, 50}}};
    const PlacedShape after[] = {{low, {0, 0}}, {high, {20, 50}}};

    expectRows(outlineOf(before).parts, outlineOf(after).parts, 49, 81);
}

TEST(OutlineChange, CountsInPixels)
{
    expectRows(squares({0, 20, 40}), squares({0, 20, 41}), 84, 104, QTransform(3, 0, 0, 2, 7, 5.5));
}

TEST(OutlineChange, TellsNothingOfTurnsAndOfWhatHasNoParts)
{
    EXPECT_FALSE(changedRows({}, squares({0}), {}));
    EXPECT_FALSE(changedRows(squares({0}), {}, {}));
    EXPECT_FALSE(changedRows(squares({0}), squares({20}), QTransform().rotate(10)));
    EXPECT_FALSE(changedRows(squares({0}), squares({20}), QTransform::fromScale(1, -1)));
}

} // namespace
} // namespace tessara
