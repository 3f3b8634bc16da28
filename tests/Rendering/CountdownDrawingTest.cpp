#include "Rendering/FrameFixture.h"
#include "Rendering/LayerDrawing.h"
#include "Rendering/TextBlock.h"

#include <QPainter>

namespace tessara {
namespace {

class CountdownDrawingTest : public FrameTest
{
protected:
    CountdownDrawingTest()
    {
        document.setSize({400, 200});
        countdown = addCountdown({50, 40, 300, 120});
    }

    double widthOf(double seconds) const
    {
        countdown->setRemainingSeconds(seconds);
        return TextBlock(countdown->formattedTime(), countdown->resolvedFont()).size().width();
    }

    CountdownLayer *countdown = nullptr;
};

TEST_F(CountdownDrawingTest, TheTimeStandsInTheMiddleOfItsBox)
{
    const QRect ink = inkOf(render());

    EXPECT_NEAR(ink.center().x(), 200, 4);
    EXPECT_NEAR(ink.center().y(), 100, 8);
}

TEST_F(CountdownDrawingTest, ABackgroundFillsTheBoxWithItsRoundedCorners)
{
    countdown->setShowBackground(true);
    countdown->setBackgroundColor({0, 0, 1, 1});
    EXPECT_EQ(inkOf(render()), QRect(50, 40, 300, 120));
    EXPECT_EQ(bytesAt(render(), 50, 40), (PixelBytes{0, 0, 255, 255}));

    countdown->setCornerRadius(30);

    EXPECT_EQ(alphaAt(render(), 51, 41), 0);
    EXPECT_EQ(bytesAt(render(), 80, 42), (PixelBytes{0, 0, 255, 255}));
}

TEST_F(CountdownDrawingTest, ItsOpacityAndTheRunMultiply)
{
    countdown->setShowBackground(true);
    countdown->setBackgroundColor({0, 0, 1, 1});
    countdown->setOpacity(0.5);
    setVisibility(countdown, 0.5);

    EXPECT_NEAR(alphaAt(render(), 60, 50), 64, 1);
}

// The run passes, and yet nothing of the countdown is left.
TEST_F(CountdownDrawingTest, AnOpacityThatBringsItBelowTheTraceLeavesItOut)
{
    countdown->setShowBackground(true);
    for (const double opacity : {0.0, 0.0009, -2.0, std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity()}) {
        countdown->setOpacity(opacity);
        EXPECT_TRUE(isBlank(render()));
    }
    countdown->setOpacity(7);
    EXPECT_FALSE(isBlank(render()));
}

TEST_F(CountdownDrawingTest, ItFadesAndNeverSlides)
{
    countdown->setShowBackground(true);
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, countdown->id());
    setVisibility(countdown, 0.5);
    ASSERT_NE(document.effectiveTransitionOffset(countdown->id(), false).height(), 0);

    EXPECT_EQ(inkOf(render()), QRect(50, 40, 300, 120));
}

TEST_F(CountdownDrawingTest, ABoxWithoutAreaShowsNothing)
{
    countdown->setShowBackground(true);
    for (const QSizeF size : {QSizeF(0, 120), QSizeF(300, 0), QSizeF(-3, 120)}) {
        countdown->setSize(size);
        EXPECT_TRUE(isBlank(render()));
    }
}

TEST_F(CountdownDrawingTest, DigitsOfOneWidthKeepTheTimeFromDancing)
{
    EXPECT_EQ(widthOf(11 * 60 + 11), widthOf(0));
    EXPECT_EQ(widthOf(44 * 60 + 44), widthOf(0));
    EXPECT_GT(TextBlock("00:00", systemFont(96, QFont::Bold)).size().width(),
              TextBlock("11:11", systemFont(96, QFont::Bold)).size().width());
}

TEST_F(CountdownDrawingTest, NegativeTimeIsZeroAndAnHourHasThreeParts)
{
    countdown->setRemainingSeconds(-5);
    EXPECT_EQ(countdown->formattedTime(), "00:00");
    const QImage none = render();
    countdown->setRemainingSeconds(0);
    EXPECT_EQ(render(), none);

    countdown->setRemainingSeconds(3661);

    EXPECT_EQ(countdown->formattedTime(), "01:01:01");
    EXPECT_GT(inkOf(render()).width(), inkOf(none).width());
}

TEST_F(CountdownDrawingTest, AtTheThresholdItHasTheThresholdsColour)
{
    const auto isPainted = [&](PixelBytes color) {
        const QImage frame = render();
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                if (bytesAt(frame, x, y) == color)
                    return true;
            }
        }
        return false;
    };
    countdown->setUrgentColor({1, 0, 0, 1});
    countdown->setWarningColor({0, 1, 0, 1});

    countdown->setRemainingSeconds(10);
    EXPECT_TRUE(isPainted({255, 0, 0, 255}));
    countdown->setRemainingSeconds(10.5);
    EXPECT_TRUE(isPainted({0, 255, 0, 255}));
    countdown->setRemainingSeconds(30.5);
    EXPECT_TRUE(isPainted({255, 255, 255, 255}));
}

} // namespace
} // namespace tessara
