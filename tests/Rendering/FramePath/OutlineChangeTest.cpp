#include "Rendering/FramePath/OutlineChange.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace tessara {
namespace {

constexpr double size = 8;

/// Squares below each other, from each of these heights.
QPainterPath squares(std::initializer_list<double> tops)
{
    QPainterPath path;
    for (const double top : tops)
        path.addRect(0, top, size, size);
    return path;
}

void expectRows(const QPainterPath &before, const QPainterPath &after, int top, int bottom,
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
    expectRows({}, {}, 0, -1);
}

// One polygon more on either side of the change may be counted with it.
TEST(OutlineChange, ReachesAroundWhatIsReplaced)
{
    expectRows(squares({0, 20, 40, 60, 80}), squares({0, 20, 45, 60, 80}), 19, 54);
}

TEST(OutlineChange, ReachesAroundWhatCameOrWent)
{
    expectRows(squares({0, 20, 60}), squares({0, 20, 40, 60}), 19, 49);
    expectRows(squares({0, 20, 40, 60}), squares({0, 20, 60}), 19, 49);
    expectRows(squares({0, 20}), squares({0, 20, 40}), 19, 49);
    expectRows(squares({0, 20}), squares({20}), -1, 9);
    expectRows({}, squares({20}), 19, 29);
}

TEST(OutlineChange, ALineMoreChangesItsPolygon)
{
    QPainterPath open;
    open.moveTo(0, 0);
    open.lineTo(5, 30);
    QPainterPath longer = open;
    longer.lineTo(9, 12);
    open.addRect(0, 50, size, size);
    longer.addRect(0, 50, size, size);

    expectRows(open, longer, -1, 31);
}

TEST(OutlineChange, CountsInPixels)
{
    expectRows(squares({0, 20, 40}), squares({0, 20, 41}), 44, 104, QTransform(3, 0, 0, 2, 7, 5.5));
}

TEST(OutlineChange, TellsNothingOfCurvesTurnsAndOtherRules)
{
    QPainterPath curved = squares({0});
    curved.addEllipse(0, 20, size, size);
    EXPECT_FALSE(changedRows(curved, squares({0}), {}));
    EXPECT_FALSE(changedRows(squares({0}), curved, {}));
    EXPECT_FALSE(changedRows(squares({0}), squares({20}), QTransform().rotate(10)));
    EXPECT_FALSE(changedRows(squares({0}), squares({20}), QTransform::fromScale(1, -1)));

    QPainterPath other = squares({0});
    other.setFillRule(Qt::WindingFill);
    EXPECT_FALSE(changedRows(squares({0}), other, {}));
}

} // namespace
} // namespace tessara
