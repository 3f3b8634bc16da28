#include "Models/ScoreLayer.h"

#include "Base/RawString.h"

#include <gtest/gtest.h>

#include <memory>

namespace tessara {
namespace {

std::unique_ptr<ScoreLayer> makeScore(ScoreTemplate scoreTemplate, ScoreSportPreset preset)
{
    return std::make_unique<ScoreLayer>(QUuid::createUuid(), QStringLiteral("Score 1"),
                                        scoreTemplate, preset, QPointF(0, 0),
                                        ScoreLayer::templateSize(scoreTemplate));
}

TEST(ScoreLayerTest, EverySportStartsWithItsOwnValues)
{
    QStringList values;
    for (const ScoreSportPreset preset : allCases<ScoreSportPreset>()) {
        const auto made = makeScore(ScoreTemplate::wideBroadcast, preset);
        const ScoreLayer &layer = *made;
        values.append(QStringLiteral("%1|%2|%3|%4|%5|%6")
                          .arg(layer.homeTeam(), layer.awayTeam())
                          .arg(layer.homeScore())
                          .arg(layer.awayScore())
                          .arg(layer.period(), layer.clock()));
    }

    EXPECT_EQ(values, (QStringList{QStringLiteral("HOME|AWAY|1|0|1ST|12:34"),
                                   QStringLiteral("LAL|BOS|98|101|Q4|02:15"),
                                   QStringLiteral("THA|JPN|2|1|SET 3|18-17"),
                                   QStringLiteral("CHN|INA|21|19|GAME 1|-"),
                                   QStringLiteral("BKK FC|CNX FC|3|2|2ND|08:41"),
                                   QStringLiteral("YAN|LAD|4|5|TOP 8|B2 S1 O1")}));
}

TEST(ScoreLayerTest, ATemplateBringsItsSizeAndRatio)
{
    const auto made = makeScore(ScoreTemplate::wideBroadcast, ScoreSportPreset::football);
    ScoreLayer &layer = *made;
    EXPECT_EQ(layer.size(), QSizeF(960, 128));

    layer.setScoreTemplate(ScoreTemplate::compactStrip);
    layer.applyTemplateSize();
    EXPECT_EQ(layer.size(), QSizeF(900, 102));
    EXPECT_EQ(layer.lockedAspectRatio(), 900.0 / 102);

    layer.setAspectRatioLocked(false);
    layer.setScoreTemplate(ScoreTemplate::titleBar);
    layer.applyTemplateSize();
    EXPECT_EQ(layer.size(), QSizeF(1180, 132));
    EXPECT_EQ(layer.lockedAspectRatio(), 900.0 / 102);
}

TEST(ScoreLayerTest, ThePaletteFollowsTemplateAndSport)
{
    const auto home = [](ScoreTemplate scoreTemplate, ScoreSportPreset preset) {
        return makeScore(scoreTemplate, preset)->palette().home;
    };
    using enum ScoreTemplate;

    EXPECT_EQ(home(wideBroadcast, ScoreSportPreset::baseball), (RGBAColor{0.11, 0.36, 0.72, 1}));
    EXPECT_EQ(home(compactStrip, ScoreSportPreset::badminton), (RGBAColor{0.1, 0.4, 0.9, 1}));
    EXPECT_EQ(home(compactStrip, ScoreSportPreset::futsal), (RGBAColor{0.17, 0.31, 0.79, 1}));
    EXPECT_EQ(home(titleBar, ScoreSportPreset::basketball), (RGBAColor{0.35, 0.16, 0.62, 1}));
    EXPECT_EQ(home(titleBar, ScoreSportPreset::baseball), (RGBAColor{0.16, 0.3, 0.74, 1}));
}

TEST(ScoreLayerTest, ACustomPaletteWins)
{
    const auto made = makeScore(ScoreTemplate::titleBar, ScoreSportPreset::football);
    ScoreLayer &layer = *made;
    EXPECT_EQ(layer.palette().badge, (RGBAColor{0.95, 0.95, 0.96, 1}));
    EXPECT_EQ(layer.palette().text, RGBAColor::white);
    ScorePalette own;
    own.home = {1, 0, 0, 1};

    layer.setCustomPalette(own);

    EXPECT_EQ(layer.palette(), own);
}

} // namespace
} // namespace tessara
