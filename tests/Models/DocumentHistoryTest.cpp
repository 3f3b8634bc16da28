#include "Models/HistoryFixture.h"

namespace tessara {
namespace {

class DocumentHistoryTest : public HistoryFixture
{
};

// Properties

TEST_F(DocumentHistoryTest, ABurstOfWritesIsOneEntry)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    for (const char *typed : {"H", "He", "Hel", "Hell", "Hello"}) {
        text->setText(QLatin1String(typed));
        clock.advance(milliseconds{120});
    }
    EXPECT_EQ(undo().count(), before);
    settle();

    ASSERT_EQ(undo().count(), before + 1);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Edit Text"));
    undo().undo();
    EXPECT_EQ(text->text(), QStringLiteral("Text 1"));
    undo().redo();
    EXPECT_EQ(text->text(), QStringLiteral("Hello"));
}

TEST_F(DocumentHistoryTest, AChangeIsAnEntryOnceItsQuietTimeIsOver)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    text->setFontSize(40);
    clock.advance(milliseconds{299});
    EXPECT_EQ(undo().count(), before);
    clock.advance(milliseconds{1});

    EXPECT_EQ(undo().count(), before + 1);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Change Font Size"));
}

TEST_F(DocumentHistoryTest, AnUndoneChangeComesBackAsNoEntry)
{
    TextLayer *text = addTitle();
    text->setText(QStringLiteral("Hello"));
    settle();
    const int count = undo().count();

    undo().undo();
    settle();
    settle();

    EXPECT_EQ(undo().count(), count);
    EXPECT_TRUE(undo().canRedo());
}

TEST_F(DocumentHistoryTest, AValueThatReturnsWithinTheQuietTimeIsNoChange)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    text->setFontSize(40);
    clock.advance(milliseconds{100});
    text->setFontSize(98);
    settle();
    EXPECT_EQ(undo().count(), before);

    text->setFontSize(40);
    settle();
    text->setFontSize(98);
    settle();
    EXPECT_EQ(undo().count(), before + 2);
}

TEST_F(DocumentHistoryTest, AChangeBelowTheStoredPrecisionIsNone)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    text->setFontSize(98.004);
    settle();

    EXPECT_EQ(undo().count(), before);
}

TEST_F(DocumentHistoryTest, ADiagonalMoveIsUndoneInTwoSteps)
{
    TextLayer *text = addTitle();
    const QPointF start = text->position();
    const int before = undo().count();
    for (int step = 1; step <= 20; ++step) {
        document.moveLayer(text->id(), start + QPointF(step, step * 2));
        clock.advance(milliseconds{16});
    }
    settle();

    ASSERT_EQ(undo().count(), before + 2);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Move Layer"));
    undo().undo();
    EXPECT_TRUE(text->position().x() == start.x() || text->position().y() == start.y());
    EXPECT_NE(text->position(), start);
    undo().undo();
    EXPECT_EQ(text->position(), start);
}

TEST_F(DocumentHistoryTest, AMoveAlongOneAxisIsOneEntry)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    document.moveLayer(text->id(), text->position() + QPointF(0, 40));
    settle();

    EXPECT_EQ(undo().count(), before + 1);
}

TEST_F(DocumentHistoryTest, AChangeRightAfterTheLayersCreationIsTakenForItsStart)
{
    TextLayer *text = document.addTextLayer();
    const int before = undo().count();

    clock.advance(milliseconds{200});
    text->setText(QStringLiteral("At once"));
    settle();
    EXPECT_EQ(undo().count(), before);

    text->setText(QStringLiteral("Later"));
    settle();
    ASSERT_EQ(undo().count(), before + 1);
    undo().undo();
    EXPECT_EQ(text->text(), QStringLiteral("Text 1")); // the last that history held
}

TEST_F(DocumentHistoryTest, UnwatchedPropertiesTakesAndCuesAreNoHistory)
{
    TextLayer *text = addTitle();
    WebLayer *web = document.addWebLayer();
    settle();
    const int before = undo().count();

    web->setPosition({1, 2});
    web->setSize({30, 40});
    web->setUrlString(QStringLiteral("https://example.org"));
    document.setLayerLocked(text->id(), true);
    document.toggleCue(text->id());
    document.takeCues();
    document.toggleLayerHidden(web->id());
    document.groupLayers({text->id(), web->id()}, QStringLiteral("Group"));
    document.ungroupPreset(*document.presetGroupID(text->id()));
    settle();

    EXPECT_EQ(undo().count(), before);
}

TEST_F(DocumentHistoryTest, AnUndoForALayerThatHasGoneMovesOn)
{
    TextLayer *text = addTitle();
    text->setText(QStringLiteral("Hello"));
    settle();
    document.removeLayerCore(text->id());

    const int cursor = undo().cursor();
    undo().undo();

    EXPECT_EQ(undo().cursor(), cursor - 1);
    EXPECT_TRUE(document.layerOrder().isEmpty());
}

// Layers that come and go

TEST_F(DocumentHistoryTest, AnAddIsUndoneAndRedoneUnderTheSameId)
{
    const QUuid id = document.addTextLayer()->id();
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Add Text Layer"));

    undo().undo();
    EXPECT_TRUE(document.layerOrder().isEmpty());
    EXPECT_EQ(undo().count(), 1); // and no "Delete Layer"
    EXPECT_FALSE(undo().canUndo());

    undo().redo();
    settle();
    ASSERT_EQ(document.layerOrder(), QList<QUuid>{id});
    EXPECT_EQ(title()->text(), QStringLiteral("Text 1"));
    EXPECT_EQ(undo().count(), 1);
}

TEST_F(DocumentHistoryTest, ARedoneAddBringsBackWhatHadNoEntryOfItsOwn)
{
    TextLayer *text = document.addTextLayer();
    text->setText(QStringLiteral("At once"));
    settle();

    undo().undo();
    undo().redo();

    EXPECT_EQ(title()->text(), QStringLiteral("At once"));
}

TEST_F(DocumentHistoryTest, EveryKindsAddIsNamed)
{
    const auto label = [&](Layer *added) {
        EXPECT_NE(added, nullptr);
        return undo().undoLabel().toStdString();
    };

    EXPECT_EQ(label(document.addTextLayer()), "Add Text Layer");
    EXPECT_EQ(label(document.addTemplateShapeLayer(ShapeKind::star)), "Add Shape Layer");
    EXPECT_EQ(label(addPicture({4, 4})), "Add Image Layer");
    EXPECT_EQ(label(document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::futsal)),
              "Add Score Layer");
    EXPECT_EQ(label(document.addWebLayer()), "Add Web Layer");
    EXPECT_EQ(label(document.addModel3DLayer({})), "Add 3D Model Layer");
    EXPECT_EQ(label(document.addWindowCaptureLayer()), "Add Window Capture Layer");
    EXPECT_EQ(label(document.addCountdownLayer()), "Add Countdown Layer");
}

TEST_F(DocumentHistoryTest, ADeletedLayerComesBackAtItsPlaceAndSelected)
{
    const QUuid back = addTitle()->id();
    const QUuid middle = addTitle()->id();
    const QUuid front = addTitle()->id();
    document.setRunDissolveDuration(2, middle);
    static_cast<TextLayer *>(document.layer(middle))->setColor({1, 0, 0, 1});
    settle();

    document.removeLayer(middle);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Delete Layer"));
    undo().undo();

    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{back, middle, front}));
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{middle});
    const auto *restored = static_cast<TextLayer *>(document.layer(middle));
    EXPECT_EQ(restored->color(), (RGBAColor{1, 0, 0, 1}));
    EXPECT_EQ(document.runSettings(middle), LayerRunSettings());
    undo().redo();
    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{back, front}));
}

TEST_F(DocumentHistoryTest, ARestoredLayerIsWatchedAfresh)
{
    const QUuid id = addTitle()->id();
    document.removeLayer(id);
    undo().undo();
    settle();

    title()->setText(QStringLiteral("Again"));
    settle();

    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Edit Text"));
    undo().undo();
    EXPECT_EQ(title()->text(), QStringLiteral("Text 1"));
}

TEST_F(DocumentHistoryTest, AGroupIsUndeletedLayerByLayer)
{
    const QUuid one = addTitle()->id();
    const QUuid two = addTitle()->id();
    document.groupLayers({one, two}, QStringLiteral("Group"));

    document.removePresetGroup(*document.presetGroupID(one));
    EXPECT_TRUE(document.layerOrder().isEmpty());

    undo().undo();
    EXPECT_EQ(document.layerOrder().size(), 1);
    undo().undo();
    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{one, two}));
    EXPECT_FALSE(document.presetGroupID(one).has_value());
}

TEST_F(DocumentHistoryTest, APictureWhoseFileHasGoneStaysGone)
{
    const QUuid title = addTitle()->id();
    const QUuid picture = addPicture({4, 4})->id(); // which never had a file
    settle();
    document.removeLayer(picture);

    undo().undo();

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{title});
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{title});
}

TEST_F(DocumentHistoryTest, ADuplicateIsAnAdd)
{
    const QUuid id = addTitle()->id();

    document.duplicateLayer(id);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Add Text Layer"));
    undo().undo();

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{id});
}

// Names and order

TEST_F(DocumentHistoryTest, ARenameIsOneEntryAtOnce)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    document.renameLayer(text->id(), QStringLiteral("Headline"));
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Rename Layer"));
    settle();
    EXPECT_EQ(undo().count(), before + 1);

    undo().undo();
    EXPECT_EQ(text->name(), QStringLiteral("Text 1"));
    settle();
    EXPECT_EQ(undo().count(), before + 1);
    undo().redo();
    EXPECT_EQ(text->name(), QStringLiteral("Headline"));
    document.renameLayer(text->id(), QStringLiteral(" Headline "));
    EXPECT_EQ(undo().count(), before + 1);
}

TEST_F(DocumentHistoryTest, AReorderIsUndone)
{
    const QUuid first = addTitle()->id();
    const QUuid second = addTitle()->id();

    document.reorderLayers({first, second}); // front-most first
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Reorder Layers"));
    undo().undo();
    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{first, second}));
    undo().redo();
    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{second, first}));
}

TEST_F(DocumentHistoryTest, AnUndoneReorderLosesNoLayerThatAMacroHasAdded)
{
    const QUuid first = addTitle()->id();
    const QUuid second = addTitle()->id();
    document.reorderLayers({first, second});
    isMacroRunning = true;
    const QUuid added = document.addCountdownLayer()->id();
    isMacroRunning = false;

    undo().undo();

    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{first, second, added}));
}

} // namespace
} // namespace tessara
