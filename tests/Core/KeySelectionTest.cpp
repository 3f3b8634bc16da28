#include "Core/AppStateFixture.h"
#include "Core/KeyModeMatch.h"

namespace tessara {
namespace {

DeckLinkDisplayMode mode(qint64 id, int width, int height, qint64 frameDuration, qint64 timeScale)
{
    return {id, "mode", width, height, frameDuration, timeScale};
}

class KeySelectionTest : public AppStateTest
{
};

TEST(KeyModeMatchTest, TheSameModeGoesBeforeOneThatIsLikeIt)
{
    const DeckLinkDisplayMode wanted = mode(2, 1920, 1080, 1000, 50000);
    const QList<DeckLinkDisplayMode> modes{mode(1, 1920, 1080, 1000, 50000),
                                           mode(2, 1280, 720, 1001, 60000)};

    EXPECT_EQ(matchingMode(modes, wanted)->modeID, 2);
}

TEST(KeyModeMatchTest, ARateWithinTwoHundredthsMatchesAndNoFartherOne)
{
    const DeckLinkDisplayMode wanted = mode(1, 1920, 1080, 100, 5000);
    const auto matches = [&](const DeckLinkDisplayMode &candidate) {
        return matchingMode({candidate}, wanted).has_value();
    };

    EXPECT_TRUE(matches(mode(2, 1920, 1080, 100, 4999)));
    EXPECT_TRUE(matches(mode(2, 1920, 1080, 100, 5001)));
    EXPECT_FALSE(matches(mode(2, 1920, 1080, 100, 4998)));
    EXPECT_FALSE(matches(mode(2, 1920, 1080, 100, 5003)));
    EXPECT_FALSE(matches(mode(2, 1280, 1080, 100, 5000)));
    EXPECT_FALSE(matches(mode(2, 1920, 720, 100, 5000)));
}

TEST(KeyModeMatchTest, TheFirstLikeModeOfTheListIsTaken)
{
    const DeckLinkDisplayMode wanted = mode(1, 1920, 1080, 100, 5000);

    EXPECT_EQ(matchingMode({mode(4, 1920, 1080, 100, 4999), mode(3, 1920, 1080, 100, 5000)}, wanted)
                  ->modeID,
              4);
    EXPECT_FALSE(matchingMode({}, wanted).has_value());
}

TEST(KeyModeMatchTest, ModesWithoutARateMatchEachOther)
{
    EXPECT_TRUE(
        matchingMode({mode(2, 1920, 1080, 0, 50)}, mode(1, 1920, 1080, 100, 0)).has_value());
}

TEST_F(KeySelectionTest, TheKeyMovesOffTheFillsDeviceOnlyWhereItIsNeeded)
{
    EXPECT_NE(key().selectedDeviceIndex(), fill().selectedDeviceIndex());
    fill().setSelectedDeviceIndex(second);
    EXPECT_EQ(key().selectedDeviceIndex(), second);

    route(DeckLinkOutputRouting::keyAndFill);

    EXPECT_EQ(fill().selectedDeviceIndex(), second);
    EXPECT_EQ(key().selectedDeviceIndex(), first);
}

TEST_F(KeySelectionTest, InAPairTheKeyGivesWayToTheFill)
{
    route(DeckLinkOutputRouting::keyAndFill);

    fill().setSelectedDeviceIndex(second);

    EXPECT_EQ(key().selectedDeviceIndex(), first);
    key().setSelectedDeviceIndex(second);
    EXPECT_EQ(key().selectedDeviceIndex(), first);
}

TEST_F(KeySelectionTest, AnAbsentSelectionIsLeftAsItIs)
{
    key().setSelectedDeviceIndex(std::nullopt);
    app.ensureDistinctKeyDeviceSelection();
    EXPECT_FALSE(key().selectedDeviceIndex().has_value());

    fill().setSelectedDeviceIndex(std::nullopt);
    app.ensureDistinctKeyDeviceSelection();
    EXPECT_FALSE(key().selectedDeviceIndex().has_value());
}

TEST_F(KeySelectionTest, TheKeyModeFollowsTheFillsInAPairOnly)
{
    selectMode(fill(), "720p60");
    EXPECT_NE(key().selectedModeID(), fill().selectedModeID());

    route(DeckLinkOutputRouting::keyAndFill);
    EXPECT_EQ(key().selectedModeID(), fill().selectedModeID());
    selectMode(fill(), "1080i50");
    EXPECT_EQ(key().selectedModeID(), fill().selectedModeID());
    fill().setSelectedModeID(std::nullopt);

    EXPECT_FALSE(key().selectedModeID().has_value());
}

TEST_F(KeySelectionTest, TheStatusTextTellsHowTheKeyModeStands)
{
    EXPECT_FALSE(app.keyModeStatusText().has_value());
    EXPECT_TRUE(app.isKeyModeReady());
    route(DeckLinkOutputRouting::keyAndFill);
    EXPECT_EQ(app.keyModeStatusText(),
              QStringLiteral("Key mode follows Fill mode: 1080p50 (1920x1080 @ 50.00 fps)"));
    EXPECT_TRUE(app.canStartDeckLinkOutputFromConfig());

    limitModes(second, {"720p50"});
    app.refreshDeckLinkDevices();
    EXPECT_EQ(app.keyModeStatusText(),
              QStringLiteral("Key device has no matching mode for 1920x1080"));
    EXPECT_FALSE(app.isKeyModeReady());
    EXPECT_FALSE(app.canStartDeckLinkOutputFromConfig());
    fill().setSelectedModeID(std::nullopt);

    EXPECT_EQ(app.keyModeStatusText(), QStringLiteral("Select Fill mode first"));
}

TEST_F(KeySelectionTest, OnlyWhatTheRoutingNeedsHasToBeThere)
{
    key().setSelectedDeviceIndex(std::nullopt);
    EXPECT_TRUE(app.canStartDeckLinkOutputFromConfig());
    route(DeckLinkOutputRouting::keyAndFill);
    EXPECT_FALSE(app.canStartDeckLinkOutputFromConfig());
    route(DeckLinkOutputRouting::keyAndFillAB);
    EXPECT_TRUE(app.canStartDeckLinkOutputFromConfig());

    fill().setSelectedModeID(std::nullopt);

    EXPECT_FALSE(app.canStartDeckLinkOutputFromConfig());
}

TEST_F(KeySelectionTest, TheKeysSelectionOutlivesThePair)
{
    route(DeckLinkOutputRouting::keyAndFill);
    route(DeckLinkOutputRouting::fillOnly);

    EXPECT_EQ(key().selectedDeviceIndex(), second);
}

TEST_F(KeySelectionTest, EveryRoutingHasItsLabel)
{
    EXPECT_EQ(label(DeckLinkOutputRouting::fillOnly), "DeckLink Fill");
    EXPECT_EQ(label(DeckLinkOutputRouting::greenScreen), "DeckLink Green");
    EXPECT_EQ(label(DeckLinkOutputRouting::keyAndFill), "DeckLink Key+Fill (Dual Device)");
    EXPECT_EQ(label(DeckLinkOutputRouting::keyAndFillAB), "DeckLink Key+Fill (A+B)");
}

TEST_F(KeySelectionTest, AChangeOfADeviceIsAChangeOfTheApplication)
{
    int changes = 0;
    const QObject listener;
    QObject::connect(&app, &AppState::outputChanged, &listener, [&] { ++changes; });

    key().setSelectedModeID(std::nullopt);
    EXPECT_GT(changes, 0);
    changes = 0;
    fill().stopOutput();

    EXPECT_GT(changes, 0);
}

TEST_F(KeySelectionTest, AFreshStateHasAFullHdCanvasWithoutLayers)
{
    EXPECT_EQ(document().size(), QSizeF(1920, 1080));
    EXPECT_TRUE(document().orderedLayers().isEmpty());
    EXPECT_EQ(app.deckLinkOutputRouting(), DeckLinkOutputRouting::fillOnly);
    EXPECT_FALSE(app.lastErrorMessage().has_value());
    EXPECT_FALSE(app.lastExportURL().has_value());
    EXPECT_FALSE(app.isDeckLinkOutputRunning());
}

} // namespace
} // namespace tessara
