#include "DocumentFixture.h"

#include <QSignalSpy>

#include "Models/Runlist.h"

namespace tessara {
namespace {

using namespace std::chrono_literals;

class RunlistTest : public DocumentFixture
{
protected:
    QUuid addTitle(const QString &name)
    {
        TextLayer *title = document.addTextLayer();
        title->setName(name);
        return title->id();
    }

    QUuid group(const QList<QUuid> &ids, const QString &name)
    {
        document.groupLayers(ids, name);
        return *document.presetGroupID(ids.first());
    }

    QStringList rowNames() const
    {
        QStringList names;
        for (const VirtualLayerEntry &entry : runlist.entries())
            names.append(entry.name());
        return names;
    }

    /// The layers' names, front-most first.
    QStringList layerNames() const
    {
        QStringList names;
        for (const QUuid &id : document.layerOrder())
            names.prepend(document.layer(id)->name());
        return names;
    }

    const VirtualLayerEntry &row(const QUuid &id) const { return *runlist.entry(id); }
    bool isHidden(const QUuid &id) const { return document.layer(id)->isHidden(); }

    Runlist runlist{document};
};

class RunlistOfFourTest : public RunlistTest
{
protected:
    // Front-most first: title, the group (with two layers), logo, clock.
    QUuid clockID = addTitle(QStringLiteral("clock"));
    QUuid logo = addTitle(QStringLiteral("logo"));
    QUuid name = addTitle(QStringLiteral("name"));
    QUuid panel = addTitle(QStringLiteral("panel"));
    QUuid title = addTitle(QStringLiteral("title"));
    QUuid lowerThird = group({name, panel}, QStringLiteral("lower third"));
};

TEST_F(RunlistOfFourTest, TheFrontMostLayerStandsFirstAndAGroupIsOneRow)
{
    EXPECT_EQ(rowNames(), QStringList({"title", "lower third", "logo", "clock"}));
    EXPECT_TRUE(row(lowerThird).isGroup());
    EXPECT_EQ(row(lowerThird).layerIDs(), QList<QUuid>({panel, name}));
    EXPECT_EQ(runlist.entryIDs(), QList<QUuid>({title, lowerThird, logo, clockID}));
}

TEST_F(RunlistOfFourTest, AGroupStandsWhereItsFrontMostLayerIsThoughOthersStandBetween)
{
    document.reorderLayers({panel, title, name, logo, clockID});

    EXPECT_EQ(rowNames(), QStringList({"lower third", "title", "logo", "clock"}));
    EXPECT_EQ(row(lowerThird).layerIDs(), QList<QUuid>({panel, name}));
}

TEST_F(RunlistOfFourTest, AGroupWithoutANameHasAGeneralOne)
{
    auto *text = qobject_cast<TextLayer *>(document.layer(title));

    text->setPresetGroupID(QUuid::createUuid());
    text->setName(QStringLiteral("subtitle"));

    EXPECT_EQ(rowNames().first(), QStringLiteral("Preset Group"));
}

TEST_F(RunlistOfFourTest, UngroupingGivesEveryLayerARowOfItsOwn)
{
    document.ungroupPreset(lowerThird);

    EXPECT_EQ(rowNames(), QStringList({"title", "panel", "name", "logo", "clock"}));
}

TEST_F(RunlistOfFourTest, ATakeIsToldByItsOwnRowAlone)
{
    QSignalSpy rows(&runlist, &Runlist::visibilityChanged);

    document.takePresetGroupOutNow(lowerThird);
    clock.advance(100ms);

    EXPECT_GT(rows.count(), 4);
    for (const QList<QVariant> &notice : rows)
        EXPECT_EQ(notice.first().toUuid(), lowerThird);
}

// A cue decides first, then whether a row is on air

TEST_F(RunlistOfFourTest, TheStateOfARow)
{
    EXPECT_EQ(text(runlist.state(row(title))), QStringLiteral("ON AIR"));
    document.setLayerHidden(title, true);
    EXPECT_EQ(text(runlist.state(row(title))), QStringLiteral("OFF"));
    document.toggleCue(title);
    EXPECT_EQ(text(runlist.state(row(title))), QStringLiteral("CUED IN"));
    document.toggleCue(logo);
    EXPECT_EQ(text(runlist.state(row(logo))), QStringLiteral("CUED OUT"));
}

TEST_F(RunlistOfFourTest, TheStateOfAGroup)
{
    document.setLayerHidden(name, true);
    EXPECT_EQ(runlist.state(row(lowerThird)), RunlistState::onAir);
    document.setCueTargets({{name, true}});
    EXPECT_EQ(runlist.state(row(lowerThird)), RunlistState::onAir);
    EXPECT_TRUE(runlist.hasCue(row(lowerThird)));
    document.setCueTargets({{name, true}, {panel, true}});
    EXPECT_EQ(runlist.state(row(lowerThird)), RunlistState::cuedIn);
    document.setLayerHidden(name, true);
    document.setLayerHidden(panel, true);
    EXPECT_EQ(runlist.state(row(lowerThird)), RunlistState::off);
}

TEST_F(RunlistOfFourTest, TheCountsSeeAGroupAsOneRow)
{
    document.setLayerHidden(logo, true);
    document.setLayerHidden(panel, true);
    document.toggleCue(clockID);
    document.toggleCueForPresetGroup(lowerThird);

    EXPECT_EQ(runlist.onAirCount(), 3);
    EXPECT_EQ(runlist.shownLayerCount(), 3);
    EXPECT_EQ(runlist.cueCount(), 2);
}

TEST_F(RunlistOfFourTest, TheHelpTellsWhatAClickWouldDo)
{
    document.setLayerHidden(logo, true);
    const auto help = [&](const QUuid &id, bool isCueMode = false, bool isLocked = false) {
        return runlist.helpText(row(id), isCueMode, isLocked);
    };

    EXPECT_EQ(help(title), QStringLiteral("Click to take OFF AIR"));
    EXPECT_EQ(help(logo), QStringLiteral("Click to take ON AIR"));
    EXPECT_EQ(help(lowerThird), QStringLiteral("Click to take preset OFF AIR"));
    document.setLayerHidden(name, true);
    EXPECT_EQ(help(lowerThird), QStringLiteral("Click to take preset OFF AIR"));
    document.setLayerHidden(panel, true);
    EXPECT_EQ(help(lowerThird), QStringLiteral("Click to take preset ON AIR"));
    EXPECT_EQ(help(title, true), QStringLiteral("Click to cue in/out"));
    EXPECT_EQ(help(lowerThird, true), QStringLiteral("Click to cue preset in/out"));
    EXPECT_EQ(help(title, true, true), QStringLiteral("Runlist is locked"));
    EXPECT_EQ(help(lowerThird, false, true), QStringLiteral("Runlist is locked"));
}

// A click

TEST_F(RunlistOfFourTest, AClickTakesAndInCueModeOnlyMarks)
{
    runlist.click(title, true, false);
    runlist.click(lowerThird, true, false);
    EXPECT_EQ(document.cueTargets().size(), 3);
    EXPECT_FALSE(document.takes().isInTransition(title));

    runlist.click(title, false, false);
    runlist.click(lowerThird, false, false);
    EXPECT_TRUE(document.cueTargets().isEmpty());
    clock.advance(1s);
    EXPECT_TRUE(isHidden(title) && isHidden(name) && isHidden(panel));
}

TEST_F(RunlistOfFourTest, ALockedRowAndAnUnknownOneDoNothing)
{
    runlist.click(title, true, true);
    runlist.click(title, false, true);
    runlist.click(QUuid::createUuid(), false, false);

    EXPECT_TRUE(document.cueTargets().isEmpty());
    EXPECT_FALSE(document.takes().isInTransition(title));
}

TEST_F(RunlistOfFourTest, AllOutLeavesLockedLayersOnAir)
{
    document.setLayerLocked(logo, true);
    document.setLayerHidden(clockID, true);
    document.toggleCue(clockID);

    runlist.takeAllOut();
    clock.advance(1s);

    EXPECT_FALSE(isHidden(logo));
    EXPECT_TRUE(isHidden(title) && isHidden(name) && isHidden(panel));
    EXPECT_TRUE(document.cueTargets().contains(clockID));
    EXPECT_EQ(runlist.onAirCount(), 1);
}

TEST_F(RunlistOfFourTest, TheEyeOfAGroupHidesAllAndShowsAllOnceAllAreHidden)
{
    document.setLayerHidden(name, true);

    runlist.toggleHidden(lowerThird);
    EXPECT_TRUE(isHidden(name) && isHidden(panel));

    runlist.toggleHidden(lowerThird);
    EXPECT_FALSE(isHidden(name) || isHidden(panel));
}

TEST_F(RunlistOfFourTest, TheLockOfAGroupLocksAllUnlessAllAreLocked)
{
    document.setLayerLocked(name, true);
    EXPECT_FALSE(runlist.isLocked(row(lowerThird)));

    runlist.toggleLocked(lowerThird);
    EXPECT_TRUE(runlist.isLocked(row(lowerThird)));

    runlist.toggleLocked(lowerThird);
    EXPECT_FALSE(document.layer(name)->isLocked() || document.layer(panel)->isLocked());
}

TEST_F(RunlistOfFourTest, ALockThatIsSetTwiceStays)
{
    for (const bool locked : {true, true, false, false}) {
        runlist.setLocked(lowerThird, locked);
        EXPECT_EQ(document.layer(name)->isLocked(), locked);
        EXPECT_EQ(document.layer(panel)->isLocked(), locked);
    }
}

// Reordering by a drag

TEST_F(RunlistOfFourTest, ADragOf20PointsMovesNothingAndOneOf22MovesByOne)
{
    EXPECT_EQ(runlist.dropSlotAt(0, 20), -1);
    EXPECT_EQ(runlist.dropSlotAt(1, -20), -1);
    EXPECT_EQ(runlist.dropTarget(0, 22), 1);
    EXPECT_EQ(runlist.dropTarget(2, -22), 1);
}

TEST_F(RunlistOfFourTest, ADragBeyondAnEndStopsThere)
{
    EXPECT_EQ(runlist.dropTarget(0, 2000), 3);
    EXPECT_EQ(runlist.dropTarget(3, -2000), 0);
    EXPECT_EQ(runlist.dropTarget(0, 1e300), 3);
}

TEST_F(RunlistOfFourTest, DownwardTheSlotIsBehindTheTargetAndUpwardBeforeIt)
{
    EXPECT_EQ(Runlist::dropSlot(0, 1), 2);
    EXPECT_EQ(Runlist::dropSlot(2, 1), 1);
    EXPECT_FALSE(Runlist::dropSlot(2, 2));
}

TEST_F(RunlistOfFourTest, ARowDraggedDownLandsOnItsTarget)
{
    runlist.moveEntries(0, 3);

    EXPECT_EQ(rowNames(), QStringList({"lower third", "logo", "title", "clock"}));
}

TEST_F(RunlistOfFourTest, AGroupDraggedPastALayerKeepsItsLayersTogetherAndInOrder)
{
    runlist.moveEntries(1, 3);
    EXPECT_EQ(layerNames(), QStringList({"title", "logo", "panel", "name", "clock"}));

    runlist.moveEntries(2, 0);
    EXPECT_EQ(layerNames(), QStringList({"panel", "name", "title", "logo", "clock"}));
}

TEST_F(RunlistOfFourTest, ALayerDraggedOverAGroupGoesPastAllOfIt)
{
    runlist.moveEntries(0, 2);

    EXPECT_EQ(layerNames(), QStringList({"panel", "name", "title", "logo", "clock"}));
}

TEST_F(RunlistOfFourTest, ARowThatIsNoneIsNotMoved)
{
    const QStringList before = layerNames();

    runlist.moveEntries(-1, 2);
    runlist.moveEntries(4, 0);
    runlist.moveEntries(0, 5);
    runlist.moveEntries(0, -1);

    EXPECT_EQ(layerNames(), before);
}

TEST_F(RunlistTest, EveryMoveOfAMixedListKeepsAllLayersAndTheGroupsInOneBlock)
{
    QList<QUuid> ids;
    for (int number = 0; number < 7; ++number)
        ids.append(addTitle(QString::number(number)));
    const QUuid one = group({ids[1], ids[2]}, QStringLiteral("one"));
    group({ids[4], ids[5]}, QStringLiteral("other"));
    const int rows = int(runlist.entries().size());
    ASSERT_EQ(rows, 5);

    for (int source = 0; source < rows; ++source) {
        for (int target = 0; target < rows; ++target) {
            QStringList expected = rowNames();
            expected.move(source, target);
            if (const auto slot = Runlist::dropSlot(source, target))
                runlist.moveEntries(source, *slot);
            EXPECT_EQ(rowNames(), expected) << source << " to " << target;
            EXPECT_EQ(row(one).layerIDs(), QList<QUuid>({ids[2], ids[1]}));
        }
    }
}

} // namespace
} // namespace tessara
