#include "Core/AppStateFixture.h"

namespace tessara {
namespace {

class OutputFailureTest : public AppStateTest
{
protected:
    void tick() { clock.advance(Seconds{0.02}); }

    /// Fails a call of the driver at the next start.
    void expectStartError(int device, const char *call, const QString &reason)
    {
        EXPECT_TRUE(card.fail(device, call, 1));
        start();
        expectStopped(reason);
        expectStartable();
    }
};

TEST_F(OutputFailureTest, WithoutAModeTheFillSaysSo)
{
    fill().setSelectedModeID(std::nullopt);
    start();

    expectStopped("Select an output mode");
    selectMode(fill(), "1080p50");
    expectStartable();
}

TEST_F(OutputFailureTest, WithoutADeviceTheFillSaysSo)
{
    fill().setSelectedDeviceIndex(std::nullopt);
    start();

    expectStopped("Select a DeckLink device");
    fill().setSelectedDeviceIndex(first);
    expectStartable();
}

TEST_F(OutputFailureTest, APairNeedsAFillDeviceFirst)
{
    route(DeckLinkOutputRouting::keyAndFill);
    key().setSelectedDeviceIndex(std::nullopt);
    fill().setSelectedDeviceIndex(std::nullopt);
    start();

    expectStopped("Select Fill device and mode");
    fill().setSelectedDeviceIndex(first);
    key().setSelectedDeviceIndex(second);
    expectStartable();
}

TEST_F(OutputFailureTest, APairNeedsAFillModeFirst)
{
    route(DeckLinkOutputRouting::keyAndFill);
    key().setSelectedDeviceIndex(std::nullopt);
    fill().setSelectedModeID(std::nullopt);
    start();

    expectStopped("Select Fill device and mode");
}

TEST_F(OutputFailureTest, APairNeedsAKeyDevice)
{
    route(DeckLinkOutputRouting::keyAndFill);
    key().setSelectedDeviceIndex(std::nullopt);
    start();

    expectStopped("Select Key device");
    key().setSelectedDeviceIndex(second);
    expectStartable();
}

TEST_F(OutputFailureTest, OneDeviceAloneIsNoPair)
{
    ASSERT_TRUE(card.remove(second));
    app.refreshDeckLinkDevices();
    route(DeckLinkOutputRouting::keyAndFill);
    start();

    expectStopped("Choose different devices for Fill and Key outputs");
    ASSERT_TRUE(card.restore(second));
    app.refreshDeckLinkDevices();
    expectStartable();
}

TEST_F(OutputFailureTest, AKeyDeviceWithoutTheModeStopsTheStart)
{
    limitModes(second, {"720p50"});
    route(DeckLinkOutputRouting::keyAndFill);
    key().refreshModes();
    start();

    expectStopped("Selected Fill mode is unavailable on Key device");
    limitModes(second, {"1080p50"});
    key().refreshModes();
    expectStartable();
}

TEST_F(OutputFailureTest, AFailedKeyStartTakesTheFillBack)
{
    route(DeckLinkOutputRouting::keyAndFill);

    expectStartError(second, "EnableVideoOutput", "EnableVideoOutput failed.");
}

TEST_F(OutputFailureTest, AFailedFillStartLeavesTheKeyAlone)
{
    route(DeckLinkOutputRouting::keyAndFill);

    expectStartError(first, "EnableVideoOutput", "EnableVideoOutput failed.");
}

TEST_F(OutputFailureTest, TheDriversRefusalAtTheStartIsCopied)
{
    expectStartError(first, "EnableVideoOutput", "EnableVideoOutput failed.");
}

TEST_F(OutputFailureTest, AKeyerThatDoesNotOpenClosesTheOutputAgain)
{
    route(DeckLinkOutputRouting::keyAndFillAB);

    expectStartError(first, "Keyer.Enable", "Could not enable DeckLink external keyer.");
}

TEST_F(OutputFailureTest, ADeviceWithoutAKeyerCannotKeyByItself)
{
    fill().setSelectedDeviceIndex(second);
    route(DeckLinkOutputRouting::keyAndFillAB);
    start();

    expectStopped("Selected device does not support external keying (A+B).");
    fill().setSelectedDeviceIndex(first);
    expectStartable();
}

TEST_F(OutputFailureTest, AFailingRestartEndsTheLoopOfTheFirst)
{
    start();
    ASSERT_TRUE(card.fail(first, "EnableVideoOutput", 1));
    start();

    expectStopped("EnableVideoOutput failed.");
    expectStartable();
}

TEST_F(OutputFailureTest, ACanvasThatCannotBeDrawnStops)
{
    start();
    document().setSize({0, 0});
    tick();

    expectStopped("Could not create graphics context.");
    document().setSize({1920, 1080});
    expectStartable();
}

TEST_F(OutputFailureTest, ACanvasBeyondAllMemoryStops)
{
    start();
    document().setSize({1e7, 1e7});
    tick();

    expectStopped("Could not allocate bitmap buffer.");
    document().setSize({1920, 1080});
    expectStartable();
}

TEST_F(OutputFailureTest, AFirstFrameThatFailsStopsWithinTheStart)
{
    document().setSize({0, 0});
    start();

    expectStopped("Could not create graphics context.");
    document().setSize({1920, 1080});
    expectStartable();
}

TEST_F(OutputFailureTest, ACanvasTooLargeToBeScaledStopsWithinTheStart)
{
    document().setSize({17000, 17000});
    start();

    expectStopped("Could not allocate bitmap buffer.");
    document().setSize({1920, 1080});
    expectStartable();
}

TEST_F(OutputFailureTest, AFirstFrameThatFailsOnlyOnceStops)
{
    expectStartError(first, "RowBytesForPixelFormat", "RowBytesForPixelFormat failed.");
    expectStartError(first, "CreateVideoFrameWithBuffer", "CreateVideoFrameWithBuffer failed.");
    expectStartError(first, "DisplayVideoFrameSync", "DisplayVideoFrameSync failed.");
}

TEST_F(OutputFailureTest, TheFillOfABeatGoesOutWhateverFailsOfItsKey)
{
    route(DeckLinkOutputRouting::keyAndFill);
    for (const char *call :
         {"RowBytesForPixelFormat", "CreateVideoFrameWithBuffer", "DisplayVideoFrameSync"}) {
        start();
        const qint64 before = sent(first);
        ASSERT_TRUE(card.fail(second, call, 1));
        tick();

        EXPECT_EQ(sent(first), before + 1) << call;
        expectStopped(QString("%1 failed.").arg(call));
    }
    expectStartable();
}

TEST_F(OutputFailureTest, TheFillOfABeatGoesOutWhenItsKeyHasEnded)
{
    route(DeckLinkOutputRouting::keyAndFill);
    start();
    const qint64 before = sent(first);
    key().stopOutput();
    tick();

    EXPECT_EQ(sent(first), before + 1);
    expectStopped("Key output is not running");
}

TEST_F(OutputFailureTest, AFillThatRefusesAFrameStops)
{
    start();
    ASSERT_TRUE(card.fail(first, "DisplayVideoFrameSync", 1));
    tick();

    expectStopped("DisplayVideoFrameSync failed.");
    EXPECT_EQ(fill().lastErrorMessage(), QStringLiteral("DisplayVideoFrameSync failed."));
    expectStartable();
}

TEST_F(OutputFailureTest, EveryCallOfASendCanStopTheOutput)
{
    const std::pair<const char *, const char *> calls[] = {
        {"RowBytesForPixelFormat", "RowBytesForPixelFormat failed."},
        {"CreateVideoFrameWithBuffer", "CreateVideoFrameWithBuffer failed."},
    };
    for (const auto &[call, reason] : calls) {
        start();
        ASSERT_TRUE(card.fail(first, call, 1));
        tick();
        expectStopped(reason);
    }
    expectStartable();
}

TEST_F(OutputFailureTest, AKeyThatRefusesAFrameStopsBoth)
{
    route(DeckLinkOutputRouting::keyAndFill);
    start();
    ASSERT_TRUE(card.fail(second, "DisplayVideoFrameSync", 1));
    tick();

    expectStopped("DisplayVideoFrameSync failed.");
    EXPECT_EQ(key().lastErrorMessage(), QStringLiteral("DisplayVideoFrameSync failed."));
    EXPECT_FALSE(fill().lastErrorMessage().has_value());
    expectStartable();
}

TEST_F(OutputFailureTest, AKeyThatIsGoneStopsTheFill)
{
    route(DeckLinkOutputRouting::keyAndFill);
    start();
    key().stopOutput();
    tick();

    expectStopped("Key output is not running");
    expectStartable();
}

TEST_F(OutputFailureTest, AKeyWithoutItsModeStopsTheFill)
{
    route(DeckLinkOutputRouting::keyAndFill);
    start();
    key().setSelectedModeID(std::nullopt);
    tick();

    expectStopped("Key output is not running");
    expectStartable();
}

TEST_F(OutputFailureTest, ADevicePulledOutStops)
{
    start();
    ASSERT_TRUE(card.remove(first));
    tick();

    EXPECT_FALSE(app.isDeckLinkOutputRunning());
    EXPECT_EQ(app.outputLoop(), nullptr);
    EXPECT_TRUE(app.lastErrorMessage().has_value());
    ASSERT_TRUE(card.restore(first));
    app.refreshDeckLinkDevices();
    expectStartable();
}

TEST_F(OutputFailureTest, AStopInsideTheSendIsNoError)
{
    start();
    // The manager tells of its failure in the middle of the send, and a listener stops the show.
    QObject::connect(&fill(), &DeckLinkManager::lastErrorMessageChanged, &app,
                     [this] { app.stopDeckLinkOutput(); });
    ASSERT_TRUE(card.fail(first, "DisplayVideoFrameSync", 1));
    tick();

    expectStopped("DisplayVideoFrameSync failed.");
    QObject::disconnect(&fill(), &DeckLinkManager::lastErrorMessageChanged, &app, nullptr);
    expectStartable();
}

TEST_F(OutputFailureTest, AGoodStartKeepsTheOldMessage)
{
    app.setLastErrorMessage("old news");
    start();

    EXPECT_EQ(app.lastErrorMessage(), QStringLiteral("old news"));
}

TEST_F(OutputFailureTest, AMissingFillModeSendsNothingAndGoesOn)
{
    start();
    const std::optional<qint64> mode = fill().selectedModeID();
    fill().setSelectedModeID(std::nullopt);
    tick();
    EXPECT_EQ(sent(first), 1);
    EXPECT_TRUE(app.isDeckLinkOutputRunning());

    fill().setSelectedModeID(mode);
    tick();

    EXPECT_EQ(sent(first), 2);
}

} // namespace
} // namespace tessara
