#include "Rendering/FrameFixture.h"
#include "Rendering/TextBlock.h"

namespace tessara {
namespace {

class TextDrawingTest : public FrameTest
{
protected:
    TextDrawingTest() { document.setSize({600, 300}); }

    QSizeF sizeOf(const QString &text, double size = 40) const
    {
        return TextBlock(text, systemFont(size, QFont::DemiBold)).size();
    }

    QRect inkOfText(const QString &text, QPointF position, double size = 40)
    {
        document.removeSelectedLayers();
        addText(text, position, size);
        return inkOf(render());
    }
};

TEST_F(TextDrawingTest, TextBeginsAtItsPositionAndHangsDownFromIt)
{
    const QRect ink = inkOfText("Hg", {100, 80});

    EXPECT_GE(ink.left(), 99);
    EXPECT_LT(ink.left(), 110);
    EXPECT_GT(ink.top(), 80);
    EXPECT_LT(ink.bottom(), 80 + sizeOf("Hg").height());
}

TEST_F(TextDrawingTest, TheAnchorIsTheEdgeThatTheAlignmentNames)
{
    TextLayer *layer = addText("HHHH", {300, 80});
    const double width = sizeOf("HHHH").width();
    const QRect leading = inkOf(render());

    layer->setHorizontalAlignment(TextLayerHorizontalAlignment::center);
    const QRect centred = inkOf(render());
    layer->setHorizontalAlignment(TextLayerHorizontalAlignment::trailing);
    const QRect trailing = inkOf(render());

    EXPECT_NEAR(leading.left() - centred.left(), width / 2, 1);
    EXPECT_NEAR(leading.left() - trailing.left(), width, 1);
    EXPECT_LE(trailing.right(), 300);
}

TEST_F(TextDrawingTest, LinesWithoutABoxAreAlignedAmongThemselvesAndNeverWrap)
{
    document.setSize({4000, 300});
    const QString longLine = QString("word ").repeated(60).trimmed();
    const QRect ink = inkOfText(longLine, {0, 0});

    EXPECT_GT(ink.right(), 3000);
    EXPECT_LT(ink.bottom(), sizeOf("w").height());
    EXPECT_DOUBLE_EQ(sizeOf("a\nb\r\nc").height(), 3 * sizeOf("a").height());
    EXPECT_DOUBLE_EQ(sizeOf("").height(), sizeOf("a").height());
}

TEST_F(TextDrawingTest, ABoxWrapsItsTextAndAlignsItWithin)
{
    TextLayer *layer = addText("one two three four", {100, 150});
    layer->setTextBoxSize(QSizeF(150, 40));
    const QRect leading = inkOf(render());
    EXPECT_GE(leading.left(), 99);
    EXPECT_LE(leading.right(), 251);
    EXPECT_GT(leading.height(), 60);

    layer->setHorizontalAlignment(TextLayerHorizontalAlignment::trailing);

    EXPECT_NEAR(inkOf(render()).right(), 249, 4);
    EXPECT_NE(inkOf(render()), leading);
}

// The text begins at the top of a rectangle that is lifted by half of the box's spare height.
TEST_F(TextDrawingTest, TextInATallBoxIsLiftedByHalfOfTheSpareHeight)
{
    const QRect free = inkOfText("Hg", {100, 150});
    const double height = sizeOf("Hg").height();
    document.removeSelectedLayers();

    addText("Hg", {100, 150})->setTextBoxSize(QSizeF(200, height + 60));

    EXPECT_NEAR(inkOf(render()).top(), free.top() - 30, 1);
}

TEST_F(TextDrawingTest, TextTallerThanItsBoxGrowsUpwardFromTheBoxsLowerEdge)
{
    const QRect free = inkOfText("Hg", {100, 150});
    const double height = sizeOf("Hg").height();
    document.removeSelectedLayers();

    addText("Hg", {100, 150})->setTextBoxSize(QSizeF(200, 10));

    EXPECT_NEAR(inkOf(render()).top(), free.top() + 10 - height, 1);
}

TEST_F(TextDrawingTest, ABoxWithoutASizeCountsAsOnePixel)
{
    TextLayer *layer = addText("abc", {100, 150});
    layer->setTextBoxSize(QSizeF(0, 0));
    const QImage none = render();

    layer->setTextBoxSize(QSizeF(1, 1));

    EXPECT_EQ(none, render());
    EXPECT_FALSE(isBlank(none));
}

TEST_F(TextDrawingTest, AnOutlineIsDrawnFromAThousandthUpAndEndsAtSixteen)
{
    // So large that even the thinnest line leaves a trace along the letter's edges.
    document.setSize({4000, 100});
    TextLayer *layer = addText("H", {-200, -3000}, 5000);
    layer->setOutlineColor({1, 0, 0, 1});
    const auto withWidth = [&](double width) {
        layer->setOutlineWidth(width);
        return render();
    };
    const QImage none = withWidth(0);

    EXPECT_EQ(withWidth(0.001), none);
    EXPECT_EQ(withWidth(std::numeric_limits<double>::quiet_NaN()), none);
    EXPECT_EQ(withWidth(-3), none);
    EXPECT_NE(withWidth(0.0011), none);
    EXPECT_NE(withWidth(16), none);
    EXPECT_EQ(withWidth(20), withWidth(16));
    EXPECT_EQ(withWidth(std::numeric_limits<double>::infinity()), none);
}

// 10 percent of 200 is a line of 20, half of it beyond the letter's edge.
TEST_F(TextDrawingTest, AnOutlinesWidthIsAShareOfTheFontSize)
{
    TextLayer *layer = addText("I", {100, 20}, 200);
    const QRect bare = inkOf(render());

    layer->setOutlineWidth(10);

    EXPECT_NEAR(bare.left() - inkOf(render()).left(), 10, 1);
    EXPECT_NEAR(inkOf(render()).bottom() - bare.bottom(), 10, 1);
}

// Fill and outline fade each for itself, not as one picture.
TEST_F(TextDrawingTest, AtHalfOpacityTheOutlineLetsTheFillThrough)
{
    TextLayer *layer = addText("I", {100, 20}, 200);
    layer->setOutlineWidth(10);
    layer->setOutlineColor({1, 0, 0, 1});
    layer->setColor({0, 0, 1, 1});
    setVisibility(layer, 0.5);
    const QImage frame = render();
    const QRect ink = inkOf(frame);
    const int middle = ink.center().y();

    const PixelBytes outside = bytesAt(frame, ink.left() + 5, middle);
    const PixelBytes over = bytesAt(frame, ink.left() + 15, middle);
    const PixelBytes inside = bytesAt(frame, ink.center().x(), middle);

    EXPECT_NEAR(outside[0], 128, 2);
    EXPECT_EQ(outside[2], 0);
    EXPECT_NEAR(over[0], 128, 2);
    EXPECT_NEAR(over[2], 64, 2);
    EXPECT_NEAR(over[3], 191, 2);
    EXPECT_NEAR(inside[2], 128, 2);
    EXPECT_EQ(inside[0], 0);
}

// A vowel and a tone above a tall consonant stand higher than any capital.
TEST_F(TextDrawingTest, StackedThaiMarksAreNotClipped)
{
    const QRect base = inkOfText("ป", {100, 100}, 80);
    const QRect vowel = inkOfText("ปี", {100, 100}, 80);
    const QRect stack = inkOfText("ปี้", {100, 100}, 80);
    const QRect below = inkOfText("ปู", {100, 100}, 80);

    EXPECT_LT(vowel.top(), base.top());
    EXPECT_LT(stack.top(), vowel.top());
    EXPECT_GT(below.bottom(), base.bottom());
    EXPECT_NEAR(sizeOf("ปี้").width(), sizeOf("ป").width(), 0.5);
    EXPECT_GE(stack.top(), 100);
}

TEST_F(TextDrawingTest, ArabicJoinsAndRunsFromRightToLeft)
{
    const double joined = sizeOf("سلام").width();
    double apart = 0;
    for (const QChar letter : QString("سلام"))
        apart += sizeOf(letter).width();
    EXPECT_LT(joined, apart);

    // The full stop of a right-to-left line stands at its left.
    document.removeSelectedLayers();
    addText("سلام", {100, 100}, 80);
    const QRect word = inkOf(render());
    const QRect sentence = inkOfText("سلام.", {100, 100}, 80);

    EXPECT_GT(sentence.width(), word.width());
    EXPECT_NEAR(sentence.right() - word.right(),
                sizeOf("سلام.", 80).width() - sizeOf("سلام", 80).width(), 2);
}

TEST_F(TextDrawingTest, ARightToLeftTextIsStillAnchoredAtTheLeft)
{
    EXPECT_NEAR(inkOfText("سلام", {100, 100}, 80).left(), 100, 8);
}

TEST_F(TextDrawingTest, EmojiKeepTheirColoursAndFadeWithTheText)
{
    TextLayer *layer = addText("😀", {100, 50}, 100);
    layer->setColor({0, 0, 1, 1});
    const QImage frame = render();
    int yellow = 0;
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            const PixelBytes pixel = bytesAt(frame, x, y);
            yellow += pixel[0] > 200 && pixel[1] > 150 && pixel[2] < 120;
        }
    }
    EXPECT_GT(yellow, 1000);
    const QPoint middle = inkOf(frame).center();
    EXPECT_EQ(alphaAt(frame, middle.x(), middle.y()), 255);

    setVisibility(layer, 0.5);

    EXPECT_NEAR(alphaAt(render(), middle.x(), middle.y()), 128, 1);
}

TEST_F(TextDrawingTest, AnEmojiIsAsLargeAsItsTextAndStandsOnItsLine)
{
    document.setSize({1200, 1200});
    for (const double size : {8.0, 40.0, 100.0, 400.0, 800.0}) {
        const QRect letter = inkOfText("H", {100, 100}, size);
        const QRect emoji = inkOfText("😀", {100, 100}, size);
        EXPECT_NEAR(emoji.height(), size, size * 0.25 + 1);
        EXPECT_NEAR(emoji.width(), emoji.height(), size * 0.15 + 1);
        EXPECT_NEAR(emoji.center().y(), letter.center().y(), size * 0.2 + 1);
        EXPECT_GE(emoji.left(), 99);
    }
}

TEST_F(TextDrawingTest, TheSmallestAndTheLargestLettersAreDrawn)
{
    document.setSize({1920, 1080});
    const QRect small = inkOfText("Hx", {100, 100}, 8);
    const QRect large = inkOfText("Hx", {100, 100}, 400);

    EXPECT_NEAR(small.height() * 50, large.height(), 60);
    EXPECT_NEAR(large.height(), 400 * 0.73, 12); // the capitals' height
}

TEST_F(TextDrawingTest, FractionsOfAFontSizeScaleTheText)
{
    const double whole = sizeOf("Hamburg", 40).width();

    EXPECT_NEAR(sizeOf("Hamburg", 40.5).width(), whole * 40.5 / 40, 0.05);
    EXPECT_NEAR(sizeOf("Hamburg", 0.5).width(), whole / 80, 0.05);
}

TEST_F(TextDrawingTest, WeightsStepAtTheirLimits)
{
    TextLayer *layer = addText("H", {0, 0});
    const auto weightAt = [&](double value) {
        layer->setFontWeight(value);
        return layer->resolvedFont(40, QFont::DemiBold).face.weight();
    };

    EXPECT_EQ(weightAt(249.9), QFont::ExtraLight);
    EXPECT_EQ(weightAt(250), QFont::Light);
    EXPECT_EQ(weightAt(849.9), QFont::ExtraBold);
    EXPECT_EQ(weightAt(850), QFont::Black);
}

TEST_F(TextDrawingTest, AHeavierWeightPutsMoreInkOnTheFrame)
{
    TextLayer *layer = addText("HHH", {10, 10}, 100);
    const auto ink = [&](double weight) {
        layer->setFontWeight(weight);
        const QImage frame = render();
        qint64 sum = 0;
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x)
                sum += alphaAt(frame, x, y);
        }
        return sum;
    };

    EXPECT_LT(ink(200), ink(400));
    EXPECT_LT(ink(400), ink(700));
    EXPECT_LT(ink(700), ink(900));
}

TEST_F(TextDrawingTest, AFamilyOfBlanksOrOfNobodyIsTheSystemFace)
{
    TextLayer *layer = addText("Hamburg", {10, 10});
    const QImage system = render();
    for (const QString family : {"   ", "", "No Such Family At All"}) {
        layer->setFontFamily(family);
        EXPECT_EQ(render(), system);
    }
}

TEST_F(TextDrawingTest, ArialIsFoundInAnySpelling)
{
    TextLayer *layer = addText("Hamburg", {10, 10});
    const QImage system = render();
    layer->setFontFamily("Arial");
    const QImage arial = render();

    layer->setFontFamily("  aRIAL ");

    EXPECT_NE(arial, system);
    EXPECT_EQ(render(), arial);
}

TEST_F(TextDrawingTest, AnyOtherFamilyHasTwoFacesOnly)
{
    TextLayer *layer = addText("Hamburg", {10, 10});
    layer->setFontFamily("Liberation Serif");
    const auto withWeight = [&](double weight) {
        layer->setFontWeight(weight);
        return render();
    };

    EXPECT_EQ(withWeight(600), withWeight(200));
    EXPECT_EQ(withWeight(700), withWeight(900));
    EXPECT_NE(withWeight(600), withWeight(700));
}

TEST_F(TextDrawingTest, ATextsOwnAlphaAndTheRunMultiply)
{
    TextLayer *layer = addText("I", {100, 20}, 300);
    layer->setColor({1, 1, 1, 0.5});
    setVisibility(layer, 0.5);
    const QImage frame = render();
    const QPoint middle = inkOf(frame).center();

    EXPECT_NEAR(alphaAt(frame, middle.x(), middle.y()), 64, 1);
}

TEST_F(TextDrawingTest, APresetRevealSlidesAText)
{
    TextLayer *layer = addText("HHH", {100, 100});
    const QRect rest = inkOf(render());
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, layer->id());

    setVisibility(layer, 0.5);

    const QSizeF offset = document.effectiveTransitionOffset(layer->id(), false);
    EXPECT_NE(offset.height(), 0);
    EXPECT_NEAR(inkOf(render()).top() - rest.top(), offset.height(), 1.01);
}

TEST_F(TextDrawingTest, TextsOfAnySizeEndNoFrame)
{
    TextLayer *layer = addText("Hg\n😀 กี้", {0, 0});
    for (const double size :
         {0.0, -4.0, 1e-9, 1e5, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        layer->setFontSize(size);
        layer->setOutlineWidth(10);
        EXPECT_EQ(render().size(), QSize(600, 300));
    }
    layer->setFontSize(40);
    for (const double side : {-5.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        layer->setTextBoxSize(QSizeF(side, side));
        EXPECT_EQ(render().size(), QSize(600, 300));
    }
}

} // namespace
} // namespace tessara
