#include "Core/AppStateFixture.h"

namespace tessara {
namespace {

using Bytes = std::array<int, 4>;

class OutputTest : public AppStateTest
{
protected:
    OutputTest() { document().setSize({192, 108}); }
};

TEST_F(OutputTest, TheFirstFrameDoesNotWaitForTheFirstTick)
{
    start();

    EXPECT_TRUE(app.isDeckLinkOutputRunning());
    EXPECT_EQ(sent(first), 1);
    EXPECT_FALSE(app.lastErrorMessage().has_value());
}

TEST_F(OutputTest, EveryTickOfAnNtscRateSendsOneFrame)
{
    document().setSize({16, 9});
    selectMode(fill(), "720p59.94");
    start();
    EXPECT_DOUBLE_EQ(app.outputLoop()->interval().count(), 1001.0 / 60000.0);

    clock.advance(Seconds{1.001});

    EXPECT_EQ(sent(first), 1 + 60);
    EXPECT_EQ(app.outputLoop()->missedTicks(), 0u);
}

TEST_F(OutputTest, ThreeHundredTicksOf2997TakeTenSecondsAndAHundredth)
{
    document().setSize({16, 9});
    limitModes(first, {"1080p29.97"});
    fill().refreshModes();
    limitFormats(first, {"BGRA"});
    start();
    clock.advance(Seconds{10.01 - 1e-6});
    EXPECT_EQ(sent(first), 1 + 299);

    clock.advance(Seconds{2e-6});

    EXPECT_EQ(sent(first), 1 + 300);
}

TEST_F(OutputTest, LateTicksAreLeftOutAndTheNextFrameShowsTheDocumentAsItIs)
{
    start();
    clock.stall(Seconds{0.2});
    addShape({0, 0, 192, 108}, {1, 0, 0, 1});

    clock.advance(Seconds{0.02});

    EXPECT_LE(sent(first), 3);
    EXPECT_GE(app.outputLoop()->missedTicks(), 8u);
    EXPECT_EQ(bytesAt(first, 960, 540), (Bytes{0, 0, 255, 255}));
}

TEST_F(OutputTest, FillOnlySendsPremultipliedBytesOverNothing)
{
    addShape({0, 0, 96, 108}, {1, 0.5, 0, 0.5});
    start();

    const Bytes half = bytesAt(first, 100, 500);
    EXPECT_NEAR(half[0], 0, 1);
    EXPECT_NEAR(half[1], 64, 1);
    EXPECT_NEAR(half[2], 128, 1);
    EXPECT_NEAR(half[3], 128, 1);
    EXPECT_EQ(bytesAt(first, 1900, 500), (Bytes{0, 0, 0, 0}));
    EXPECT_FALSE(isEnabled(second));
    EXPECT_FALSE(card.devices()[first].isKeyerEnabled);
}

TEST_F(OutputTest, GreenScreenLaysAnOpaqueGreenUnderTheLayers)
{
    addShape({0, 0, 96, 108}, {1, 0, 0, 0.5});
    route(DeckLinkOutputRouting::greenScreen);
    start();

    const Bytes green = bytesAt(first, 1900, 500);
    EXPECT_EQ(green[3], 255);
    EXPECT_GT(green[1], green[0] + 80);
    EXPECT_GT(green[1], green[2] + 80);
    EXPECT_EQ(bytesAt(first, 100, 500)[3], 255);
    EXPECT_GT(bytesAt(first, 100, 500)[2], 120);
}

TEST_F(OutputTest, KeyAndFillSendsTheAlphaAsOpaqueGreyToTheOtherDevice)
{
    addShape({0, 0, 96, 54}, {1, 0, 0, 0.5});
    route(DeckLinkOutputRouting::keyAndFill);
    start();

    EXPECT_EQ(sent(first), 1);
    EXPECT_EQ(sent(second), 1);
    const Bytes grey = bytesAt(second, 100, 100);
    EXPECT_NEAR(grey[0], 128, 1);
    EXPECT_EQ(grey, (Bytes{grey[0], grey[0], grey[0], 255}));
    EXPECT_EQ(bytesAt(second, 1900, 1000), (Bytes{0, 0, 0, 255}));
    EXPECT_EQ(bytesAt(first, 100, 100)[3], grey[0]);
    EXPECT_FALSE(card.devices()[first].isKeyerEnabled);
}

TEST_F(OutputTest, FillAndKeyShowTheSameMoment)
{
    ShapeLayer *shape = addShape({0, 0, 192, 108}, {1, 1, 1, 1});
    route(DeckLinkOutputRouting::keyAndFill);
    document().setRunDissolveDuration(1, shape->id());
    start();
    document().takeLayerOutNow(shape->id());

    for (int tick = 0; tick < 20; ++tick) {
        clock.advance(Seconds{0.02});
        EXPECT_EQ(bytesAt(first, 960, 540)[3], bytesAt(second, 960, 540)[0]);
    }
    EXPECT_LT(bytesAt(second, 960, 540)[0], 200);
}

TEST_F(OutputTest, ExternalKeyingMirrorsTheAlphaAgainstTheColour)
{
    addShape({0, 0, 192, 54}, {1, 0, 0, 1});
    route(DeckLinkOutputRouting::keyAndFillAB);
    start();

    EXPECT_TRUE(card.devices()[first].isKeyerEnabled);
    EXPECT_EQ(card.devices()[first].keyerLevel, 255);
    EXPECT_FALSE(isEnabled(second));
    EXPECT_EQ(bytesAt(first, 960, 100), (Bytes{0, 0, 255, 0}));
    EXPECT_EQ(bytesAt(first, 960, 980), (Bytes{0, 0, 0, 255}));
}

TEST_F(OutputTest, ExternalKeyingLooksAtTheFillsRateAlone)
{
    key().setSelectedDeviceIndex(second);
    selectMode(key(), "1080p24");
    selectMode(fill(), "1080p60");
    route(DeckLinkOutputRouting::keyAndFillAB);
    start();

    EXPECT_DOUBLE_EQ(app.outputLoop()->interval().count(), 1.0 / 60);
    EXPECT_FALSE(key().isOutputRunning());
}

TEST_F(OutputTest, ADeviceThatWantsARGBGetsIt)
{
    limitFormats(first, {"ARGB"});
    addShape({0, 0, 192, 108}, {1, 0.5, 0, 1});
    start();

    EXPECT_EQ(card.frames(first)->format, "ARGB");
    const Bytes pixel = bytesAt(first, 960, 540);
    EXPECT_EQ(pixel[0], 255);
    EXPECT_EQ(pixel[1], 255);
    EXPECT_NEAR(pixel[2], 128, 1);
    EXPECT_EQ(pixel[3], 0);
}

TEST_F(OutputTest, ADeviceWithoutAlphaGetsStudioRangeColour)
{
    limitFormats(first, {"2vuy"});
    addShape({0, 0, 96, 108}, {1, 1, 1, 1});
    start();

    EXPECT_EQ(card.frames(first)->format, "2vuy");
    EXPECT_EQ(card.frames(first)->rowBytes, 3840);
    EXPECT_EQ(bytesAt(first, 100, 540, 2), (Bytes{128, 235, 128, 235}));
    EXPECT_EQ(bytesAt(first, 1900, 540, 2), (Bytes{128, 16, 128, 16}));
}

TEST_F(OutputTest, RowsAreAsLongAsTheDeviceWantsThem)
{
    limitFormats(first, {"BGRA"}, 7744);
    addShape({0, 0, 192, 108}, {0, 0, 1, 1});
    start();

    EXPECT_EQ(card.frames(first)->rowBytes, 7744);
    EXPECT_EQ(bytesAt(first, 1919, 1079), (Bytes{255, 0, 0, 255}));
    EXPECT_EQ(bytesAt(first, 1920, 1079), (Bytes{0, 0, 0, 0}));
}

TEST_F(OutputTest, ACanvasOfAnotherShapeIsStretchedToTheMode)
{
    document().setSize({100, 100});
    addShape({50, 0, 50, 50}, {1, 0, 0, 1});
    selectMode(fill(), "720p50");
    start();

    EXPECT_EQ(card.frames(first)->width, 1280);
    EXPECT_EQ(card.frames(first)->height, 720);
    EXPECT_EQ(bytesAt(first, 660, 10), (Bytes{0, 0, 255, 255}));
    EXPECT_EQ(bytesAt(first, 1270, 340), (Bytes{0, 0, 255, 255}));
    EXPECT_EQ(bytesAt(first, 620, 340)[3], 0);
    EXPECT_EQ(bytesAt(first, 1270, 380)[3], 0);
}

// Only the selection made after the match can tear the two apart.
TEST_F(OutputTest, AKeyModeOfAnotherSizeScalesTheSamePicture)
{
    addShape({0, 0, 96, 108}, {1, 1, 1, 1});
    route(DeckLinkOutputRouting::keyAndFill);
    start();
    selectMode(key(), "720p50");
    key().stopOutput();
    ASSERT_TRUE(key().startOutput(DeckLinkStartMode::standard));

    clock.advance(Seconds{0.02});

    EXPECT_EQ(card.frames(first)->width, 1920);
    EXPECT_EQ(card.frames(second)->width, 1280);
    EXPECT_EQ(bytesAt(second, 600, 700), (Bytes{255, 255, 255, 255}));
    EXPECT_EQ(bytesAt(second, 680, 700), (Bytes{0, 0, 0, 255}));
}

TEST_F(OutputTest, APairRunsAtTheSlowerOfBothRates)
{
    route(DeckLinkOutputRouting::keyAndFill);
    selectMode(fill(), "1080p59.94");
    // The match keeps rates together, so the key's has to change between its start and the loop's.
    QObject::connect(&key(), &DeckLinkManager::isOutputRunningChanged, &key(),
                     [this] { selectMode(key(), "1080p50"); });
    start();

    EXPECT_DOUBLE_EQ(app.outputLoop()->interval().count(), 0.02);
}

TEST_F(OutputTest, AMatchedPairRunsAtItsOwnRate)
{
    route(DeckLinkOutputRouting::keyAndFill);
    selectMode(fill(), "1080p59.94");
    start();

    EXPECT_DOUBLE_EQ(app.outputLoop()->interval().count(), 1001.0 / 60000);
    EXPECT_EQ(card.devices()[second].modeName, "1080p59.94");
}

TEST_F(OutputTest, ARateBelowOneCountsAsOne)
{
    EXPECT_DOUBLE_EQ(OutputLoop(clock, 0, {}).interval().count(), 1);
    EXPECT_DOUBLE_EQ(OutputLoop(clock, 59.94, {}).interval().count(), 1 / 59.94);
}

TEST_F(OutputTest, AChangeOfRoutingStopsAndNeverStarts)
{
    start();
    route(DeckLinkOutputRouting::greenScreen);
    EXPECT_FALSE(app.isDeckLinkOutputRunning());
    EXPECT_EQ(app.outputLoop(), nullptr);
    EXPECT_FALSE(isEnabled(first));

    route(DeckLinkOutputRouting::keyAndFill);
    clock.advance(Seconds{1});
    EXPECT_FALSE(app.isDeckLinkOutputRunning());

    expectStartable();
}

TEST_F(OutputTest, TheSameRoutingAgainChangesNothing)
{
    start();
    route(DeckLinkOutputRouting::fillOnly);

    EXPECT_TRUE(app.isDeckLinkOutputRunning());
}

TEST_F(OutputTest, StoppingAStoppedOutputSaysSo)
{
    app.stopDeckLinkOutput();

    EXPECT_EQ(fill().statusMessage(), QStringLiteral("Output stopped"));
    EXPECT_EQ(key().statusMessage(), QStringLiteral("Output stopped"));
}

TEST_F(OutputTest, ASecondStartGoesOnWithOneLoop)
{
    start();
    start();
    EXPECT_EQ(sent(first), 1);

    clock.advance(Seconds{0.1});

    EXPECT_EQ(sent(first), 1 + 5);
}

TEST_F(OutputTest, ATickDuringASendChangesNothing)
{
    start();
    qint64 during = -1;
    const QObject listener;
    QObject::connect(&fill(), &DeckLinkManager::lastErrorMessageChanged, &listener, [&] {
        clock.advance(Seconds{1}); // as a nested main loop would
        during = sent(first);
    });
    ASSERT_TRUE(card.fail(first, "DisplayVideoFrameSync", 1));

    clock.advance(Seconds{0.02});

    EXPECT_EQ(during, 1);
    EXPECT_FALSE(app.isDeckLinkOutputRunning());
}

TEST_F(OutputTest, AnOutputStoppedWhileATickWaitsSendsNothingMore)
{
    start();
    // Set before the tick's own task, and due with it.
    const Alarm stop =
        clock.at(Nanoseconds{std::chrono::milliseconds{20}}, [&] { app.stopDeckLinkOutput(); });

    clock.advance(Seconds{0.1});

    EXPECT_EQ(sent(first), 1);
}

TEST_F(OutputTest, AStateThatGoesLeavesTheCardClosed)
{
    {
        AppState other(clock, ApplicationSupport(folder.path()));
        other.startDeckLinkOutput();
        EXPECT_TRUE(isEnabled(first));
    }
    EXPECT_FALSE(isEnabled(first));
}

} // namespace
} // namespace tessara
