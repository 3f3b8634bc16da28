#include "Rendering/LayerDrawing.h"

#include "Base/RawString.h"
#include "Rendering/LayerDrawing.h"
#include "Rendering/ScoreBarFixture.h"

#include <QPainter>

#include <limits>
#include <set>

namespace tessara {
namespace {

using enum ScoreTemplate;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const QRectF wideBox{0, 0, 1000, 120};
const QRectF titleBox{0, 0, 1180, 132};

class ScoreBarDrawingTest : public ScoreBarTest
{
};

TEST_F(ScoreBarDrawingTest, ThePanelsStandOnTheirBar)
{
    addScore(wideBroadcast, wideBox)->setCustomPalette(primaries());

    const QImage frame = render();

    EXPECT_EQ(inkOf(frame), QRect(0, 0, 1000, 120));
    EXPECT_EQ(bytesAt(frame, 5, 60), (PixelBytes{0, 0, 0, 199})); // 0.78
    EXPECT_EQ(bytesAt(frame, 20, 60), (PixelBytes{255, 0, 0, 255}));
    EXPECT_EQ(bytesAt(frame, 339, 60), (PixelBytes{0, 0, 0, 199}));
    const PixelBytes center = bytesAt(frame, 360, 60);
    EXPECT_NEAR(center[1], 230, 1); // 0.9
    EXPECT_NEAR(center[3], 249, 1); // 0.9, and 0.78 of the rest
    EXPECT_EQ(bytesAt(frame, 700, 60), (PixelBytes{0, 0, 255, 255}));
    EXPECT_EQ(bytesAt(frame, 266, 35), (PixelBytes{0, 255, 255, 255}));
    EXPECT_EQ(bytesAt(frame, 920, 35), (PixelBytes{0, 255, 255, 255}));
}

TEST_F(ScoreBarDrawingTest, EveryRectangleHasItsOwnCorner)
{
    addScore(wideBroadcast, wideBox)->setCustomPalette(primaries());

    const QImage frame = render();

    EXPECT_EQ(alphaAt(frame, 3, 3), 0); // of 16
    EXPECT_EQ(alphaAt(frame, 6, 6), 199);
    EXPECT_EQ(bytesAt(frame, 13, 19), (PixelBytes{0, 0, 0, 199})); // of 10
    EXPECT_EQ(bytesAt(frame, 16, 22), (PixelBytes{255, 0, 0, 255}));
    EXPECT_EQ(bytesAt(frame, 263, 29), (PixelBytes{255, 0, 0, 255})); // of 8
}

TEST_F(ScoreBarDrawingTest, AVerySmallBarShowsTheFootOfItsPanelsAndNothingBeyondItself)
{
    addScore(wideBroadcast, {50, 50, 100, 20})->setCustomPalette(primaries());

    const QImage frame = render();

    EXPECT_EQ(inkOf(frame), QRect(50, 50, 100, 20));
    // The panels begin 18 above the lower edge and would be 32 high.
    EXPECT_EQ(bytesAt(frame, 80, 50), (PixelBytes{255, 0, 0, 255}));
    EXPECT_EQ(bytesAt(frame, 80, 53), (PixelBytes{0, 0, 0, 199}));
    EXPECT_NEAR(bytesAt(frame, 130, 50)[1], 230, 1);
}

TEST_F(ScoreBarDrawingTest, ACropIsAWindowAndShrinksNothing)
{
    addScore(wideBroadcast, wideBox);
    const QImage whole = render();
    document.removeSelectedLayers();

    cropTo(addScore(wideBroadcast, {0, 0, 500, 120}), {0, 0, 0.5, 1});

    EXPECT_EQ(render().copy(0, 0, 500, 120), whole.copy(0, 0, 500, 120));
    EXPECT_EQ(inkOf(render()), QRect(0, 0, 500, 120));
}

TEST_F(ScoreBarDrawingTest, ACropRunsDownwardFromTheBarsTop)
{
    ScoreLayer *score = addScore(titleBar, titleBox);
    const QImage whole = render();
    score->setSize({590, 66});

    for (const QPointF corner :
         {QPointF(0, 0), QPointF(0.5, 0), QPointF(0, 0.5), QPointF(0.5, 0.5)}) {
        cropTo(score, {corner, QSizeF(0.5, 0.5)});
        const QImage frame = render();
        const QImage part = whole.copy(int(corner.x() * 1180), int(corner.y() * 132), 590, 66);
        EXPECT_LE(largestDifference(frame.copy(0, 0, 590, 66), part), 2);
        EXPECT_TRUE(QRect(0, 0, 590, 66).contains(inkOf(frame)));
    }
}

TEST_F(ScoreBarDrawingTest, ABrokenCropIsMended)
{
    ScoreLayer *score = addScore(wideBroadcast, {0, 0, 500, 120});
    cropTo(score, {0.75, 0, 0.5, 1});
    const QImage outside = render();
    cropTo(score, {0.5, 0, 0.5, 1});
    EXPECT_EQ(render(), outside);

    cropTo(score, {nan, nan, infinity, nan});
    const QImage unreadable = render();
    score->setCropRectNormalized({});
    EXPECT_EQ(render(), unreadable);
}

TEST_F(ScoreBarDrawingTest, TheLayersOwnOpacityFadesThePanelsAndNotTheTexts)
{
    ScoreLayer *score = addScore(wideBroadcast, wideBox);
    score->setCustomPalette(primaries());
    score->setOpacity(0.5);

    const QImage frame = render();

    EXPECT_NEAR(alphaAt(frame, 5, 60), 99, 1);
    EXPECT_NEAR(bytesAt(frame, 20, 60)[0], 128, 1);
    EXPECT_TRUE(hasColor(frame.copy(0, 0, 250, 120), {255, 255, 255, 255}));
}

TEST_F(ScoreBarDrawingTest, TheRunsOpacityFadesBoth)
{
    ScoreLayer *score = addScore(wideBroadcast, wideBox);
    score->setCustomPalette(primaries());
    setVisibility(score, 0.5);
    EXPECT_NEAR(alphaAt(render(), 5, 60), 99, 1);
    EXPECT_NEAR(bytesAt(render(), 20, 60)[0], 128, 1);

    score->setOpacity(0);

    EXPECT_NEAR(highestAlpha(render()), 128, 1);
    EXPECT_TRUE(hasColor(render(), {128, 128, 128, 128}));
}

TEST_F(ScoreBarDrawingTest, OwnOpacityAndRunMultiplyOnThePanels)
{
    ScoreLayer *score = addScore(wideBroadcast, wideBox);
    score->setOpacity(0.5);
    setVisibility(score, 0.5);

    EXPECT_NEAR(alphaAt(render(), 5, 60), 50, 1); // 0.25 of 0.78
}

TEST_F(ScoreBarDrawingTest, AnOpacityThatIsNoNumberIsNone)
{
    ScoreLayer *score = addPanelless(wideBroadcast, wideBox);
    const QImage textsAlone = render();

    for (const double opacity : {nan, infinity, -infinity, -1.0}) {
        score->setOpacity(opacity);
        EXPECT_EQ(render(), textsAlone);
    }
    score->setOpacity(4);
    EXPECT_EQ(alphaAt(render(), 20, 60), 255);
}

TEST_F(ScoreBarDrawingTest, OnlyATitleBarHasOrnaments)
{
    for (const ScoreTemplate scoreTemplate : {wideBroadcast, compactStrip}) {
        addPanelless(scoreTemplate, titleBox);
        EXPECT_FALSE(hasColor(render(), {242, 194, 0, 242}));
        EXPECT_TRUE(isBlank(render().copy(0, 126, 1180, 6)));
        document.removeSelectedLayers();
    }

    addPanelless(titleBar, titleBox);

    EXPECT_TRUE(hasColor(render(), {242, 194, 0, 242}));
    EXPECT_EQ(inkOf(render().copy(0, 126, 1180, 6)), QRect(7, 3, 1166, 2));
}

TEST_F(ScoreBarDrawingTest, TheHairlineLiesAtTheLowerEdge)
{
    addPanelless(titleBar, titleBox);

    const QImage frame = render();

    // 1.2 wide around 2 above the edge: 0.6 of either row.
    for (const int row : {129, 130}) {
        EXPECT_NEAR(alphaAt(frame, 600, row), 0.62 * 0.6 * 255, 3);
        EXPECT_EQ(bytesAt(frame, 600, row)[0], alphaAt(frame, 600, row)); // white
    }
    EXPECT_TRUE(isBlank(frame.copy(0, 0, 1180, 12)));
}

TEST_F(ScoreBarDrawingTest, ThePointersPointAtTheCentreFromOutside)
{
    addPanelless(titleBar, titleBox);

    const QImage frame = render();

    // The centre panel reaches from 375 to 734, its middle is 66; a pointer is 12.96 by 36.72.
    EXPECT_EQ(inkOf(frame.copy(350, 0, 24, 100)), QRect(9, 47, 13, 38));
    EXPECT_EQ(inkOf(frame.copy(735, 0, 16, 100)), QRect(2, 47, 13, 38));
    EXPECT_EQ(bytesAt(frame, 361, 52), (PixelBytes{242, 194, 0, 242}));
    EXPECT_EQ(alphaAt(frame, 370, 52), 0);
    EXPECT_EQ(bytesAt(frame, 747, 52), (PixelBytes{242, 194, 0, 242}));
    EXPECT_EQ(alphaAt(frame, 738, 52), 0);
}

TEST_F(ScoreBarDrawingTest, NoOpacityReachesTheOrnaments)
{
    ScoreLayer *score = addPanelless(titleBar, titleBox);
    const QImage full = render();
    setVisibility(score, 0.1);

    const QImage faint = render();

    EXPECT_EQ(bytesAt(faint, 365, 66), (PixelBytes{242, 194, 0, 242}));
    EXPECT_EQ(faint.copy(0, 126, 1180, 6), full.copy(0, 126, 1180, 6));
    EXPECT_NE(faint, full);
}

TEST_F(ScoreBarDrawingTest, ATitleBarUsesTheBadgeColourNowhere)
{
    const auto dependsOnBadge = [&](ScoreTemplate scoreTemplate) {
        ScoreLayer *score = addScore(scoreTemplate, titleBox);
        ScorePalette palette = primaries();
        score->setCustomPalette(palette);
        const QImage before = render();
        palette.badge = {1, 0, 1, 1};
        score->setCustomPalette(palette);
        const bool differs = render() != before;
        document.removeSelectedLayers();
        return differs;
    };

    EXPECT_FALSE(dependsOnBadge(titleBar));
    EXPECT_TRUE(dependsOnBadge(wideBroadcast));
    EXPECT_TRUE(dependsOnBadge(compactStrip));
}

TEST_F(ScoreBarDrawingTest, UnderACustomPaletteTheSportChangesNoColour)
{
    for (const ScoreTemplate scoreTemplate : allCases<ScoreTemplate>()) {
        ScoreLayer *score = addScore(scoreTemplate, titleBox);
        score->setCustomPalette(primaries());
        const QImage football = render();
        for (const ScoreSportPreset sport : allCases<ScoreSportPreset>()) {
            score->setSportPreset(sport);
            EXPECT_EQ(render(), football);
        }
        document.removeSelectedLayers();
    }
}

TEST_F(ScoreBarDrawingTest, UnderACustomPaletteTheOrnamentsStayWhiteAndYellow)
{
    ScoreLayer *score = addPanelless(titleBar, titleBox);
    const RGBAColor green{0, 1, 0, 1};
    score->setCustomPalette(ScorePalette{green, green, green, green, green, green});

    const QImage frame = render();

    EXPECT_EQ(bytesAt(frame, 365, 66), (PixelBytes{242, 194, 0, 242}));
    const PixelBytes hairline = bytesAt(frame, 600, 129);
    EXPECT_GT(hairline[0], 80);
    EXPECT_EQ(hairline[0], hairline[1]);
    EXPECT_EQ(hairline[0], hairline[2]);
}

TEST_F(ScoreBarDrawingTest, AllTemplatesAndSportsShowTheirColours)
{
    const auto distinctLooks = [&](ScoreTemplate scoreTemplate) {
        std::set<QByteArray> looks;
        for (const ScoreSportPreset sport : allCases<ScoreSportPreset>()) {
            const QImage frame = frameOf(scoreTemplate, titleBox, sport);
            looks.insert(QByteArray(reinterpret_cast<const char *>(frame.constBits()),
                                    int(frame.sizeInBytes())));
        }
        return looks.size();
    };

    EXPECT_EQ(distinctLooks(wideBroadcast), 3); // baseball, badminton and the others
    EXPECT_EQ(distinctLooks(compactStrip), 3);
    EXPECT_EQ(distinctLooks(titleBar), 2); // basketball and the others
    EXPECT_NE(frameOf(wideBroadcast, titleBox, ScoreSportPreset::futsal),
              frameOf(compactStrip, titleBox, ScoreSportPreset::futsal));
}

TEST_F(ScoreBarDrawingTest, ABasketballTitleBarIsPurpleAndGreen)
{
    addScore(titleBar, titleBox, ScoreSportPreset::basketball);

    const QImage frame = render();

    EXPECT_EQ(bytesAt(frame, 20, 20), (PixelBytes{89, 41, 158, 255}));
    EXPECT_EQ(bytesAt(frame, 1160, 20), (PixelBytes{8, 107, 41, 255}));
}

TEST_F(ScoreBarDrawingTest, ThePanelsTakeNoAlphaFromThePalette)
{
    ScoreLayer *score = addScore(wideBroadcast, wideBox);
    score->setCustomPalette(primaries());
    const QImage opaque = render();
    ScorePalette palette = primaries();
    for (RGBAColor *color :
         {&palette.background, &palette.home, &palette.center, &palette.away, &palette.badge})
        color->alpha = 0.2;

    score->setCustomPalette(palette);

    EXPECT_EQ(render(), opaque);
}

TEST_F(ScoreBarDrawingTest, AHiddenBarIsNotDrawnUnlessItRuns)
{
    ScoreLayer *score = addScore(wideBroadcast, wideBox);
    forgetVisibility();
    score->setIsHidden(true);
    EXPECT_TRUE(isBlank(render()));

    setVisibility(score, 1);

    EXPECT_FALSE(isBlank(render()));
}

TEST_F(ScoreBarDrawingTest, APresetRevealSlidesTheWholeBar)
{
    ScoreLayer *score = addScore(titleBar, {50, 100, 1180, 132});
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, score->id());
    setVisibility(score, 0.5);
    const QSizeF offset = document.effectiveTransitionOffset(score->id(), false);
    ASSERT_GT(std::abs(offset.height()), 2);

    const QRect ink = inkOf(render());

    EXPECT_NEAR(ink.top(), 100 + offset.height(), 1);
    EXPECT_NEAR(ink.bottom(), 231 + offset.height(), 1);
}

// A bar that slides must not jump from row to row at its edges.
TEST_F(ScoreBarDrawingTest, ABarBetweenTwoRowsIsSoftAtBothEdges)
{
    addScore(wideBroadcast, {100, 10.25, 1000, 120});

    const QImage frame = render();

    EXPECT_NEAR(alphaAt(frame, 500, 10), 0.75 * 199, 3);
    EXPECT_NEAR(alphaAt(frame, 500, 130), 0.25 * 199, 3);
    EXPECT_EQ(alphaAt(frame, 500, 131), 0);
}

TEST_F(ScoreBarDrawingTest, FrameAndCanvasShowTheSame)
{
    for (const ScoreTemplate scoreTemplate : allCases<ScoreTemplate>()) {
        const CanvasLayerItem item(addScore(scoreTemplate, {20, 30, 1000, 120}));
        QImage canvas(1300, 300, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        TextBlockCache texts;
        drawLayer(painter, document, item, 1, DrawingStyle::canvas, texts);
        painter.end();

        EXPECT_EQ(canvas.convertToFormat(QImage::Format_RGBA8888_Premultiplied), render());
        document.removeSelectedLayers();
    }
}

TEST_F(ScoreBarDrawingTest, ABarLeavesThePainterAsItWas)
{
    addScore(titleBar, {0, 0, 400, 80});
    addShape(ShapeKind::rectangle, {600, 200, 100, 100});

    EXPECT_EQ(bytesAt(render(), 650, 250), (PixelBytes{255, 0, 0, 255}));
    EXPECT_EQ(inkOf(render().copy(500, 0, 800, 300)), QRect(100, 200, 100, 100));
}

TEST_F(ScoreBarDrawingTest, OffTheCanvasNothingIsLeft)
{
    ScoreLayer *score = addScore(titleBar, {-1180, 50, 1180, 132});
    EXPECT_TRUE(isBlank(render()));

    score->setPosition({-1000, 250});

    EXPECT_EQ(inkOf(render()), QRect(0, 250, 180, 50));
}

TEST_F(ScoreBarDrawingTest, ABarWithoutAnAreaShowsNothing)
{
    for (const QSizeF size : {QSizeF(0, 120), QSizeF(900, 0), QSizeF(-3, 120), QSizeF(nan, 120)}) {
        addScore(titleBar, {QPointF(100, 100), size});
        EXPECT_TRUE(isBlank(render()));
    }
}

TEST_F(ScoreBarDrawingTest, BarsOfAnySizeAndPlaceEndNoFrame)
{
    for (const ScoreTemplate scoreTemplate : allCases<ScoreTemplate>()) {
        for (const double huge : {1e5, 1e6, 1e12, 1e300, infinity}) {
            addScore(scoreTemplate, {-huge / 2, -huge / 2, huge, huge});
            EXPECT_EQ(render().size(), QSize(1300, 300));
            document.removeSelectedLayers();
        }
    }
}

} // namespace
} // namespace tessara
