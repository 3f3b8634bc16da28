#include "DeckLink/DeckLinkManager.h"

#include "DeckLink/VirtualCardFixture.h"

namespace tessara {
namespace {

class DeckLinkManagerStartTest : public VirtualCardFixture
{
protected:
    DeckLinkManagerStartTest()
    {
        QObject::connect(&manager, &DeckLinkManager::lastErrorMessageChanged,
                         [this] { ++errorNotices; });
    }
    /// What failed leaves the output closed, and the next start works.
    void expectRefused(const QString &reason, DeckLinkStartMode mode)
    {
        EXPECT_FALSE(manager.startOutput(mode));
        EXPECT_EQ(manager.lastErrorMessage(), reason);
        EXPECT_FALSE(manager.isOutputRunning());
        expectClosed(keyingDevice);
        card.reset();
        EXPECT_TRUE(manager.startOutput(mode));
        EXPECT_TRUE(manager.sendFrame(frame1080()));
        EXPECT_EQ(manager.lastErrorMessage(), std::nullopt);
    }

    DeckLinkManager manager;
    int errorNotices = 0;
};

TEST_F(DeckLinkManagerStartTest, AStartedOutputSaysSo)
{
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));

    EXPECT_TRUE(manager.isOutputRunning());
    EXPECT_EQ(manager.statusMessage(), "Output started");
    EXPECT_EQ(manager.lastErrorMessage(), std::nullopt);
    expectOpen(keyingDevice);
    EXPECT_EQ(card.devices().at(keyingDevice).modeName, "1080p50");
}

TEST_F(DeckLinkManagerStartTest, AStoppedOutputSaysSo)
{
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::externalKeying));
    EXPECT_TRUE(card.devices().at(keyingDevice).isKeyerEnabled);

    manager.stopOutput();

    EXPECT_FALSE(manager.isOutputRunning());
    EXPECT_EQ(manager.statusMessage(), "Output stopped");
    expectClosed(keyingDevice);
}

TEST_F(DeckLinkManagerStartTest, WithoutASDKNothingStarts)
{
    ASSERT_TRUE(card.fail(noDevice, "CreateDeckLinkIteratorInstance", 1));
    manager.refreshDevices();

    EXPECT_FALSE(manager.startOutput(DeckLinkStartMode::standard));

    EXPECT_EQ(manager.lastErrorMessage(), "DeckLink SDK is not available");
}

TEST_F(DeckLinkManagerStartTest, WithoutADeviceNothingStarts)
{
    manager.setSelectedDeviceIndex(std::nullopt);

    EXPECT_FALSE(manager.startOutput(DeckLinkStartMode::standard));

    EXPECT_EQ(manager.lastErrorMessage(), "Select a DeckLink device");
}

TEST_F(DeckLinkManagerStartTest, WithoutAModeNothingStarts)
{
    manager.setSelectedModeID(std::nullopt);

    EXPECT_FALSE(manager.startOutput(DeckLinkStartMode::standard));

    EXPECT_EQ(manager.lastErrorMessage(), "Select an output mode");
}

TEST_F(DeckLinkManagerStartTest, AFailedStartTellsTheBridgesReason)
{
    ASSERT_TRUE(card.fail(keyingDevice, "EnableVideoOutput", 1));
    expectRefused("EnableVideoOutput failed.", DeckLinkStartMode::standard);

    ASSERT_TRUE(card.fail(keyingDevice, "Keyer.Enable", 1));
    expectRefused("Could not enable DeckLink external keyer.", DeckLinkStartMode::externalKeying);
}

TEST_F(DeckLinkManagerStartTest, AFailedStartHasNoCalmLine)
{
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));
    ASSERT_TRUE(card.fail(keyingDevice, "EnableVideoOutput", 1));

    EXPECT_FALSE(manager.startOutput(DeckLinkStartMode::standard));

    EXPECT_EQ(manager.statusMessage(), std::nullopt);
    EXPECT_FALSE(manager.isOutputRunning());
}

TEST_F(DeckLinkManagerStartTest, ADeviceWithoutAKeyerTakesFillAlone)
{
    manager.setSelectedDeviceIndex(plainDevice);

    EXPECT_FALSE(manager.startOutput(DeckLinkStartMode::externalKeying));
    EXPECT_EQ(manager.lastErrorMessage(),
              "Selected device does not support external keying (A+B).");

    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));
}

TEST_F(DeckLinkManagerStartTest, FramesReachTheDevice)
{
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));

    EXPECT_TRUE(manager.sendFrame(frame1080()));
    EXPECT_TRUE(manager.sendFrame(frame1080()));

    EXPECT_EQ(card.frames(keyingDevice)->sent, 2);
}

TEST_F(DeckLinkManagerStartTest, WithoutAnOutputAFrameIsRefusedInSilence)
{
    EXPECT_FALSE(manager.sendFrame(frame1080()));

    EXPECT_EQ(manager.lastErrorMessage(), std::nullopt);
    EXPECT_EQ(manager.statusMessage(), std::nullopt);
}

TEST_F(DeckLinkManagerStartTest, ADeviceThatFailsOnEveryTickIsReportedOnce)
{
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));
    ASSERT_TRUE(card.fail(keyingDevice, "DisplayVideoFrameSync", 50));

    for (int tick = 0; tick < 50; ++tick)
        EXPECT_FALSE(manager.sendFrame(frame1080()));

    EXPECT_EQ(manager.lastErrorMessage(), "DisplayVideoFrameSync failed.");
    EXPECT_EQ(errorNotices, 1);

    manager.stopOutput();
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));
    EXPECT_TRUE(manager.sendFrame(frame1080()));
}

TEST_F(DeckLinkManagerStartTest, ARefreshClearsTheError)
{
    manager.setSelectedModeID(std::nullopt);
    EXPECT_FALSE(manager.startOutput(DeckLinkStartMode::standard));

    manager.refreshDevices();

    EXPECT_EQ(manager.lastErrorMessage(), std::nullopt);
}

TEST_F(DeckLinkManagerStartTest, ARefreshThatFindsNothingClearsTheRunningFlagAlone)
{
    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));
    ASSERT_TRUE(card.fail(noDevice, "CreateDeckLinkIteratorInstance", 1));

    manager.refreshDevices();

    EXPECT_FALSE(manager.isOutputRunning());
    expectOpen(keyingDevice);
}

TEST_F(DeckLinkManagerStartTest, TwoManagersDriveTwoDevices)
{
    DeckLinkManager key;
    key.setSelectedDeviceIndex(plainDevice);

    EXPECT_TRUE(manager.startOutput(DeckLinkStartMode::standard));
    EXPECT_TRUE(key.startOutput(DeckLinkStartMode::standard));

    EXPECT_TRUE(manager.sendFrame(frame1080()));
    EXPECT_TRUE(key.sendFrame(frame1080()));
    EXPECT_EQ(card.frames(keyingDevice)->sent, 1);
    EXPECT_EQ(card.frames(plainDevice)->sent, 1);
}

} // namespace
} // namespace tessara
