#include "UI/WindowFixture.h"

#include "Base/ManualClock.h"

namespace tessara {
namespace {

class DeleteKeyOfADocumentTest : public testing::Test
{
protected:
    bool exists(const QUuid &id) const { return document.layer(id) != nullptr; }

    ManualClock clock;
    CanvasDocument document{clock};
    DeleteKey key{document};
    QUuid one = document.addTextLayer()->id();
    QUuid other = document.addTextLayer()->id();
    QUuid front = document.addTextLayer()->id();
};

TEST_F(DeleteKeyOfADocumentTest, WhatIsLeftOfTheChosenIsStillChosen)
{
    document.setSelectedLayerIDs({one, other});
    document.removeLayer(one);

    key.press();

    EXPECT_FALSE(exists(other));
    EXPECT_TRUE(exists(front));
}

TEST_F(DeleteKeyOfADocumentTest, WhatTheDocumentSelectsByItselfStaysUntilItIsChosen)
{
    document.setSelectedLayerIDs({});
    document.removeLayer(one);
    ASSERT_EQ(document.selectedLayerIDs(), QSet<QUuid>{front});
    key.press();
    EXPECT_TRUE(exists(front));
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{front});

    document.setSelectedLayerIDs({other});
    document.setSelectedLayerIDs({front});
    key.press();
    EXPECT_FALSE(exists(front));
}

TEST_F(DeleteKeyOfADocumentTest, LockedLayersStayAndStaySelected)
{
    document.setLayerLocked(other, true);
    document.setSelectedLayerIDs({one, other});

    key.press();
    key.press();

    EXPECT_FALSE(exists(one));
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{other});
    EXPECT_TRUE(exists(front));
}

class DeleteKeyTest : public WindowFixture
{
protected:
    DeleteKeyTest()
    {
        clockID = addTitleNamed(QStringLiteral("clock"));
        logo = addTitleNamed(QStringLiteral("logo"));
        title = addTitleNamed(QStringLiteral("title"));
        settle();
    }

    bool exists(const QUuid &id) const { return document->layer(id) != nullptr; }
    qsizetype count() const { return document->layerOrder().size(); }
    void clickRow(const QString &name) { click(inRow(name, QStringLiteral("entryName"))); }

    QUuid clockID;
    QUuid logo;
    QUuid title;
};

TEST_F(DeleteKeyTest, TheRowThatWasClickedGoesAndTheNextPressTakesNoOther)
{
    clickRow(QStringLiteral("logo"));

    press(Qt::Key_Delete);
    EXPECT_FALSE(exists(logo));
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(document->selectedLayerIDs().isEmpty());
    keepPicture(QStringLiteral("delete-key"));

    press(Qt::Key_Delete);
    EXPECT_EQ(count(), 2);

    clickRow(QStringLiteral("clock"));
    press(Qt::Key_Delete);
    EXPECT_FALSE(exists(clockID));
    EXPECT_EQ(count(), 1);
}

TEST_F(DeleteKeyTest, ALayerThatIsSelectedInThePlaceOfAnotherStays)
{
    clickRow(QStringLiteral("logo"));
    click(inRow(QStringLiteral("logo"), QStringLiteral("entryName")), Qt::RightButton);
    click(itemWithText(QStringLiteral("Delete")));
    ASSERT_EQ(document->selectedLayerIDs(), QSet<QUuid>{title});

    click(item(QStringLiteral("layersList"))); // below the rows
    item(QStringLiteral("layersList"))->forceActiveFocus();
    press(Qt::Key_Delete);
    EXPECT_TRUE(exists(title));

    clickRow(QStringLiteral("title"));
    press(Qt::Key_Delete);
    EXPECT_FALSE(exists(title));
}

TEST_F(DeleteKeyTest, ALockedLayerStays)
{
    document->setLayerLocked(title, true);
    document->setSelectedLayerIDs({title, logo});
    settle();
    item(QStringLiteral("layersList"))->forceActiveFocus();

    press(Qt::Key_Delete);
    press(Qt::Key_Delete);

    EXPECT_TRUE(exists(title));
    EXPECT_FALSE(exists(logo));
    EXPECT_TRUE(exists(clockID));
}

TEST_F(DeleteKeyTest, ItActsInTheListAndOnTheCanvasAlone)
{
    for (const char *elsewhere : {"toolButton", "undoButton", "outputButton"}) {
        item(QLatin1String(elsewhere))->forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Delete);
    }
    ASSERT_EQ(count(), 3);
    inRow(QStringLiteral("logo"), QStringLiteral("airCell"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Delete);
    EXPECT_EQ(count(), 3);

    click(item(QStringLiteral("canvas")));
    press(Qt::Key_Delete);
    EXPECT_EQ(count(), 2);
}

TEST_F(DeleteKeyTest, ItActsInAListThatTheKeysHaveWalked)
{
    click(inRow(QStringLiteral("logo"), QStringLiteral("entryName")));
    item(QStringLiteral("layersList"))->forceActiveFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Delete);

    EXPECT_EQ(count(), 2);
    EXPECT_FALSE(document->layer(logo));
}

TEST_F(DeleteKeyTest, InANameItBelongsToTheName)
{
    doubleClick(inRow(QStringLiteral("logo"), QStringLiteral("entryName")));
    press(Qt::Key_End);
    press(Qt::Key_Delete);
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    press(Qt::Key_Return);

    EXPECT_EQ(count(), 3);
    EXPECT_EQ(document->layer(logo)->name(), QStringLiteral("ogo"));
}

TEST_F(DeleteKeyTest, WhatANameMakesNothingOfDeletesNoLayer)
{
    doubleClick(inRow(QStringLiteral("logo"), QStringLiteral("entryName")));
    press(Qt::Key_Delete, Qt::AltModifier);
    press(Qt::Key_Delete, Qt::MetaModifier);
    press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);

    EXPECT_EQ(count(), 3);
}

TEST_F(DeleteKeyTest, BackspaceDeletesNothing)
{
    item(QStringLiteral("layersList"))->forceActiveFocus();
    press(Qt::Key_Backspace);
    click(item(QStringLiteral("canvas")));
    press(Qt::Key_Backspace);

    EXPECT_EQ(count(), 3);
}

} // namespace
} // namespace tessara
