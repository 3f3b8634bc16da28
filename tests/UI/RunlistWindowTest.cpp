#include "UI/WindowFixture.h"

#include "Models/CanvasDocument.h"

#include <QAccessible>
#include <QTest>

namespace tessara {
namespace {

class RunlistWindowTest : public WindowFixture
{
protected:
    RunlistWindowTest()
        : mainWindow(window)
    {
        logo = addTitleNamed(QStringLiteral("logo"));
        const QUuid name = addTitleNamed(QStringLiteral("name"));
        const QUuid panel = addTitleNamed(QStringLiteral("panel"));
        title = addTitleNamed(QStringLiteral("title"));
        document->groupLayers({name, panel}, QStringLiteral("lower third"));
        group = *document->presetGroupID(name);
        openRunlist();
    }

    /// By the button in the title bar; from here on the hands are on the new window.
    void openRunlist()
    {
        window = mainWindow;
        click(item(QStringLiteral("runlistButton")));
        window = runlistWindow->window();
        ASSERT_TRUE(window);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
        settle();
    }

    void startOutput()
    {
        app->startDeckLinkOutput();
        ASSERT_TRUE(app->isDeckLinkOutputRunning());
        settle();
    }

    QQuickItem *row(const QString &name) const
    {
        for (QQuickItem *candidate : visibleItems()) {
            const auto *record = candidate->property("record").value<QObject *>();
            if (candidate->objectName() == QStringLiteral("runlistRow")
                && record->property("name").toString() == name)
                return candidate;
        }
        ADD_FAILURE() << "no row " << qPrintable(name);
        return nullptr;
    }

    QQuickItem *part(const QString &rowName, const QString &name) const
    {
        return row(rowName)->findChild<QQuickItem *>(name);
    }

    QQuickItem *card(const QString &rowName) const
    {
        return part(rowName, QStringLiteral("runlistCard"));
    }

    QString state(const QString &rowName) const
    {
        return part(rowName, QStringLiteral("stateText"))->property("text").toString();
    }

    QString textOf(const QString &name) const { return item(name)->property("text").toString(); }
    bool isHidden(const QUuid &id) const { return document->layer(id)->isHidden(); }
    void hide(const QUuid &id)
    {
        document->setLayerHidden(id, true);
        settle();
    }
    void hideAll()
    {
        for (const QUuid &id : document->layerOrder())
            document->setLayerHidden(id, true);
        settle();
    }

    QQuickWindow *mainWindow;
    QUuid logo;
    QUuid title;
    QUuid group;
};

TEST_F(RunlistWindowTest, ItFloatsAboveTheMainWindowInItsOwnSize)
{
    EXPECT_EQ(window->title(), QStringLiteral("Runlist"));
    EXPECT_TRUE(window->flags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(window->size(), QSize(380, 580));
    EXPECT_EQ(window->minimumSize(), QSize(340, 420));
    keepPicture(QStringLiteral("runlist-stopped"));
}

TEST_F(RunlistWindowTest, AnotherPressOfTheButtonBringsTheSameWindowForward)
{
    const QQuickWindow *first = window;

    openRunlist();

    EXPECT_EQ(window, first);
}

TEST_F(RunlistWindowTest, AClickTakesAtOnce)
{
    startOutput();

    click(card(QStringLiteral("title")));
    EXPECT_TRUE(until([&] { return isHidden(title); }));
    settle();
    EXPECT_EQ(state(QStringLiteral("title")), QStringLiteral("OFF"));
    keepPicture(QStringLiteral("runlist-direct"));

    click(card(QStringLiteral("title")));
    EXPECT_FALSE(isHidden(title));
    EXPECT_EQ(state(QStringLiteral("title")), QStringLiteral("ON AIR"));
}

TEST_F(RunlistWindowTest, TheHeadCountsRowsOnAir)
{
    EXPECT_EQ(textOf(QStringLiteral("onAirCount")), QStringLiteral("3 items on air"));
    hide(title);
    hide(logo);
    EXPECT_EQ(textOf(QStringLiteral("onAirCount")), QStringLiteral("1 item on air"));
}

TEST_F(RunlistWindowTest, InCueModeClicksMarkAndOneTakeGoesForAll)
{
    hide(logo);
    startOutput();
    click(item(QStringLiteral("cueMode")));

    click(card(QStringLiteral("logo")));
    click(card(QStringLiteral("title")));
    click(card(QStringLiteral("lower third")));
    EXPECT_EQ(state(QStringLiteral("logo")), QStringLiteral("CUED IN"));
    EXPECT_EQ(state(QStringLiteral("title")), QStringLiteral("CUED OUT"));
    EXPECT_EQ(textOf(QStringLiteral("cuedCount")), QStringLiteral("3 items"));
    EXPECT_FALSE(document->takes().isInTransition(title));
    keepPicture(QStringLiteral("runlist-cue-mode"));

    click(item(QStringLiteral("takeAllCues")));

    EXPECT_TRUE(document->cueTargets().isEmpty());
    EXPECT_TRUE(until([&] { return isHidden(title) && !isHidden(logo); }));
    settle();
    EXPECT_EQ(textOf(QStringLiteral("cuedCount")), QStringLiteral("0 items"));
    EXPECT_FALSE(item(QStringLiteral("takeAllCues"))->isEnabled());
}

TEST_F(RunlistWindowTest, ASecondClickInCueModeEndsTheCue)
{
    click(item(QStringLiteral("cueMode")));

    click(card(QStringLiteral("title")));
    EXPECT_EQ(textOf(QStringLiteral("cuedCount")), QStringLiteral("1 item"));
    click(card(QStringLiteral("title")));

    EXPECT_TRUE(document->cueTargets().isEmpty());
}

TEST_F(RunlistWindowTest, OpenedAgainCueModeIsOffAndTheCuesAreStillThere)
{
    click(item(QStringLiteral("cueMode")));
    click(card(QStringLiteral("title")));
    EXPECT_TRUE(item(QStringLiteral("takeAllCues"))->isVisible());

    window->close();
    ASSERT_TRUE(until([this] { return !runlistWindow->window(); }));
    openRunlist();

    EXPECT_FALSE(item(QStringLiteral("cueMode"))->property("isOn").toBool());
    EXPECT_FALSE(item(QStringLiteral("takeAllCues"))->isVisible());
    EXPECT_EQ(state(QStringLiteral("title")), QStringLiteral("CUED OUT"));
}

TEST_F(RunlistWindowTest, ALockedRowIgnoresClicksInBothModes)
{
    click(part(QStringLiteral("title"), QStringLiteral("lockButton")));
    ASSERT_TRUE(document->layer(title)->isLocked());

    click(card(QStringLiteral("title")));
    click(item(QStringLiteral("cueMode")));
    click(card(QStringLiteral("title")));

    EXPECT_FALSE(document->takes().isInTransition(title));
    EXPECT_TRUE(document->cueTargets().isEmpty());
    EXPECT_EQ(row(QStringLiteral("title"))->property("help").toString(),
              QStringLiteral("Runlist is locked"));
}

TEST_F(RunlistWindowTest, AllOutLeavesLockedLayersOnAir)
{
    document->setLayerLocked(logo, true);
    settle();

    click(item(QStringLiteral("allOut")));

    EXPECT_TRUE(until([&] { return isHidden(title); }));
    settle();
    EXPECT_FALSE(isHidden(logo));
    EXPECT_EQ(state(QStringLiteral("lower third")), QStringLiteral("OFF"));
    EXPECT_EQ(state(QStringLiteral("logo")), QStringLiteral("ON AIR"));
}

TEST_F(RunlistWindowTest, AllOutIsOutOfReachWithNothingOnAir)
{
    hideAll();

    EXPECT_FALSE(item(QStringLiteral("allOut"))->isEnabled());
    EXPECT_EQ(textOf(QStringLiteral("onAirCount")), QStringLiteral("0 items on air"));
}

TEST_F(RunlistWindowTest, TheKeysWalkTheRowsAndTake)
{
    press(Qt::Key_Space);
    EXPECT_FALSE(document->takes().isInTransition(title));

    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    keepPicture(QStringLiteral("runlist-keys"));
    press(Qt::Key_Space);
    EXPECT_TRUE(until([&] { return isHidden(title); }));

    press(Qt::Key_Return);
    EXPECT_FALSE(isHidden(title));
}

TEST_F(RunlistWindowTest, AKeyOnALockTakesNoRow)
{
    press(Qt::Key_Down);
    part(QStringLiteral("logo"), QStringLiteral("lockButton"))
        ->forceActiveFocus(Qt::TabFocusReason);

    press(Qt::Key_Return);

    EXPECT_FALSE(document->takes().isInTransition(title));
    EXPECT_FALSE(document->takes().isInTransition(logo));
}

TEST_F(RunlistWindowTest, NoKeyGoesForAllCuesUnlessItsButtonHasTheFocus)
{
    click(item(QStringLiteral("cueMode")));
    click(card(QStringLiteral("title")));

    press(Qt::Key_Return);
    press(Qt::Key_Enter);

    EXPECT_TRUE(document->cueTargets().contains(title));
}

TEST_F(RunlistWindowTest, TheMenusTakeLockAndDelete)
{
    click(card(QStringLiteral("title")), Qt::RightButton);
    EXPECT_TRUE(itemWithText(QStringLiteral("Lock Layer")));
    keepPicture(QStringLiteral("runlist-menu"));
    click(itemWithText(QStringLiteral("Take Out")));
    EXPECT_TRUE(until([&] { return isHidden(title); }));

    click(card(QStringLiteral("lower third")), Qt::RightButton);
    EXPECT_TRUE(itemWithText(QStringLiteral("Take Preset Out")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Ungroup")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Delete Preset")));
    click(itemWithText(QStringLiteral("Lock Preset")));
    for (const QUuid &id : document->layerIDsInPresetGroup(group))
        EXPECT_TRUE(document->layer(id)->isLocked());

    click(card(QStringLiteral("title")), Qt::RightButton);
    EXPECT_TRUE(itemWithText(QStringLiteral("Take In")));
    click(itemWithText(QStringLiteral("Delete")));
    EXPECT_FALSE(document->layer(title));
}

TEST_F(RunlistWindowTest, RowsAreLargeEnoughForAHandThatDoesNotLook)
{
    EXPECT_GE(row(QStringLiteral("title"))->height(), 40);
    EXPECT_GE(item(QStringLiteral("allOut"))->height(), 36);
}

TEST_F(RunlistWindowTest, ARowTellsItsStateFirstAndWhatAClickWouldDo)
{
    const auto nameOf = [this](const QString &rowName) {
        return QAccessible::queryAccessibleInterface(row(rowName))->text(QAccessible::Name);
    };

    EXPECT_EQ(nameOf(QStringLiteral("title")),
              QStringLiteral("ON AIR, title, TEXT, Click to take OFF AIR"));
    hide(title);
    EXPECT_EQ(nameOf(QStringLiteral("title")),
              QStringLiteral("OFF, title, TEXT, Click to take ON AIR"));
}

TEST_F(RunlistWindowTest, AnEmptyShowSaysWhereLayersComeFrom)
{
    for (const QUuid &id : document->layerOrder())
        document->removeLayer(id);
    window->resize(window->minimumSize());
    settle();

    EXPECT_TRUE(itemWithText(QStringLiteral("No Layers")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Add layers in the main window first")));
    keepPicture(QStringLiteral("runlist-empty"));
}

} // namespace
} // namespace tessara
