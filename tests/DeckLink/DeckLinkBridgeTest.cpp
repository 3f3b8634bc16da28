#include "DeckLink/DeckLinkBridge.h"

#include "DeckLink/VirtualCardFixture.h"

namespace tessara {
namespace {

/// The text of a refusal, empty for success.
QString text(const DeckLinkBridge::Result &result)
{
    return result ? QString() : result.error();
}

class DeckLinkBridgeTest : public VirtualCardFixture
{
protected:
    DeckLinkBridgeTest() { objectsAtStart = card.liveObjects(); }

    QString start(int device, bool enableExternalKeying = false)
    {
        return text(bridge.startOutputForDeviceAtIndex(device, house, enableExternalKeying));
    }
    QString send() { return text(bridge.sendFrameBGRA(frame1080().data, 1920, 1080, 7680)); }
    /// A failed start leaves nothing open and nothing held, and the next one works.
    void expectRefused(const QString &reason, int device, bool enableExternalKeying = false)
    {
        EXPECT_EQ(start(device, enableExternalKeying), reason);
        EXPECT_FALSE(bridge.isOutputRunning());
        EXPECT_EQ(card.liveObjects(), objectsAtStart);
        card.reset();
        expectClosed(device);
        EXPECT_EQ(start(keyingDevice, enableExternalKeying), QString());
        EXPECT_EQ(send(), QString());
        bridge.stopOutput();
    }

    const qint64 house = modeID(keyingDevice, "1080p50");
    qint64 objectsAtStart = 0;
    DeckLinkBridge bridge;
};

TEST_F(DeckLinkBridgeTest, DevicesAreCountedFromZero)
{
    EXPECT_EQ(bridge.deviceInfos(),
              (QList<DeckLinkDeviceInfo>{{0, "Virtual Card 1"}, {1, "Virtual Card 2"}}));
    EXPECT_EQ(card.liveObjects(), objectsAtStart);
}

TEST_F(DeckLinkBridgeTest, ADeviceWithoutANameIsADeckLink)
{
    ASSERT_TRUE(card.fail(plainDevice, "GetDisplayName", 1));

    EXPECT_EQ(bridge.deviceInfos().at(1).displayName, "DeckLink");
}

TEST_F(DeckLinkBridgeTest, TheIndexIsAPositionAndMovesWithTheHardware)
{
    ASSERT_TRUE(card.remove(keyingDevice));

    EXPECT_EQ(bridge.deviceInfos(), (QList<DeckLinkDeviceInfo>{{0, "Virtual Card 2"}}));
}

TEST_F(DeckLinkBridgeTest, WithoutAnIteratorThereIsNoSDKAndNoDevice)
{
    EXPECT_TRUE(bridge.isSDKAvailable());
    ASSERT_TRUE(card.fail(noDevice, "CreateDeckLinkIteratorInstance", 3));

    EXPECT_FALSE(bridge.isSDKAvailable());
    EXPECT_TRUE(bridge.deviceInfos().isEmpty());
    EXPECT_TRUE(bridge.displayModesForDeviceAtIndex(0).isEmpty());
}

TEST_F(DeckLinkBridgeTest, ModesComeWithTheDriversExactNumbers)
{
    const auto modes = bridge.displayModesForDeviceAtIndex(plainDevice);

    EXPECT_TRUE(modes.contains({0x48703530, "1080p50", 1920, 1080, 1000, 50000}));
    EXPECT_TRUE(modes.contains({0x48703539, "1080p59.94", 1920, 1080, 1001, 60000}));
    EXPECT_TRUE(modes.contains({0x48693530, "1080i50", 1920, 1080, 1000, 25000}));
    EXPECT_TRUE(modes.contains({0x68703530, "720p50", 1280, 720, 1000, 50000}));
    EXPECT_TRUE(modes.contains({0x346B3235, "2160p25", 3840, 2160, 1000, 25000}));
    EXPECT_TRUE(modes.contains({0x32337073, "1080p23.98", 1920, 1080, 1001, 24000}));
    EXPECT_EQ(card.liveObjects(), objectsAtStart);
}

TEST_F(DeckLinkBridgeTest, AModeWithoutANameIsUnknown)
{
    ASSERT_TRUE(card.fail(plainDevice, "GetName", 1));

    EXPECT_EQ(bridge.displayModesForDeviceAtIndex(plainDevice).first().name, "Unknown mode");
}

TEST_F(DeckLinkBridgeTest, ListsEndQuietlyWhereTheDriverFails)
{
    for (const QString call :
         {"QueryInterface.IDeckLinkOutput", "GetDisplayModeIterator", "DisplayModeIterator.Next"}) {
        ASSERT_TRUE(card.fail(plainDevice, call, 1));
        EXPECT_TRUE(bridge.displayModesForDeviceAtIndex(plainDevice).isEmpty());
    }
    EXPECT_TRUE(bridge.displayModesForDeviceAtIndex(2).isEmpty());
    EXPECT_TRUE(bridge.displayModesForDeviceAtIndex(-1).isEmpty());

    ASSERT_TRUE(card.fail(noDevice, "Iterator.Next", 1));
    EXPECT_TRUE(bridge.deviceInfos().isEmpty());
}

TEST_F(DeckLinkBridgeTest, AMissingDeviceCannotBeOpened)
{
    EXPECT_EQ(start(2), "Could not open DeckLink device.");
    EXPECT_EQ(start(-1), "Could not open DeckLink device.");

    ASSERT_TRUE(card.fail(noDevice, "Iterator.Next", 1));
    expectRefused("Could not open DeckLink device.", keyingDevice);
}

TEST_F(DeckLinkBridgeTest, ADeviceWithoutAnOutputIsRefused)
{
    ASSERT_TRUE(card.fail(plainDevice, "QueryInterface.IDeckLinkOutput", 1));

    expectRefused("Selected device does not support output.", plainDevice);
}

TEST_F(DeckLinkBridgeTest, AnOldDriverSaysThatItIsTooOld)
{
    card.setDriverVersion(0x0C080000);

    expectRefused("DeckLink driver is too old: version 14.3 or later is needed", plainDevice);
}

TEST_F(DeckLinkBridgeTest, AnUnsupportedModeIsRefused)
{
    ASSERT_TRUE(card.limit(plainDevice, {.modes = QStringList{"720p50"}}));

    expectRefused("Selected mode is not supported by this device output.", plainDevice);
}

TEST_F(DeckLinkBridgeTest, ADriverThatFailsToAnswerSupportsNothing)
{
    ASSERT_TRUE(card.fail(plainDevice, "DoesSupportVideoMode", 3));

    expectRefused("Selected mode is not supported by this device output.", plainDevice);
}

TEST_F(DeckLinkBridgeTest, AModeThatIsYUVOnlyOpensInTheStandardStartAlone)
{
    ASSERT_TRUE(card.limit(keyingDevice, {.formats = QStringList{"2vuy"}}));
    EXPECT_EQ(start(keyingDevice), QString());

    expectRefused("Selected mode is not supported for alpha output (BGRA/ARGB).", keyingDevice,
                  true);
}

TEST_F(DeckLinkBridgeTest, TheFormatIsCheckedBeforeTheKeyer)
{
    EXPECT_EQ(start(plainDevice, true), "Selected device does not support external keying (A+B).");

    ASSERT_TRUE(card.limit(plainDevice, {.formats = QStringList{"2vuy"}}));
    expectRefused("Selected mode is not supported for alpha output (BGRA/ARGB).", plainDevice,
                  true);
}

TEST_F(DeckLinkBridgeTest, KeyingNeedsTheAttributes)
{
    ASSERT_TRUE(card.fail(keyingDevice, "QueryInterface.IDeckLinkProfileAttributes", 1));

    expectRefused("Could not query DeckLink profile attributes for keying.", keyingDevice, true);
}

TEST_F(DeckLinkBridgeTest, KeyingNeedsTheFlag)
{
    ASSERT_TRUE(card.fail(keyingDevice, "GetFlag", 1));
    expectRefused("Selected device does not support external keying (A+B).", keyingDevice, true);

    ASSERT_TRUE(card.limit(keyingDevice, {.keying = false}));
    expectRefused("Selected device does not support external keying (A+B).", keyingDevice, true);
}

TEST_F(DeckLinkBridgeTest, KeyingNeedsTheKeyer)
{
    ASSERT_TRUE(card.fail(keyingDevice, "QueryInterface.IDeckLinkKeyer", 1));

    expectRefused("Could not open DeckLink keyer interface.", keyingDevice, true);
}

TEST_F(DeckLinkBridgeTest, ARefusedOutputStaysClosed)
{
    ASSERT_TRUE(card.fail(plainDevice, "EnableVideoOutput", 1));
    expectRefused("EnableVideoOutput failed.", plainDevice);

    ASSERT_TRUE(card.fail(keyingDevice, "EnableVideoOutput", 1));
    expectRefused("EnableVideoOutput failed.", keyingDevice, true);
}

TEST_F(DeckLinkBridgeTest, ARefusedKeyerClosesTheOutputAgain)
{
    ASSERT_TRUE(card.fail(keyingDevice, "Keyer.Enable", 1));
    EXPECT_EQ(start(keyingDevice, true), "Could not enable DeckLink external keyer.");
    EXPECT_EQ(card.callCount(keyingDevice, "DisableVideoOutput"), 1);
    EXPECT_EQ(card.callCount(keyingDevice, "Keyer.SetLevel"), 0);

    ASSERT_TRUE(card.fail(keyingDevice, "Keyer.Enable", 1));
    expectRefused("Could not enable DeckLink external keyer.", keyingDevice, true);
}

TEST_F(DeckLinkBridgeTest, KeyingGoesOnAtFullOpacityAndOffWithTheOutput)
{
    EXPECT_EQ(start(keyingDevice, true), QString());
    EXPECT_TRUE(card.devices().at(keyingDevice).isKeyerEnabled);
    EXPECT_EQ(card.devices().at(keyingDevice).keyerLevel, 255);

    bridge.stopOutput();
    EXPECT_EQ(card.callCount(keyingDevice, "Keyer.Disable"), 1);
    EXPECT_EQ(card.callCount(keyingDevice, "DisableVideoOutput"), 1);
    expectClosed(keyingDevice);
    EXPECT_EQ(card.liveObjects(), objectsAtStart);
}

TEST_F(DeckLinkBridgeTest, AStandardStartLeavesTheKeyerAlone)
{
    EXPECT_EQ(start(keyingDevice), QString());

    expectOpen(keyingDevice);
    EXPECT_FALSE(card.devices().at(keyingDevice).isKeyerEnabled);
}

TEST_F(DeckLinkBridgeTest, ASecondStartClosesTheFirstOutput)
{
    EXPECT_EQ(start(keyingDevice), QString());

    EXPECT_EQ(start(plainDevice), QString());

    expectClosed(keyingDevice);
    expectOpen(plainDevice);
}

TEST_F(DeckLinkBridgeTest, TheSameDeviceCanBeStartedTwiceInARow)
{
    EXPECT_EQ(start(keyingDevice, true), QString());
    EXPECT_EQ(start(keyingDevice), QString());

    expectOpen(keyingDevice);
    EXPECT_EQ(send(), QString());
}

TEST_F(DeckLinkBridgeTest, AFailedSecondStartLeavesNothingRunning)
{
    EXPECT_EQ(start(keyingDevice), QString());
    ASSERT_TRUE(card.fail(plainDevice, "EnableVideoOutput", 1));

    EXPECT_EQ(start(plainDevice), "EnableVideoOutput failed.");

    EXPECT_FALSE(bridge.isOutputRunning());
    expectClosed(keyingDevice);
    expectClosed(plainDevice);
}

TEST_F(DeckLinkBridgeTest, AnOutputThatSomebodyElseHoldsIsRefused)
{
    DeckLinkBridge other;
    EXPECT_EQ(text(other.startOutputForDeviceAtIndex(plainDevice, house, false)), QString());

    EXPECT_EQ(start(plainDevice), "EnableVideoOutput failed.");
    expectOpen(plainDevice);

    other.stopOutput();
    EXPECT_EQ(start(plainDevice), QString());
}

TEST_F(DeckLinkBridgeTest, StoppingAClosedBridgeChangesNothing)
{
    bridge.stopOutput();
    bridge.stopOutput();

    EXPECT_FALSE(bridge.isOutputRunning());
    EXPECT_EQ(card.liveObjects(), objectsAtStart);
}

TEST_F(DeckLinkBridgeTest, TheEndOfTheBridgeIsTheEndOfTheOutput)
{
    {
        DeckLinkBridge brief;
        EXPECT_EQ(text(brief.startOutputForDeviceAtIndex(keyingDevice, house, true)), QString());
    }

    expectClosed(keyingDevice);
    EXPECT_EQ(card.liveObjects(), objectsAtStart);
}

TEST_F(DeckLinkBridgeTest, AnUnpluggedDeviceFailsAndStartsAgainAfterItsReturn)
{
    EXPECT_EQ(start(keyingDevice), QString());
    ASSERT_TRUE(card.remove(keyingDevice));
    EXPECT_EQ(send(), "RowBytesForPixelFormat failed.");

    bridge.stopOutput();
    ASSERT_TRUE(card.restore(keyingDevice));

    EXPECT_EQ(start(keyingDevice), QString());
    EXPECT_EQ(send(), QString());
}

} // namespace
} // namespace tessara
