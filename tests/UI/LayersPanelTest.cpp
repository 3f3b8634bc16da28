#include "UI/WindowFixture.h"

#include "Models/CanvasDocument.h"
#include "Models/Runlist.h"

#include <algorithm>

namespace tessara {
namespace {

class LayersPanelTest : public WindowFixture
{
protected:
    /// A group of two titles of that name.
    QUuid addGroup(const QString &name)
    {
        const QUuid one = addTitleNamed(name + QStringLiteral(" 1"));
        const QUuid other = addTitleNamed(name + QStringLiteral(" 2"));
        document->groupLayers({one, other}, name);
        return *document->presetGroupID(one);
    }

    QQuickItem *nameIn(const QString &rowName) const
    {
        return inRow(rowName, QStringLiteral("entryName"));
    }

    QStringList rowNames() const
    {
        QStringList names;
        for (const VirtualLayerEntry &entry : app->runlist()->entries())
            names.append(entry.name());
        return names;
    }

    QString rows() const { return rowNames().join(QLatin1Char(' ')); }
    QSet<QUuid> selection() const { return document->selectedLayerIDs(); }

    void chooseInMenu(const QString &text)
    {
        QQuickItem *action = itemWithText(text);
        ASSERT_TRUE(action) << qPrintable(text);
        click(action);
    }
};

class LayersPanelOfThreeTest : public LayersPanelTest
{
protected:
    LayersPanelOfThreeTest()
    {
        clockID = addTitleNamed(QStringLiteral("clock"));
        logo = addTitleNamed(QStringLiteral("logo"));
        title = addTitleNamed(QStringLiteral("title"));
        settle();
    }

    QUuid clockID;
    QUuid logo;
    QUuid title;
};

TEST_F(LayersPanelOfThreeTest, TheHeadCountsTheRows)
{
    addGroup(QStringLiteral("group"));
    settle();

    EXPECT_TRUE(itemWithText(QStringLiteral("LAYERS")));
    EXPECT_EQ(item(QStringLiteral("panelCount"))->property("text").toString(), QStringLiteral("4"));
    EXPECT_TRUE(itemWithText(QStringLiteral("2 layers")));
}

TEST_F(LayersPanelOfThreeTest, AClickSelectsOneAndWithControlOneMoreOrLess)
{
    click(nameIn(QStringLiteral("logo")));
    EXPECT_EQ(selection(), QSet<QUuid>{logo});

    click(nameIn(QStringLiteral("clock")), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(selection(), (QSet<QUuid>{logo, clockID}));

    click(nameIn(QStringLiteral("logo")), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(selection(), QSet<QUuid>{clockID});
}

TEST_F(LayersPanelOfThreeTest, TheEyeHidesAndShowsAtOnce)
{
    click(inRow(QStringLiteral("logo"), QStringLiteral("airCell")));
    EXPECT_TRUE(document->layer(logo)->isHidden());
    EXPECT_EQ(document->layerVisibility().value(logo), 0);

    click(inRow(QStringLiteral("logo"), QStringLiteral("airCell")));
    EXPECT_FALSE(document->layer(logo)->isHidden());
    EXPECT_EQ(document->layerVisibility().value(logo), 1);
}

TEST_F(LayersPanelOfThreeTest, TheLockLocksAndTheInspectorSaysSo)
{
    click(nameIn(QStringLiteral("logo")));
    click(inRow(QStringLiteral("logo"), QStringLiteral("lockButton")));

    EXPECT_TRUE(document->layer(logo)->isLocked());
    EXPECT_TRUE(itemWithText(QStringLiteral("Layer is locked")));
}

TEST_F(LayersPanelOfThreeTest, EyeAndLockOfAGroupReachAllItsLayers)
{
    const QUuid group = addGroup(QStringLiteral("group"));
    settle();
    const auto each = [&](auto isSo) {
        const QList<QUuid> ids = document->layerIDsInPresetGroup(group);
        return std::all_of(ids.begin(), ids.end(),
                           [&](const QUuid &id) { return isSo(*document->layer(id)); });
    };

    click(inRow(QStringLiteral("group"), QStringLiteral("airCell")));
    EXPECT_TRUE(each([](const Layer &layer) { return layer.isHidden(); }));
    click(inRow(QStringLiteral("group"), QStringLiteral("airCell")));
    EXPECT_TRUE(each([](const Layer &layer) { return !layer.isHidden(); }));
    click(inRow(QStringLiteral("group"), QStringLiteral("lockButton")));
    EXPECT_TRUE(each([](const Layer &layer) { return layer.isLocked(); }));
    click(inRow(QStringLiteral("group"), QStringLiteral("lockButton")));
    EXPECT_TRUE(each([](const Layer &layer) { return !layer.isLocked(); }));
}

// Renaming

TEST_F(LayersPanelOfThreeTest, ADoubleClickRenamesAndReturnKeepsTheName)
{
    doubleClick(nameIn(QStringLiteral("logo")));
    keepPicture(QStringLiteral("panel-rename"));
    type(QStringLiteral("Bug"));
    press(Qt::Key_Return);

    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("Bug"));
    EXPECT_TRUE(nameIn(QStringLiteral("Bug")));
}

TEST_F(LayersPanelOfThreeTest, EscapeDropsTheNewName)
{
    doubleClick(nameIn(QStringLiteral("logo")));
    type(QStringLiteral("Bug"));
    press(Qt::Key_Escape);

    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("logo"));
    EXPECT_TRUE(nameIn(QStringLiteral("logo")));
}

TEST_F(LayersPanelOfThreeTest, LeavingTheFieldKeepsTheNameAndTheClickDoesNoMore)
{
    click(nameIn(QStringLiteral("logo")));
    doubleClick(nameIn(QStringLiteral("logo")));
    type(QStringLiteral("Bug"));

    click(nameIn(QStringLiteral("title")));

    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("Bug"));
    EXPECT_EQ(selection(), QSet<QUuid>{logo});
}

TEST_F(LayersPanelOfThreeTest, AClickOnTheCanvasKeepsTheName)
{
    doubleClick(nameIn(QStringLiteral("logo")));
    type(QStringLiteral("Bug"));

    click(item(QStringLiteral("canvas")));

    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("Bug"));
}

TEST_F(LayersPanelOfThreeTest, ABlankNameChangesNothingAndTheRowIsDone)
{
    doubleClick(nameIn(QStringLiteral("logo")));
    press(Qt::Key_Space);
    press(Qt::Key_Space);
    press(Qt::Key_Return);

    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("logo"));
    EXPECT_TRUE(nameIn(QStringLiteral("logo")));
}

TEST_F(LayersPanelOfThreeTest, ADragEndsARenameWithoutTheName)
{
    doubleClick(nameIn(QStringLiteral("logo")));
    type(QStringLiteral("Bug"));

    drag(nameIn(QStringLiteral("title")), 10);

    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("logo"));
    EXPECT_TRUE(nameIn(QStringLiteral("logo")));
}

// Reordering

TEST_F(LayersPanelOfThreeTest, ADragOf20PointsMovesNothing)
{
    drag(nameIn(QStringLiteral("title")), 20);

    EXPECT_EQ(rows(), QStringLiteral("title logo clock"));
}

TEST_F(LayersPanelOfThreeTest, ADragOf22PointsMovesByOne)
{
    drag(nameIn(QStringLiteral("title")), 22);
    EXPECT_EQ(rows(), QStringLiteral("logo title clock"));

    drag(nameIn(QStringLiteral("clock")), -22);
    EXPECT_EQ(rows(), QStringLiteral("logo clock title"));
}

TEST_F(LayersPanelOfThreeTest, ADragBeyondTheEndStopsAtTheLastRow)
{
    drag(nameIn(QStringLiteral("title")), 2000);
    EXPECT_EQ(rows(), QStringLiteral("logo clock title"));

    drag(nameIn(QStringLiteral("title")), -2000);
    EXPECT_EQ(rows(), QStringLiteral("title logo clock"));
}

TEST_F(LayersPanelOfThreeTest, WhileARowIsDraggedALineShowsItsSlot)
{
    dragWithoutRelease(nameIn(QStringLiteral("title")), 30);
    keepPicture(QStringLiteral("panel-drag"));

    const QQuickItem *line = item(QStringLiteral("dropLine"));
    EXPECT_TRUE(line->isVisible());
    EXPECT_NEAR(line->y() + line->height() / 2, 2 * Runlist::rowPitch, 2);
    EXPECT_EQ(rows(), QStringLiteral("title logo clock"));

    release();
    EXPECT_FALSE(line->isVisible());
    EXPECT_EQ(rows(), QStringLiteral("logo title clock"));
}

TEST_F(LayersPanelOfThreeTest, AGroupIsDraggedPastALayerAsABlock)
{
    addGroup(QStringLiteral("group"));
    settle();
    ASSERT_EQ(rows(), QStringLiteral("group title logo clock"));

    drag(nameIn(QStringLiteral("group")), 42);

    EXPECT_EQ(rows(), QStringLiteral("title group logo clock"));
    QStringList names;
    for (const QUuid &id : document->layerOrder())
        names.prepend(document->layer(id)->name());
    EXPECT_EQ(names.join(QLatin1Char(',')), QStringLiteral("title,group 2,group 1,logo,clock"));
}

// Menus and groups

TEST_F(LayersPanelOfThreeTest, TheMenuOfALayerDuplicatesAndDeletes)
{
    click(nameIn(QStringLiteral("logo")), Qt::RightButton);
    EXPECT_FALSE(itemWithText(QStringLiteral("Group 1 Layers")));
    chooseInMenu(QStringLiteral("Duplicate"));
    EXPECT_EQ(document->layerOrder().size(), 4);

    click(nameIn(QStringLiteral("logo")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Delete"));
    EXPECT_FALSE(document->layer(logo));
    EXPECT_EQ(document->layerOrder().size(), 3);
}

TEST_F(LayersPanelOfThreeTest, SeveralSelectedLayersAreDeletedTogether)
{
    document->setSelectedLayerIDs({logo, title});

    click(nameIn(QStringLiteral("title")), Qt::RightButton);
    keepPicture(QStringLiteral("panel-menu"));
    chooseInMenu(QStringLiteral("Delete 2 Layers"));

    EXPECT_EQ(rows(), QStringLiteral("clock"));
}

TEST_F(LayersPanelOfThreeTest, SeveralSelectedLayersAreGroupedUnderAName)
{
    document->setSelectedLayerIDs({logo, title});
    click(nameIn(QStringLiteral("title")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Group 2 Layers"));
    ASSERT_TRUE(until([this] { return itemWithText(QStringLiteral("Group Layers")) != nullptr; }));
    EXPECT_TRUE(itemWithText(QStringLiteral("Give this group a name")));
    keepPicture(QStringLiteral("group-sheet"));

    type(QStringLiteral("  Lower third "));
    press(Qt::Key_Return);

    EXPECT_EQ(rowNames(), QStringList({"Lower third", "clock"}));
    EXPECT_FALSE(itemWithText(QStringLiteral("Group Layers")));
}

TEST_F(LayersPanelOfThreeTest, ABlankGroupNameLeavesTheSheetOpenAndGroupsNothing)
{
    document->setSelectedLayerIDs({logo, title});
    click(nameIn(QStringLiteral("title")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Group 2 Layers"));
    settle();

    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_TRUE(itemWithText(QStringLiteral("Group Layers")));
    EXPECT_FALSE(item(QStringLiteral("groupConfirm"))->isEnabled());
    EXPECT_EQ(rows(), QStringLiteral("title logo clock"));

    click(item(QStringLiteral("groupCancel")));
    EXPECT_FALSE(itemWithText(QStringLiteral("Group Layers")));
    EXPECT_EQ(rows(), QStringLiteral("title logo clock"));
}

TEST_F(LayersPanelOfThreeTest, AGroupRowSelectsItsGroupAndItsMenuEndsIt)
{
    const QUuid group = addGroup(QStringLiteral("group"));
    document->setSelectedLayerIDs({logo});
    settle();

    click(nameIn(QStringLiteral("group")));
    EXPECT_EQ(document->selectedPresetGroupID(), group);
    keepPicture(QStringLiteral("panel-group"));
    click(nameIn(QStringLiteral("group")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Ungroup"));
    EXPECT_EQ(rowNames().size(), 5);

    const QUuid other = addGroup(QStringLiteral("other"));
    settle();
    click(nameIn(QStringLiteral("other")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Delete Group"));
    EXPECT_TRUE(document->layerIDsInPresetGroup(other).isEmpty());
    EXPECT_EQ(rowNames().size(), 5);
}

// The panel as a runlist

class PanelRunlistTest : public LayersPanelOfThreeTest
{
protected:
    PanelRunlistTest()
    {
        panel = window->findChild<QQuickItem *>(QStringLiteral("layersPanel"));
        panel->setProperty("mode", QStringLiteral("runlist"));
        settle();
    }

    void set(const char *name) { panel->setProperty(name, true); }
    QQuickItem *card(const QString &row) { return inRow(row, QStringLiteral("runlistCard")); }

    QQuickItem *panel = nullptr;
};

TEST_F(PanelRunlistTest, TheHeadCountsTheLayersOnAir)
{
    document->setLayerHidden(title, true);
    settle();

    EXPECT_TRUE(itemWithText(QStringLiteral("RUNLIST")));
    EXPECT_EQ(item(QStringLiteral("panelCount"))->property("text").toString(),
              QStringLiteral("2 ON AIR"));
    keepPicture(QStringLiteral("panel-runlist"));
}

TEST_F(PanelRunlistTest, AClickTakesAndInCueModeMarks)
{
    click(card(QStringLiteral("title")));
    EXPECT_TRUE(until([&] { return document->layer(title)->isHidden(); }));

    set("requireTakeBeforeOnAir");
    settle();
    click(card(QStringLiteral("logo")));
    EXPECT_EQ(document->cueTargets(), (QMap<QUuid, bool>{{logo, false}}));
}

TEST_F(PanelRunlistTest, ALockedPanelIgnoresClicksAndIsDrawnFainter)
{
    set("isRunlistLocked");
    settle();

    click(card(QStringLiteral("title")));

    EXPECT_FALSE(document->takes().isInTransition(title));
    EXPECT_EQ(card(QStringLiteral("title"))->parentItem()->opacity(), 0.65);
}

TEST_F(PanelRunlistTest, TheMenuTakesNow)
{
    click(card(QStringLiteral("title")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Take Out Now"));
    EXPECT_TRUE(until([&] { return document->layer(title)->isHidden(); }));

    click(card(QStringLiteral("title")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Take In Now"));
    EXPECT_FALSE(document->layer(title)->isHidden());
}

TEST_F(PanelRunlistTest, TheMenuOfAGroupTakesNow)
{
    const QUuid group = addGroup(QStringLiteral("group"));
    settle();

    click(card(QStringLiteral("group")), Qt::RightButton);
    chooseInMenu(QStringLiteral("Take Group Out Now"));
    const QUuid one = document->layerIDsInPresetGroup(group).first();
    EXPECT_TRUE(until([&] { return document->layer(one)->isHidden(); }));

    click(card(QStringLiteral("group")), Qt::RightButton);
    EXPECT_TRUE(itemWithText(QStringLiteral("Take Group In Now")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Delete Group")));
}

} // namespace
} // namespace tessara
