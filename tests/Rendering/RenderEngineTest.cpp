#include "Rendering/RenderEngine.h"

#include "Rendering/FrameFixture.h"
#include "Rendering/LayerDrawing.h"

#include <cmath>
#include <limits>

namespace tessara {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class RenderEngineTest : public FrameTest
{
protected:
    ShapeLayer *addRedBar() { return addShape(ShapeKind::rectangle, {20, 10, 100, 30}); }

    std::optional<RenderEngineError> errorOnCanvas(QSizeF size)
    {
        document.setSize(size);
        const auto frame = RenderEngine().render(document, {});
        return frame ? std::nullopt : std::optional(frame.error());
    }
};

TEST_F(RenderEngineTest, AnEmptyDocumentIsTransparentAndOfCanvasSize)
{
    const QImage frame = render();

    EXPECT_EQ(frame.size(), QSize(200, 100));
    EXPECT_TRUE(isBlank(frame));
}

TEST_F(RenderEngineTest, ABackgroundFillsTheWholeFrameOpaquely)
{
    const QImage frame = render(QColor(0, 177, 64));

    for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 99), QPoint(199, 99)})
        EXPECT_EQ(bytesAt(frame, corner.x(), corner.y()), (PixelBytes{0, 177, 64, 255}));
}

TEST_F(RenderEngineTest, FractionsOfTheCanvasAreCut)
{
    document.setSize({192.9, 108.9});

    EXPECT_EQ(render().size(), QSize(192, 108));
}

// The frame counts from its lower edge: what is lost of a broken canvas is lost at the top.
TEST_F(RenderEngineTest, AFractionOfARowIsLostAtTheTop)
{
    document.setSize({200, 100.5});
    addShape(ShapeKind::rectangle, {0, 50.5, 200, 50});

    const QImage frame = render();

    EXPECT_EQ(alphaAt(frame, 100, 49), 0);
    EXPECT_EQ(alphaAt(frame, 100, 50), 255);
    EXPECT_EQ(alphaAt(frame, 100, 99), 255);
}

TEST_F(RenderEngineTest, BytesAreRedGreenBlueAlphaPremultipliedWithoutPadding)
{
    document.setSize({7, 3});
    addShape(ShapeKind::rectangle, {0, 0, 7, 3}, {1, 0.5, 0, 0.5});

    const QImage frame = render();

    EXPECT_EQ(frame.format(), QImage::Format_RGBA8888_Premultiplied);
    EXPECT_EQ(frame.bytesPerLine(), 28);
    const PixelBytes pixel = bytesAt(frame, 3, 1);
    EXPECT_NEAR(pixel[0], 128, 1);
    EXPECT_NEAR(pixel[1], 64, 1);
    EXPECT_EQ(pixel[2], 0);
    EXPECT_NEAR(pixel[3], 128, 1);
}

TEST_F(RenderEngineTest, TheSameDocumentGivesTheSameBytesTwice)
{
    addRedBar();
    addText("Ünï กั้ن 🙂", {30, 40})->setOutlineWidth(4);
    addCountdown({10, 10, 150, 60});

    EXPECT_EQ(render(), render());
}

TEST_F(RenderEngineTest, TheFirstLayerIsTheLowest)
{
    addShape(ShapeKind::rectangle, {0, 0, 200, 100}, {1, 0, 0, 1});
    addShape(ShapeKind::rectangle, {0, 0, 200, 100}, {0, 0, 1, 1});

    EXPECT_EQ(bytesAt(render(), 100, 50), (PixelBytes{0, 0, 255, 255}));
}

// Without an entry the layer's own flag decides.
TEST_F(RenderEngineTest, AHiddenLayerWithoutAVisibilityIsSkipped)
{
    ShapeLayer *bar = addRedBar();
    forgetVisibility();
    EXPECT_EQ(alphaAt(render(), 60, 20), 255);

    bar->setIsHidden(true);

    EXPECT_TRUE(isBlank(render()));
}

TEST_F(RenderEngineTest, TheVisibilityWinsOverHiddenInBothWays)
{
    ShapeLayer *bar = addRedBar();
    bar->setIsHidden(true);
    setVisibility(bar, 0.5);
    EXPECT_NEAR(alphaAt(render(), 60, 20), 128, 1);

    bar->setIsHidden(false);
    setVisibility(bar, 0);

    EXPECT_TRUE(isBlank(render()));
}

TEST_F(RenderEngineTest, AVisibilityAtTheTraceIsSkippedAndJustAboveIsDrawn)
{
    ShapeLayer *bar = addRedBar();
    const auto opacityAt = [&](double visibility) {
        document.setLayerVisibility({{bar->id(), visibility}});
        return bar->isHidden() ? -1 : alphaAt(render(), 60, 20);
    };

    EXPECT_EQ(opacityAt(0.001), 0);
    EXPECT_EQ(opacityAt(1.7), 255);
    EXPECT_EQ(opacityAt(nan), 0);
    EXPECT_EQ(opacityAt(infinity), 0);
    EXPECT_EQ(opacityAt(-infinity), 0);
    EXPECT_EQ(opacityAt(-1), 0);
}

// 0.0011 is less than half a step of 8 bits for one layer, so a pile of them has to show it.
TEST_F(RenderEngineTest, AVisibilityJustAboveTheTraceIsARunOpacity)
{
    ShapeLayer *bar = addRedBar();

    document.setLayerVisibility({{bar->id(), 0.0011}});

    EXPECT_EQ(runOpacity(document, bar), 0.0011);
    document.setLayerVisibility({{bar->id(), 0.001}});
    EXPECT_EQ(runOpacity(document, bar), 0);
    document.setLayerVisibility({{bar->id(), 1.7}});
    EXPECT_EQ(runOpacity(document, bar), 1);
}

TEST_F(RenderEngineTest, ANonFiniteVisibilitySkipsEvenAVisibleLayer)
{
    ShapeLayer *bar = addRedBar();
    for (const bool hidden : {false, true}) {
        bar->setIsHidden(hidden);
        for (const double value : {nan, infinity, -infinity}) {
            document.setLayerVisibility({{bar->id(), value}});
            EXPECT_TRUE(isBlank(render()));
        }
    }
}

TEST_F(RenderEngineTest, LiveViewsLeaveNoHoleInTheFrame)
{
    addText("Under", {10, 10});
    const QImage before = render();

    document.addWebLayer();
    document.addWindowCaptureLayer();
    document.addModel3DLayer(QUrl::fromLocalFile("/tmp/none.obj"));

    EXPECT_FALSE(isBlank(before));
    EXPECT_EQ(render(), before);
}

TEST_F(RenderEngineTest, ACanvasWithoutAreaHasNoContext)
{
    EXPECT_EQ(errorOnCanvas({0, 100}), RenderEngineError::contextCreationFailed);
    EXPECT_EQ(errorOnCanvas({100, 0}), RenderEngineError::contextCreationFailed);
    EXPECT_EQ(errorOnCanvas({0.9, 100}), RenderEngineError::contextCreationFailed);
    EXPECT_EQ(errorOnCanvas({-5, 100}), RenderEngineError::contextCreationFailed);
}

TEST_F(RenderEngineTest, ACanvasThatNoBitmapHoldsIsAnError)
{
    EXPECT_EQ(errorOnCanvas({1e9, 1e9}), RenderEngineError::bitmapCreationFailed);
    EXPECT_EQ(errorOnCanvas({40000, 10}), RenderEngineError::bitmapCreationFailed);
}

TEST_F(RenderEngineTest, AfterAnErrorTheNextFrameIsAsBefore)
{
    addRedBar();
    const QImage before = render();
    ASSERT_TRUE(errorOnCanvas({0, 0}).has_value());

    document.setSize({200, 100});

    EXPECT_EQ(render(), before);
}

TEST_F(RenderEngineTest, ErrorsHaveTheirFixedTexts)
{
    EXPECT_EQ(text(RenderEngineError::bitmapCreationFailed), "Could not allocate bitmap buffer.");
    EXPECT_EQ(text(RenderEngineError::contextCreationFailed), "Could not create graphics context.");
    EXPECT_EQ(text(RenderEngineError::imageCreationFailed), "Could not create output image.");
}

using RenderEngineDeathTest = RenderEngineTest;

TEST_F(RenderEngineDeathTest, ACanvasThatNoIntegerMeasuresStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const double side : {nan, infinity, 1e19, 9e18}) {
        document.setSize({side, 100});
        EXPECT_DEATH((void)RenderEngine().render(document, {}), "no size that could be drawn");
    }
}

} // namespace
} // namespace tessara
