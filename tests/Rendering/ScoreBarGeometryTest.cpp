#include "Rendering/ScoreBarGeometry.h"

#include "Base/RawString.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

using enum ScoreTemplate;

void expectNear(const QRectF &rect, const QRectF &expected)
{
    EXPECT_NEAR(rect.left(), expected.left(), 1e-9);
    EXPECT_NEAR(rect.top(), expected.top(), 1e-9);
    EXPECT_NEAR(rect.width(), expected.width(), 1e-9);
    EXPECT_NEAR(rect.height(), expected.height(), 1e-9);
}

TEST(ScoreBarGeometryTest, AWideBarIsMeasuredToTheDigit)
{
    const ScoreBarGeometry geometry = makeScoreBarGeometry({1000, 120}, wideBroadcast);

    EXPECT_EQ(geometry.barRect, QRectF(0, 0, 1000, 120));
    EXPECT_EQ(geometry.homeRect, QRectF(12, 18, 322, 84));
    EXPECT_EQ(geometry.centerRect, QRectF(344, 18, 331, 84));
    EXPECT_EQ(geometry.awayRect, QRectF(685, 18, 303, 84));
    expectNear(geometry.homeBadgeRect, {334 - 60.48 - 10.92, 28.92, 60.48, 62.16});
    expectNear(geometry.awayBadgeRect, {988 - 60.48 - 10.92, 28.92, 60.48, 62.16});
    EXPECT_EQ(geometry.barCornerRadius, 16);
    EXPECT_EQ(geometry.panelCornerRadius, 10);
}

TEST(ScoreBarGeometryTest, ACompactStripHasABroaderCentre)
{
    const ScoreBarGeometry geometry = makeScoreBarGeometry({900, 102}, compactStrip);

    EXPECT_EQ(geometry.homeRect, QRectF(10, 16, 272, 70));
    EXPECT_EQ(geometry.centerRect, QRectF(290, 16, 334, 70));
    EXPECT_EQ(geometry.awayRect, QRectF(632, 16, 258, 70));
    expectNear(geometry.homeBadgeRect, {282 - 58 - 9.1, 25.1, 58, 51.8});
    EXPECT_EQ(geometry.barCornerRadius, 12);
    EXPECT_EQ(geometry.panelCornerRadius, 8);
}

TEST(ScoreBarGeometryTest, ATitleBarLeavesTheMostToTheAwayTeam)
{
    const ScoreBarGeometry geometry = makeScoreBarGeometry({1180, 132}, titleBar);

    EXPECT_EQ(geometry.homeRect, QRectF(10, 12, 359, 108));
    EXPECT_EQ(geometry.centerRect, QRectF(375, 12, 359, 108));
    EXPECT_EQ(geometry.awayRect, QRectF(740, 12, 430, 108));
    EXPECT_EQ(geometry.barCornerRadius, 4);
    EXPECT_EQ(geometry.panelCornerRadius, 2);
}

TEST(ScoreBarGeometryTest, AVerySmallBarOverflowsRatherThanCollapses)
{
    const ScoreBarGeometry geometry = makeScoreBarGeometry({100, 20}, wideBroadcast);

    EXPECT_EQ(geometry.barRect, QRectF(0, 0, 100, 20));
    EXPECT_EQ(geometry.homeRect, QRectF(12, 18, 39, 32));
    EXPECT_EQ(geometry.centerRect, QRectF(61, 18, 40, 32));
    EXPECT_EQ(geometry.awayRect, QRectF(111, 18, 80, 32)); // 21 without its floor
    expectNear(geometry.homeBadgeRect, {51 - 58 - 6, 24, 58, 26});
}

TEST(ScoreBarGeometryTest, EvenABarWithoutASizeHasPanels)
{
    for (const ScoreTemplate scoreTemplate : allCases<ScoreTemplate>()) {
        for (const QSizeF size : {QSizeF(0, 0), QSizeF(-500, -500)}) {
            const ScoreBarGeometry geometry = makeScoreBarGeometry(size, scoreTemplate);
            EXPECT_GE(geometry.homeRect.width(), 37);
            EXPECT_GE(geometry.centerRect.width(), 37);
            EXPECT_EQ(geometry.awayRect.width(), 80);
            EXPECT_EQ(geometry.centerRect.height(), 32);
        }
    }
}

TEST(ScoreBarGeometryTest, PanelWidthsLoseTheirFractions)
{
    // 0.33 of 976.9 is 322.377, 0.34 of it 332.146; the away team takes up what is left.
    const ScoreBarGeometry geometry = makeScoreBarGeometry({1000.9, 120}, wideBroadcast);

    EXPECT_EQ(geometry.homeRect.width(), 322);
    EXPECT_EQ(geometry.centerRect.width(), 332);
    EXPECT_NEAR(geometry.awayRect.right(), 1000.9 - 12, 1e-9);
}

TEST(ScoreBarGeometryTest, ABadgeGrowsWithItsPanelWithinLimits)
{
    const auto badge = [](double height) {
        return makeScoreBarGeometry({1000, height}, wideBroadcast).homeBadgeRect;
    };

    EXPECT_EQ(badge(40).width(), 58);
    EXPECT_EQ(badge(40).height(), 26);
    EXPECT_NEAR(badge(136).width(), 72, 1e-9);
    EXPECT_EQ(badge(400).width(), 92);
    EXPECT_NEAR(badge(400).height(), 364 * 0.74, 1e-9);
}

TEST(ScoreBarGeometryTest, ThePanelsOfAnySizeStandSideBySide)
{
    for (const ScoreTemplate scoreTemplate : allCases<ScoreTemplate>()) {
        for (double width = 0; width < 2000; width += 33.3) {
            const ScoreBarGeometry geometry = makeScoreBarGeometry({width, 90}, scoreTemplate);
            EXPECT_LT(geometry.homeRect.right(), geometry.centerRect.left());
            EXPECT_LT(geometry.centerRect.right(), geometry.awayRect.left());
            EXPECT_EQ(geometry.homeRect.top(), geometry.awayRect.top());
            EXPECT_LT(geometry.homeBadgeRect.right(), geometry.homeRect.right());
        }
    }
}

TEST(ScoreBarGeometryTest, TheSameMeasuresAreEqual)
{
    const ScoreBarGeometry geometry = makeScoreBarGeometry({960, 128}, wideBroadcast);

    EXPECT_EQ(geometry, makeScoreBarGeometry({960, 128}, wideBroadcast));
    EXPECT_NE(geometry, makeScoreBarGeometry({960, 128}, compactStrip));
    EXPECT_NE(geometry, makeScoreBarGeometry({961, 128}, wideBroadcast));
}

} // namespace
} // namespace tessara
