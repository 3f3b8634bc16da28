#include "UI/WindowFixture.h"

#include "Models/Runlist.h"

#include <QTest>

namespace tessara {
namespace {

/// What a menu or a drag was begun on stays its own, whatever the show does meanwhile.
class OpenMenuTest : public WindowFixture
{
protected:
    OpenMenuTest()
    {
        clockID = addTitleNamed(QStringLiteral("clock"));
        logo = addTitleNamed(QStringLiteral("logo"));
        title = addTitleNamed(QStringLiteral("title"));
        settle();
    }

    QQuickItem *nameIn(const QString &rowName) const
    {
        return inRow(rowName, QStringLiteral("entryName"));
    }
    QQuickItem *card(const QString &rowName) const
    {
        return inRow(rowName, QStringLiteral("runlistCard"));
    }
    QUuid group(const QList<QUuid> &ids)
    {
        document->groupLayers(ids, QStringLiteral("group"));
        settle();
        return *document->presetGroupID(ids.first());
    }
    void openRunlist()
    {
        runlistWindow->show();
        window = runlistWindow->window();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
        settle();
    }
    /// As when its auto-out comes.
    void leaveByItself(const QUuid &id)
    {
        document->takes().setLayerOnAir(id, false);
        ASSERT_TRUE(until([&] { return document->layer(id)->isHidden(); }));
        settle();
    }
    void choose(const QString &text)
    {
        QQuickItem *action = itemWithText(text);
        ASSERT_TRUE(action) << qPrintable(text);
        click(action);
    }
    bool isMenuOpen() const { return itemWithText(QStringLiteral("Delete")) != nullptr; }
    bool exists(const QUuid &id) const { return document->layer(id) != nullptr; }
    QString rows() const
    {
        QStringList names;
        for (const VirtualLayerEntry &entry : app->runlist()->entries())
            names.append(entry.name());
        return names.join(QLatin1Char(' '));
    }

    QUuid clockID;
    QUuid logo;
    QUuid title;
};

TEST_F(OpenMenuTest, TakeOutStaysTakeOutWhenTheLayerLeavesByItself)
{
    openRunlist();
    click(card(QStringLiteral("title")), Qt::RightButton);

    leaveByItself(title);
    keepPicture(QStringLiteral("menu-keeps-its-verb"));
    choose(QStringLiteral("Take Out"));

    EXPECT_TRUE(document->layer(title)->isHidden());
    EXPECT_EQ(document->layerVisibility().value(title), 0);
}

TEST_F(OpenMenuTest, TakeInStaysTakeInWhenTheLayerComesByItself)
{
    document->setLayerHidden(title, true);
    settle();
    openRunlist();
    click(card(QStringLiteral("title")), Qt::RightButton);

    document->takes().setLayerOnAir(title, true, {.useRunTransition = false});
    settle();
    choose(QStringLiteral("Take In"));
    settle();

    EXPECT_FALSE(document->layer(title)->isHidden());
    EXPECT_EQ(document->layerVisibility().value(title), 1);
}

TEST_F(OpenMenuTest, TakeGroupOutStaysTakeGroupOutInThePanel)
{
    group({logo, title});
    window->findChild<QQuickItem *>(QStringLiteral("layersPanel"))
        ->setProperty("mode", QStringLiteral("runlist"));
    settle();
    click(card(QStringLiteral("group")), Qt::RightButton);

    leaveByItself(logo);
    leaveByItself(title);
    choose(QStringLiteral("Take Group Out Now"));

    EXPECT_TRUE(document->layer(logo)->isHidden());
    EXPECT_TRUE(document->layer(title)->isHidden());
}

TEST_F(OpenMenuTest, LockStaysLock)
{
    openRunlist();
    click(card(QStringLiteral("title")), Qt::RightButton);

    document->setLayerLocked(title, true);
    settle();
    choose(QStringLiteral("Lock Layer"));

    EXPECT_TRUE(document->layer(title)->isLocked());
}

TEST_F(OpenMenuTest, ItClosesWhenItsLayerGoes)
{
    click(nameIn(QStringLiteral("logo")), Qt::RightButton);
    ASSERT_TRUE(isMenuOpen());

    document->removeLayer(clockID);
    settle();
    EXPECT_TRUE(isMenuOpen());

    document->removeLayer(logo);
    settle();
    EXPECT_FALSE(isMenuOpen());
    keepPicture(QStringLiteral("menu-closed"));
}

TEST_F(OpenMenuTest, ItClosesWhenItsGroupEnds)
{
    const QUuid both = group({logo, title});
    openRunlist();
    click(card(QStringLiteral("group")), Qt::RightButton);
    ASSERT_TRUE(itemWithText(QStringLiteral("Delete Preset")));

    document->ungroupPreset(both);
    settle();

    EXPECT_FALSE(itemWithText(QStringLiteral("Delete Preset")));
}

TEST_F(OpenMenuTest, ItStandsStillAndKeepsItsRowWhileRowsComeAndGo)
{
    click(nameIn(QStringLiteral("logo")), Qt::RightButton);
    const QPointF before = itemWithText(QStringLiteral("Delete"))->mapToScene({});

    addTitleNamed(QStringLiteral("new"));
    settle();
    EXPECT_EQ(itemWithText(QStringLiteral("Delete"))->mapToScene({}), before);

    choose(QStringLiteral("Delete"));
    EXPECT_EQ(rows(), QStringLiteral("new title clock"));
}

TEST_F(OpenMenuTest, SeveralAreDeletedAsTheyWereSelectedAtTheOpening)
{
    document->setSelectedLayerIDs({logo, title});
    click(nameIn(QStringLiteral("title")), Qt::RightButton);

    addTitleNamed(QStringLiteral("new")); // and is selected
    settle();
    choose(QStringLiteral("Delete 2 Layers"));

    EXPECT_EQ(rows(), QStringLiteral("new clock"));
}

TEST_F(OpenMenuTest, ItClosesWhenOneOfTheSelectedGoes)
{
    document->setSelectedLayerIDs({logo, title});
    click(nameIn(QStringLiteral("title")), Qt::RightButton);
    ASSERT_TRUE(itemWithText(QStringLiteral("Delete 2 Layers")));

    document->removeLayer(logo);
    settle();

    EXPECT_FALSE(itemWithText(QStringLiteral("Duplicate")));
}

TEST_F(OpenMenuTest, TheGroupSheetGroupsWhatItWasOpenedOn)
{
    document->setSelectedLayerIDs({logo, title});
    click(nameIn(QStringLiteral("title")), Qt::RightButton);
    choose(QStringLiteral("Group 2 Layers"));

    addTitleNamed(QStringLiteral("new"));
    settle();
    type(QStringLiteral("Both"));
    press(Qt::Key_Return);

    EXPECT_EQ(rows(), QStringLiteral("new Both clock"));
}

TEST_F(OpenMenuTest, TheGroupSheetClosesWhenOneOfItsLayersGoes)
{
    document->setSelectedLayerIDs({logo, title});
    click(nameIn(QStringLiteral("title")), Qt::RightButton);
    choose(QStringLiteral("Group 2 Layers"));
    ASSERT_TRUE(itemWithText(QStringLiteral("Group Layers")));

    document->removeLayer(logo);
    settle();

    EXPECT_FALSE(itemWithText(QStringLiteral("Group Layers")));
}

// Drags, names and rows under the keys

TEST_F(OpenMenuTest, ADragEndsWithoutAMoveWhenARowComesOrGoes)
{
    dragWithoutRelease(nameIn(QStringLiteral("title")), 42);
    ASSERT_TRUE(item(QStringLiteral("dropLine"))->isVisible());
    addTitleNamed(QStringLiteral("new"));
    settle();
    EXPECT_FALSE(item(QStringLiteral("dropLine"))->isVisible());
    release();
    EXPECT_EQ(rows(), QStringLiteral("new title logo clock"));

    dragWithoutRelease(nameIn(QStringLiteral("title")), 42);
    document->removeLayer(clockID);
    settle();
    release();
    EXPECT_EQ(rows(), QStringLiteral("new title logo"));
}

TEST_F(OpenMenuTest, ARenameEndsWithItsLayer)
{
    doubleClick(nameIn(QStringLiteral("logo")));
    type(QStringLiteral("Bug"));

    document->removeLayer(logo);
    click(nameIn(QStringLiteral("clock")));

    EXPECT_EQ(document->selectedLayerIDs(), QSet<QUuid>{clockID});
    EXPECT_EQ(rows(), QStringLiteral("title clock"));
}

TEST_F(OpenMenuTest, TheKeysStayWithTheirRow)
{
    openRunlist();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    addTitleNamed(QStringLiteral("new"));
    settle();

    press(Qt::Key_Space);

    EXPECT_TRUE(until([&] { return document->layer(logo)->isHidden(); }));
}

TEST_F(OpenMenuTest, TheKeysDoNotGoOnToTheNextRowWhenTheirsGoes)
{
    openRunlist();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    document->removeLayer(logo);
    settle();
    keepPicture(QStringLiteral("keys-row-gone"));

    press(Qt::Key_Space);
    press(Qt::Key_Return);
    settle();
    EXPECT_FALSE(document->layer(title)->isHidden());
    EXPECT_FALSE(document->layer(clockID)->isHidden());

    press(Qt::Key_Menu);
    EXPECT_FALSE(isMenuOpen());

    press(Qt::Key_Up);
    press(Qt::Key_Space);
    EXPECT_TRUE(until([&] { return document->layer(title)->isHidden(); }));
}

TEST_F(OpenMenuTest, TheKeysOfTheLayersListDoNotGoOnEither)
{
    item(QStringLiteral("layersList"))->forceActiveFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    document->removeLayer(logo);
    document->setSelectedLayerIDs({});
    settle();

    press(Qt::Key_Space);

    EXPECT_TRUE(document->selectedLayerIDs().isEmpty());
}

} // namespace
} // namespace tessara
