#include "Rendering/LayerDrawing.h"

#include "Rendering/ScoreBarFixture.h"
#include "Rendering/TextBlock.h"

#include <QPainter>

#include <limits>

namespace tessara {
namespace {

using enum ScoreTemplate;

const QRectF wideBox{0, 0, 1000, 120};
const QRectF titleBox{0, 0, 1180, 132};
const RGBAColor black{0, 0, 0, 0.86};
const RGBAColor yellow{1, 0.8, 0, 0.96};

struct CentredText
{
    QString text;
    SizedFont font;
    RGBAColor color;
    QPointF middle;
};

class ScoreBarTextTest : public ScoreBarTest
{
protected:
    QImage painted(const std::vector<CentredText> &texts) const
    {
        QImage image(document.size().toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        for (const CentredText &text : texts) {
            const TextBlock block(text.text, text.font);
            const QPointF half(block.size().width() / 2, block.size().height() / 2);
            std::vector<Primitive> primitives;
            appendText(primitives, block, text.middle - half, {text.color});
            for (const Primitive &primitive : primitives)
                drawPrimitive(painter, primitive, 1);
        }
        painter.end();
        return image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    }

    static QImage withoutOrnaments(const QImage &frame)
    {
        QImage image = frame;
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        for (const QRect ornament :
             {QRect(358, 0, 16, 132), QRect(736, 0, 16, 132), QRect(0, 128, 1180, 4)})
            painter.fillRect(ornament, Qt::black);
        return image;
    }

    /// The columns of a bar of 1000 by 120.
    static QRect inkOfCenterPanel(const QImage &frame)
    {
        return inkOf(frame.copy(344, 0, 331, 120));
    }
};

TEST_F(ScoreBarTextTest, EveryTextStandsInTheMiddleOfItsPlace)
{
    addPanelless(wideBroadcast, wideBox);
    const SizedFont team = systemFont(20.4, QFont::Bold);
    const SizedFont score = monospacedDigitSystemFont(31.2, QFont::Bold);

    const QImage expected = painted(
        {{"HOME", team, RGBAColor::white, {140.76, 60}},
         {"1", score, black, {292.84, 60}},
         {"AWAY", team, RGBAColor::white, {804.26, 60}},
         {"0", score, black, {946.84, 60}},
         {"1ST", systemFont(16.8, QFont::DemiBold), {1, 1, 1, 0.94}, {509.5, 77.64}},
         {"12:34", monospacedDigitSystemFont(22.8, QFont::Bold), RGBAColor::white, {509.5, 43.2}}});

    EXPECT_LE(largestDifference(render(), expected), 2);
}

TEST_F(ScoreBarTextTest, ATitleBarWritesTheScoresOnThePanels)
{
    addPanelless(titleBar, titleBox);
    const SizedFont team = systemFont(50.16, QFont::Black);
    const SizedFont score = monospacedDigitSystemFont(60.72, QFont::Black);

    const QImage expected = painted(
        {{"HOME", team, RGBAColor::white, {124.88, 66}},
         {"1", score, yellow, {293.61, 66}},
         {"1ST", systemFont(44.88, QFont::Black), yellow, {461.16, 66}},
         {"12:34", monospacedDigitSystemFont(52.8, QFont::Black), RGBAColor::white, {633.48, 66}},
         {"AWAY", team, RGBAColor::white, {873.3, 66}},
         {"0", score, RGBAColor::white, {1088.3, 66}}});

    EXPECT_LE(largestDifference(withoutOrnaments(render()), withoutOrnaments(expected)), 2);
}

TEST_F(ScoreBarTextTest, OnALowBarTheFontsKeepTheirLeastSizes)
{
    addPanelless(wideBroadcast, {0, 0, 320, 64});
    const SizedFont team = systemFont(16, QFont::Bold);
    const SizedFont score = monospacedDigitSystemFont(20, QFont::Bold);
    QImage expected = painted(
        {{"HOME", team, RGBAColor::white, {29.5, 30}},
         {"1", score, black, {74, 27}},
         {"AWAY", team, RGBAColor::white, {238, 30}},
         {"0", score, black, {274, 27}},
         {"1ST", systemFont(13, QFont::DemiBold), {1, 1, 1, 0.94}, {169, 36.72}},
         {"12:34", monospacedDigitSystemFont(16, QFont::Bold), RGBAColor::white, {169, 23.6}}});

    EXPECT_LE(largestDifference(render(), expected), 2);
}

TEST_F(ScoreBarTextTest, OnALowTitleBarToo)
{
    // 600 by 32: the panels are 179, 179 and 210 wide, and 32 high from 12 above the lower edge.
    ScoreLayer *score = addPanelless(titleBar, {0, 100, 600, 32});
    score->setAwayTeam("");
    score->setHomeTeam("");
    score->setClock("");
    score->setPeriod("I");
    const QImage frame = render();

    const QImage expected =
        painted({{"1", monospacedDigitSystemFont(34, QFont::Black), yellow, {10 + 0.79 * 179, 104}},
                 {"I", systemFont(24, QFont::Black), yellow, {195 + 0.24 * 179, 104}},
                 {"0",
                  monospacedDigitSystemFont(34, QFont::Black),
                  RGBAColor::white,
                  {380 + 0.81 * 210, 104}}});

    for (const QRect place :
         {QRect(130, 100, 45, 27), QRect(220, 100, 40, 27), QRect(500, 100, 90, 27)})
        EXPECT_LE(largestDifference(frame.copy(place), expected.copy(place)), 2);
}

TEST_F(ScoreBarTextTest, ThePeriodStandsBelowTheClock)
{
    for (const ScoreTemplate scoreTemplate : {wideBroadcast, compactStrip}) {
        ScoreLayer *score = addPanelless(scoreTemplate, wideBox);
        score->setClock("");
        const QRect period = inkOfCenterPanel(render());
        score->setClock("12:34");
        score->setPeriod("");
        const QRect clock = inkOfCenterPanel(render());
        document.removeSelectedLayers();

        EXPECT_LT(clock.bottom(), 60);
        EXPECT_GT(period.top(), 60);
        EXPECT_GT(clock.height(), period.height());
    }
}

TEST_F(ScoreBarTextTest, TextsStandUpright)
{
    ScoreLayer *score = addPanelless(wideBroadcast, wideBox);
    score->setClock("");
    score->setPeriod("L");

    const QRect ink = inkOfCenterPanel(render());
    const QImage letter = render().copy(344, 0, 331, 120).copy(ink);

    EXPECT_GT(alphaAt(letter, letter.width() - 2, letter.height() - 2), 100);
    EXPECT_EQ(alphaAt(letter, letter.width() - 2, 1), 0);
    EXPECT_GT(alphaAt(letter, 1, 1), 100);
}

TEST_F(ScoreBarTextTest, NamesPeriodAndClockAreShownInCapitals)
{
    for (const ScoreTemplate scoreTemplate : {wideBroadcast, titleBar}) {
        ScoreLayer *score = addScore(scoreTemplate, wideBox);
        score->setHomeTeam("FC NÜRNBERG");
        score->setAwayTeam("STRASSE");
        score->setPeriod("SET 3");
        score->setClock("B2 S1");
        const QImage capitals = render();

        score->setHomeTeam("fc nürnberg");
        score->setAwayTeam("straße");
        score->setPeriod("set 3");
        score->setClock("b2 s1");

        EXPECT_EQ(render(), capitals);
        EXPECT_EQ(score->homeTeam(), "fc nürnberg"); // on screen alone
        document.removeSelectedLayers();
    }
}

TEST_F(ScoreBarTextTest, EmptyStringsDrawNothing)
{
    ScoreLayer *score = addPanelless(wideBroadcast, wideBox);
    score->setHomeTeam("");
    score->setAwayTeam("");
    score->setPeriod("");
    score->setClock("");

    const QImage frame = render();

    EXPECT_TRUE(isBlank(frame.copy(0, 0, 260, 120)));
    EXPECT_TRUE(isBlank(frame.copy(330, 0, 580, 120)));
    EXPECT_FALSE(isBlank(frame.copy(262, 0, 62, 120))); // a score is never empty
}

TEST_F(ScoreBarTextTest, AScoreIsAPlainDecimalOfAnyInteger)
{
    ScoreLayer *score = addPanelless(wideBroadcast, wideBox);
    const auto widthOfScore = [&](qint64 value) {
        score->setHomeScore(value);
        return inkOf(render().copy(200, 0, 190, 120)).width();
    };
    score->setHomeTeam("");
    score->setPeriod("");
    score->setClock("");

    EXPECT_GT(widthOfScore(-5), widthOfScore(5));
    EXPECT_GT(widthOfScore(101), widthOfScore(99));
    EXPECT_GT(widthOfScore(1000), widthOfScore(888) * 5 / 4); // no separator of thousands:
    EXPECT_LT(widthOfScore(1000), widthOfScore(888) * 3 / 2);
    EXPECT_GT(widthOfScore(std::numeric_limits<qint64>::min()), 180);
}

TEST_F(ScoreBarTextTest, StackedThaiMarksStandWhole)
{
    ScoreLayer *score = addPanelless(titleBar, titleBox);
    const auto inkOfName = [&](const QString &name) {
        score->setHomeTeam(name);
        return inkOf(render().copy(10, 0, 225, 126));
    };
    const QRect bare = inkOfName(QStringLiteral("กน"));
    const QRect marked = inkOfName(QStringLiteral("กี้น"));
    const QRect lowered = inkOfName(QStringLiteral("กู่น"));

    EXPECT_LT(marked.top(), bare.top() - 15);
    EXPECT_GT(marked.top(), 0);
    EXPECT_EQ(marked.bottom(), bare.bottom());
    EXPECT_GT(lowered.bottom(), bare.bottom() + 5);
    EXPECT_LT(lowered.bottom(), 125);
}

TEST_F(ScoreBarTextTest, ALongNameOverflowsItsPanelAndEndsWithTheLayer)
{
    for (const ScoreTemplate scoreTemplate : {wideBroadcast, compactStrip, titleBar}) {
        ScoreLayer *score = addPanelless(scoreTemplate, {100, 50, 1000, 120});
        score->setAwayTeam("");
        score->setHomeTeam(QString(400, 'H'));
        const QRect ink = inkOf(render());
        document.removeSelectedLayers();

        EXPECT_EQ(ink.left(), 100);
        EXPECT_EQ(ink.right(), 1099);
        EXPECT_TRUE(QRect(100, 50, 1000, 120).contains(ink));
    }
}

TEST_F(ScoreBarTextTest, ALongNameKeepsItsSizeAndItsMiddle)
{
    ScoreLayer *score = addPanelless(wideBroadcast, wideBox);
    score->setAwayTeam("");
    score->setPeriod("");
    score->setClock("");
    score->setHomeTeam("HHHHHHHHHHHHHHHHHH");
    const QRect longName = inkOf(render().copy(0, 40, 260, 40));
    score->setHomeTeam("H");
    const QRect shortName = inkOf(render().copy(0, 40, 260, 40));

    EXPECT_EQ(longName.height(), shortName.height());
    EXPECT_NEAR(shortName.center().x(), 140.76, 1);
    EXPECT_GT(longName.width(), 241);
}

TEST_F(ScoreBarTextTest, ThePalettesTextColourKeepsItsAlphaSaveInThePeriod)
{
    ScoreLayer *score = addPanelless(wideBroadcast, wideBox);
    ScorePalette palette;
    palette.text = {0, 1, 0, 0.5};
    score->setCustomPalette(palette);

    const QImage frame = render();

    EXPECT_NEAR(highestAlpha(frame.copy(0, 0, 260, 120)), 128, 1);
    EXPECT_NEAR(highestAlpha(frame.copy(344, 0, 331, 60)), 128, 1);
    EXPECT_NEAR(highestAlpha(frame.copy(344, 62, 331, 58)), 240, 1); // 0.94
    EXPECT_TRUE(hasColor(frame, {0, 128, 0, 128}));
}

TEST_F(ScoreBarTextTest, ATitleBarsYellowBelongsToTheHomeScoreAndThePeriod)
{
    addPanelless(titleBar, titleBox);
    const QImage frame = withoutOrnaments(render());
    const PixelBytes shown{245, 196, 0, 245}; // 0.96
    const PixelBytes white{255, 255, 255, 255};

    EXPECT_TRUE(hasColor(frame.copy(235, 0, 120, 132), shown));  // home score
    EXPECT_TRUE(hasColor(frame.copy(380, 0, 160, 132), shown));  // period
    EXPECT_FALSE(hasColor(frame.copy(545, 0, 635, 132), shown)); // clock, away team and score
    EXPECT_TRUE(hasColor(frame.copy(1020, 0, 150, 132), white));
}

TEST_F(ScoreBarTextTest, ChoosingASportOverwritesNamesAndScores)
{
    addScore(titleBar, titleBox, ScoreSportPreset::volleyball);
    const QImage fresh = render();
    document.removeSelectedLayers();
    ScoreLayer *score = addScore(titleBar, titleBox);
    score->setHomeTeam("MINE");
    score->setHomeScore(77);
    score->setClock("99:99");
    EXPECT_NE(render(), fresh);

    score->setSportPreset(ScoreSportPreset::volleyball);
    score->applySportPreset();

    EXPECT_EQ(render(), fresh);
}

} // namespace
} // namespace tessara
