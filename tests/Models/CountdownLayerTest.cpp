#include "Base/ManualClock.h"
#include "Models/CountdownLayer.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tessara {
namespace {

class CountdownLayerTest : public testing::Test
{
protected:
    QString shownAt(double seconds)
    {
        layer.setRemainingSeconds(seconds);
        return layer.formattedTime();
    }

    ManualClock clock;
    CountdownLayer layer{
        clock, QUuid::createUuid(), QStringLiteral("Countdown 1"), {0, 0}, {480, 160}};
};

TEST_F(CountdownLayerTest, ShowsWholeSecondsCut)
{
    EXPECT_EQ(shownAt(59.9), QStringLiteral("00:59"));
    EXPECT_EQ(shownAt(3599.5), QStringLiteral("59:59"));
    EXPECT_EQ(shownAt(3600), QStringLiteral("01:00:00"));
    EXPECT_EQ(shownAt(3661), QStringLiteral("01:01:01"));
    EXPECT_EQ(shownAt(0), QStringLiteral("00:00"));
    EXPECT_EQ(shownAt(-5), QStringLiteral("00:00"));
    EXPECT_EQ(shownAt(360000), QStringLiteral("100:00:00"));
    EXPECT_EQ(shownAt(std::numeric_limits<double>::quiet_NaN()), QStringLiteral("00:00"));
}

TEST_F(CountdownLayerTest, DoesNotStartAtZero)
{
    layer.setRemainingSeconds(0);

    layer.start();

    EXPECT_FALSE(layer.isRunning());
}

TEST_F(CountdownLayerTest, ChangesColourAtItsThresholds)
{
    layer.setRemainingSeconds(30.1);
    EXPECT_EQ(layer.currentColor(), layer.textColor());
    layer.setRemainingSeconds(30);
    EXPECT_EQ(layer.currentColor(), layer.warningColor());
    layer.setRemainingSeconds(10);
    EXPECT_EQ(layer.currentColor(), layer.urgentColor());
}

TEST_F(CountdownLayerTest, UrgentComesFirstWhateverTheThresholds)
{
    layer.setUrgentThreshold(60);
    layer.setRemainingSeconds(25);

    EXPECT_EQ(layer.currentColor(), layer.urgentColor());
}

TEST_F(CountdownLayerTest, RunsDownInTicksOfAFiftiethOfASecondAndStopsAtZero)
{
    layer.setRemainingSeconds(1);
    QSignalSpy writes(&layer, &CountdownLayer::remainingSecondsChanged);
    layer.start();

    clock.advance(Seconds{0.5});
    EXPECT_NEAR(layer.remainingSeconds(), 0.5, 1e-9);
    EXPECT_EQ(writes.count(), 10);

    clock.advance(Seconds{5});
    EXPECT_EQ(layer.remainingSeconds(), 0);
    EXPECT_FALSE(layer.isRunning());
}

TEST_F(CountdownLayerTest, ASecondStartChangesNothing)
{
    layer.start();
    clock.advance(Seconds{0.03});

    layer.start();
    clock.advance(Seconds{0.02});

    EXPECT_NEAR(layer.remainingSeconds(), 299.95, 1e-9);
}

TEST_F(CountdownLayerTest, PauseKeepsTheTimeAndOnAStoppedOneChangesNothing)
{
    QSignalSpy notices(&layer, &CountdownLayer::isRunningChanged);
    layer.pause();
    EXPECT_EQ(notices.count(), 0);

    layer.start();
    clock.advance(Seconds{1});
    layer.pause();
    clock.advance(Seconds{9});

    EXPECT_NEAR(layer.remainingSeconds(), 299, 1e-9);
    EXPECT_FALSE(layer.isRunning());
}

TEST_F(CountdownLayerTest, AStalledMachineLosesNoTime)
{
    layer.start();
    QSignalSpy writes(&layer, &CountdownLayer::remainingSecondsChanged);

    clock.stall(Seconds{2});
    clock.advance(Seconds{0});

    EXPECT_NEAR(layer.remainingSeconds(), 298, 1e-9);
    EXPECT_EQ(writes.count(), 1);
}

TEST_F(CountdownLayerTest, WeightsCountFromThinToBlack)
{
    const QFont::Weight weights[] = {
        QFont::Black,  QFont::Thin,     QFont::ExtraLight, QFont::Light,     QFont::Normal,
        QFont::Medium, QFont::DemiBold, QFont::Bold,       QFont::ExtraBold, QFont::Black};
    for (int weight = 0; weight < int(std::size(weights)); ++weight) {
        layer.setFontWeight(weight);
        EXPECT_EQ(layer.resolvedFontWeight(), weights[weight]) << weight;
    }
}

} // namespace
} // namespace tessara
