#include "DeckLink/DeckLinkManager.h"

#include <QVariant>

#include "DeckLink/VirtualCardFixture.h"

namespace tessara {
namespace {

QStringList namesOf(const QList<DeckLinkDisplayMode> &modes)
{
    QStringList names;
    for (const DeckLinkDisplayMode &mode : modes)
        names.append(mode.name);
    return names;
}

class DeckLinkManagerTest : public VirtualCardFixture
{
protected:
    QString selectedName() const
    {
        return manager->selectedMode() ? manager->selectedMode()->name : QString();
    }
    void limitModes(int device, const QStringList &modes)
    {
        ASSERT_TRUE(card.limit(device, {.modes = modes}));
    }

    std::unique_ptr<DeckLinkManager> manager = std::make_unique<DeckLinkManager>();
};

TEST_F(DeckLinkManagerTest, AFreshManagerHasListedAndSelected)
{
    EXPECT_TRUE(manager->sdkAvailable());
    ASSERT_EQ(manager->devices().size(), 2);
    EXPECT_EQ(manager->devices().at(1).displayName, "Virtual Card 2");
    EXPECT_EQ(manager->selectedDeviceIndex(), 0);
    EXPECT_EQ(selectedName(), "1080p50");
    EXPECT_FALSE(manager->isOutputRunning());
    EXPECT_EQ(manager->statusMessage(), std::nullopt);
    EXPECT_EQ(manager->lastErrorMessage(), std::nullopt);
}

TEST_F(DeckLinkManagerTest, TheHouseDefaultLeadsTheListAndAScoreKeepsTheDriversOrder)
{
    limitModes(0, {"720p50", "720p60", "1080p25", "1080i50", "1080p59.94", "1080p50", "2160p25"});

    manager->refreshModes();

    EXPECT_EQ(namesOf(manager->modes()), (QStringList{"1080p50", "1080p59.94", "1080p25", "1080i50",
                                                      "720p50", "720p60", "2160p25"}));
}

TEST_F(DeckLinkManagerTest, Without1080p50TheNext59IsSelected)
{
    limitModes(0, {"720p50", "1080p25", "1080p59.94"});

    manager->refreshModes();

    EXPECT_EQ(selectedName(), "1080p59.94");
}

TEST_F(DeckLinkManagerTest, WithoutAPreferredModeTheFirstOfTheListIsSelected)
{
    limitModes(0, {"720p50", "1080i50"});

    manager->refreshModes();

    EXPECT_EQ(selectedName(), "1080i50");
    EXPECT_EQ(namesOf(manager->modes()), (QStringList{"1080i50", "720p50"}));
}

TEST_F(DeckLinkManagerTest, ADeviceWithoutModesSaysSo)
{
    limitModes(0, {});

    manager->refreshModes();

    EXPECT_TRUE(manager->modes().isEmpty());
    EXPECT_EQ(manager->selectedModeID(), std::nullopt);
    EXPECT_EQ(manager->statusMessage(), "No output modes available");

    card.reset();
    manager->refreshModes();
    EXPECT_EQ(manager->statusMessage(), std::nullopt);
}

TEST_F(DeckLinkManagerTest, ASelectedModeThatTheNewDeviceHasIsKept)
{
    manager->setSelectedModeID(modeID(0, "2160p25"));

    manager->setSelectedDeviceIndex(1);

    EXPECT_EQ(selectedName(), "2160p25");
}

TEST_F(DeckLinkManagerTest, ASelectedModeThatTheNewDeviceLacksGivesWay)
{
    limitModes(1, {"720p50", "1080p50"});
    manager->setSelectedModeID(modeID(0, "2160p25"));

    manager->setSelectedDeviceIndex(1);

    EXPECT_EQ(selectedName(), "1080p50");
}

TEST_F(DeckLinkManagerTest, TheSelectionSurvivesARefresh)
{
    manager->setSelectedDeviceIndex(1);
    manager->setSelectedModeID(modeID(1, "720p60"));

    manager->refreshDevices();

    EXPECT_EQ(manager->selectedDeviceIndex(), 1);
    EXPECT_EQ(selectedName(), "720p60");
}

TEST_F(DeckLinkManagerTest, ASelectedDeviceThatIsGoneGivesWayToTheFirst)
{
    manager->setSelectedDeviceIndex(1);
    ASSERT_TRUE(card.remove(1));

    manager->refreshDevices();

    EXPECT_EQ(manager->selectedDeviceIndex(), 0);
    EXPECT_EQ(manager->devices().size(), 1);
}

TEST_F(DeckLinkManagerTest, WithoutDevicesThereIsNothingToSelect)
{
    ASSERT_TRUE(card.remove(0));
    ASSERT_TRUE(card.remove(1));

    manager->refreshDevices();

    EXPECT_TRUE(manager->sdkAvailable());
    EXPECT_TRUE(manager->devices().isEmpty());
    EXPECT_TRUE(manager->modes().isEmpty());
    EXPECT_EQ(manager->selectedDeviceIndex(), std::nullopt);
    EXPECT_EQ(manager->selectedModeID(), std::nullopt);
    EXPECT_EQ(manager->statusMessage(), "No DeckLink devices found");
}

TEST_F(DeckLinkManagerTest, WithoutASDKThereIsNothingAtAll)
{
    ASSERT_TRUE(card.fail(noDevice, "CreateDeckLinkIteratorInstance", 1));

    manager->refreshDevices();

    EXPECT_FALSE(manager->sdkAvailable());
    EXPECT_TRUE(manager->devices().isEmpty());
    EXPECT_TRUE(manager->modes().isEmpty());
    EXPECT_EQ(manager->selectedDeviceIndex(), std::nullopt);
    EXPECT_EQ(manager->selectedModeID(), std::nullopt);
    EXPECT_EQ(manager->statusMessage(), "DeckLink SDK unavailable");
    EXPECT_EQ(manager->lastErrorMessage(), std::nullopt);
}

TEST_F(DeckLinkManagerTest, AnOldDriverIsNoSDKAndTellsWhy)
{
    card.setDriverVersion(0x0C080000);

    manager->refreshDevices();

    EXPECT_FALSE(manager->sdkAvailable());
    EXPECT_TRUE(manager->devices().isEmpty());
    EXPECT_EQ(manager->statusMessage(),
              "DeckLink driver is too old: version 14.3 or later is needed");

    card.reset();
    manager->refreshDevices();
    EXPECT_TRUE(manager->sdkAvailable());
    EXPECT_EQ(selectedName(), "1080p50");
}

TEST_F(DeckLinkManagerTest, AnEqualDeviceIndexDoesNothing)
{
    limitModes(0, {"720p50"});

    manager->setSelectedDeviceIndex(0);

    EXPECT_EQ(selectedName(), "1080p50");
}

TEST_F(DeckLinkManagerTest, NoDeviceHasNoModes)
{
    manager->setSelectedDeviceIndex(std::nullopt);

    EXPECT_TRUE(manager->modes().isEmpty());
    EXPECT_EQ(manager->selectedModeID(), std::nullopt);
    EXPECT_EQ(manager->selectedMode(), std::nullopt);
}

TEST_F(DeckLinkManagerTest, AModeThatIsNotListedIsNoSelectedMode)
{
    manager->setSelectedModeID(12345);

    EXPECT_EQ(manager->selectedModeID(), 12345);
    EXPECT_EQ(manager->selectedMode(), std::nullopt);
}

TEST_F(DeckLinkManagerTest, NoticesComeOnlyWhenSomethingHasChanged)
{
    int notices = 0;
    int modeNotices = 0;
    QObject::connect(manager.get(), &DeckLinkManager::changed, [&] { ++notices; });
    QObject::connect(manager.get(), &DeckLinkManager::selectedModeChanged, [&] { ++modeNotices; });

    manager->refreshDevices();
    manager->setSelectedModeID(manager->selectedModeID());
    EXPECT_EQ(notices, 0);

    manager->setSelectedModeID(modeID(0, "720p50"));
    EXPECT_EQ(notices, 2);
    EXPECT_EQ(modeNotices, 1);
}

TEST_F(DeckLinkManagerTest, ANewNameOfTheSameDeviceReachesTheMenu)
{
    ASSERT_TRUE(card.fail(0, "GetDisplayName", 1));

    manager->refreshDevices();

    EXPECT_EQ(manager->devices().first().displayName, "DeckLink");
}

TEST_F(DeckLinkManagerTest, ViewsAndScriptsReachItByName)
{
    EXPECT_EQ(manager->property("sdkAvailable"), QVariant(true));
    EXPECT_EQ(manager->property("selectedDeviceIndex").value<std::optional<int>>(), 0);

    EXPECT_TRUE(
        manager->setProperty("selectedDeviceIndex", QVariant::fromValue(std::optional<int>(1))));
    EXPECT_EQ(manager->selectedDeviceIndex(), 1);

    bool started = false;
    EXPECT_TRUE(
        QMetaObject::invokeMethod(manager.get(), "startOutput", Q_RETURN_ARG(bool, started),
                                  Q_ARG(tessara::DeckLinkStartMode, DeckLinkStartMode::standard)));
    EXPECT_TRUE(started);
}

} // namespace
} // namespace tessara
