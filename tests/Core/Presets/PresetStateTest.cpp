#include "Core/AppStateFixture.h"

#include "Models/Presets/PresetFormat.h"

#include <QBuffer>
#include <QDir>
#include <QSignalSpy>

namespace tessara {
namespace {

class PresetStateTest : public AppStateTest
{
protected:
    /// As if something had been exported and something had failed.
    void leaveMessages()
    {
        app.setLastExportURL(QUrl::fromLocalFile("/tmp/a.tessarapreset"));
        app.setLastErrorMessage("earlier");
    }

    bool hasMessages() const { return app.lastExportURL() || app.lastErrorMessage(); }

    const TextPreset preset{.id = "a", .name = "A"};
};

TEST_F(PresetStateTest, SavingReloadsTheListAndClearsTheMessages)
{
    const QSignalSpy changes(&app, &AppState::userTextPresetsChanged);
    leaveMessages();

    app.saveTemplatePreset(preset);

    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>({preset}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(hasMessages());
    EXPECT_EQ(app.templatePresetStore().directory(), folder.filePath("Templates"));
}

TEST_F(PresetStateTest, AFailedSaveLeavesItsTextAndTheList)
{
    app.saveTemplatePreset(preset);
    leaveMessages();
    ASSERT_TRUE(QDir().mkpath(folder.filePath("Templates/b.json/inside")));

    app.saveTemplatePreset({.id = "b", .name = "B"});

    EXPECT_TRUE(app.lastErrorMessage()->startsWith("The file \""));
    EXPECT_TRUE(app.lastExportURL());
    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>({preset}));
}

TEST_F(PresetStateTest, DeletingAPresetWithoutAFileReloadsAndClearsTheMessages)
{
    app.saveTemplatePreset(preset);
    ASSERT_TRUE(QFile::remove(folder.filePath("Templates/a.json")));
    leaveMessages();

    app.deleteUserPreset(preset);

    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>());
    EXPECT_FALSE(hasMessages());
}

TEST_F(PresetStateTest, AFailedDeletionLeavesItsTextAndTheList)
{
    app.saveTemplatePreset(preset);
    ASSERT_TRUE(QFile::remove(folder.filePath("Templates/a.json")));
    ASSERT_TRUE(QDir().mkpath(folder.filePath("Templates/a.json/inside")));

    app.deleteUserPreset(preset);

    EXPECT_TRUE(app.lastErrorMessage()->endsWith("could not be removed: Is a directory"))
        << qPrintable(*app.lastErrorMessage());
    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>({preset}));
}

TEST_F(PresetStateTest, APresetOfTooLargePicturesIsToldAndNotApplied)
{
    QImage image(16384, 16384, QImage::Format_Mono);
    TextPreset huge{.id = "huge", .name = "Huge", .rects = {{.name = "Bar"}}};
    for (const bool isWhite : {false, true}) {
        image.fill(isWhite);
        QByteArray png;
        QBuffer buffer(&png);
        ASSERT_TRUE(image.save(&buffer, "PNG"));
        huge.images.append({.size = {1, 1}, .pngBase64 = QString::fromLatin1(png.toBase64())});
    }
    app.saveTemplatePreset(huge);

    app.applyPreset("huge");

    EXPECT_EQ(app.lastErrorMessage(), "The pictures of this preset are too large to be shown.");
    EXPECT_TRUE(document().layerOrder().isEmpty());
    EXPECT_TRUE(document().presetGroupNames().isEmpty());
    EXPECT_FALSE(app.undoStack()->canUndo());
}

TEST_F(PresetStateTest, ASnapshotIsSavedAndListed)
{
    addShape({0, 0, 40, 20}, {1, 0, 0, 1});

    app.snapshotDocument(" Mine ", std::nullopt);

    ASSERT_EQ(app.userTextPresets().size(), 1);
    const TextPreset &saved = app.userTextPresets()[0];
    EXPECT_EQ(saved.name, "Mine");
    EXPECT_EQ(saved.rects.size(), 1);
    const qint64 seconds = clock.wallClock().toSecsSinceEpoch();
    EXPECT_TRUE(QFile::exists(folder.filePath("Templates/user-%1.json").arg(seconds)));
}

TEST_F(PresetStateTest, ASnapshotOverAPresetDropsItsCatalogueAttributes)
{
    app.saveTemplatePreset({.id = "a", .name = "A", .templateTags = {"news"}, .language = "th"});

    app.snapshotDocument("B", "a");

    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>({{.id = "a", .name = "B"}}));
}

TEST_F(PresetStateTest, ASnapshotOfAnotherDocumentLeavesTheShowAlone)
{
    CanvasDocument other(clock);
    other.addTextLayer();

    app.snapshotDocument(&other, "Other", std::nullopt);

    EXPECT_EQ(app.userTextPresets().at(0).entries.size(), 1);
    EXPECT_TRUE(document().layerOrder().isEmpty());
}

TEST_F(PresetStateTest, ADocumentWithOnlyAScoreGivesAPresetWithoutContent)
{
    document().addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::football);

    app.snapshotDocument("Score", "score");

    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>({{.id = "score", .name = "Score"}}));
}

TEST_F(PresetStateTest, ABlankNameSavesNothingAndSaysNothing)
{
    leaveMessages();

    app.snapshotDocument(" \t ", std::nullopt);

    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>());
    EXPECT_EQ(app.lastErrorMessage(), "earlier");
    EXPECT_TRUE(app.lastExportURL());
}

TEST_F(PresetStateTest, ADocumentThatNoFileCanHoldIsAnError)
{
    document().addTextLayer()->setFontSize(HUGE_VAL);

    app.snapshotDocument("A", "a");

    EXPECT_EQ(app.lastErrorMessage(), "The preset \"A\" could not be saved: entries[0].fontSize: "
                                      "a number that isn't finite can't be written");
    EXPECT_EQ(app.userTextPresets(), QList<TextPreset>());
}

} // namespace
} // namespace tessara
