#include "Core/Presets/PresetFolder.h"

#include "Core/Presets/PresetLibrary.h"
#include "Models/CanvasDocument.h"

#include <QSignalSpy>

#include <cmath>

namespace tessara {
namespace {

class PresetLibraryTest : public PresetFolder
{
protected:
    QString builtInFile() const { return folder.filePath("BuiltInPresets.json"); }

    void shipText(const QByteArray &json) const
    {
        QFile file(builtInFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
    }

    void ship(const QList<TextPreset> &presets) const
    {
        QByteArrayList texts;
        for (const TextPreset &preset : presets)
            texts.append(encodePreset(preset).value());
        shipText("[" + texts.join(",") + "]");
    }

    /// As at the next start of the application.
    PresetLibrary library() const { return {support, clock, BuiltInPresets(builtInFile())}; }

    BuiltInPresets builtIn() const { return BuiltInPresets(builtInFile()); }
};

TEST_F(PresetLibraryTest, WithoutTheirFileThereAreNoBuiltInPresets)
{
    testing::internal::CaptureStdout();

    EXPECT_EQ(builtIn().bundlePresets(), QList<TextPreset>());

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(PresetLibraryTest, BuiltInPresetsComeAsTheFileListsThemOrSorted)
{
    ship({named("1", "Zebra"), named("2", "apple"), named("3", "Banner"), named("4", "Apple")});

    EXPECT_EQ(namesOf(builtIn().bundlePresets()),
              QStringList({"Zebra", "apple", "Banner", "Apple"}));
    EXPECT_EQ(namesOf(builtIn().allBuiltIn()), QStringList({"apple", "Apple", "Banner", "Zebra"}));
}

TEST_F(PresetLibraryTest, OneBrokenBuiltInPresetCostsThemAllAndALine)
{
    shipText(R"([{"id": "a", "name": "A"}, {"id": "b"}])");
    testing::internal::CaptureStdout();

    EXPECT_EQ(builtIn().allBuiltIn(), QList<TextPreset>());

    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Failed to decode BuiltInPresets.json: [1].name: missing\n");
}

TEST_F(PresetLibraryTest, ABuiltInFileThatCannotBeReadGivesALine)
{
    ASSERT_TRUE(QDir().mkpath(builtInFile()));
    testing::internal::CaptureStdout();

    EXPECT_EQ(builtIn().allBuiltIn(), QList<TextPreset>());

    EXPECT_EQ(
        testing::internal::GetCapturedStdout().rfind("Failed to decode BuiltInPresets.json: ", 0),
        0U);
}

TEST_F(PresetLibraryTest, LoadsTheUsersPresetsAtItsStart)
{
    write("b.json", named("b", "B"));
    write("a.json", named("a", "A"));

    EXPECT_EQ(namesOf(library().userTextPresets()), QStringList({"A", "B"}));
}

TEST_F(PresetLibraryTest, AFolderThatCannotBeReadGivesNone)
{
    QFile obstacle(folder.filePath("Tessara"));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));

    EXPECT_EQ(library().userTextPresets(), QList<TextPreset>());
}

TEST_F(PresetLibraryTest, TheListIsWhatLiesOnTheDisk)
{
    PresetLibrary presets(support, clock, builtIn());
    const QSignalSpy changes(&presets, &PresetLibrary::userTextPresetsChanged);
    write("b.json", named("b", "B"));

    ASSERT_TRUE(presets.saveTemplatePreset(named("a", "A")));
    EXPECT_EQ(namesOf(presets.userTextPresets()), QStringList({"A", "B"}));
    EXPECT_EQ(changes.count(), 1);

    ASSERT_TRUE(presets.saveTemplatePreset(named("a", "A"))); // nothing new
    EXPECT_EQ(changes.count(), 1);

    ASSERT_TRUE(presets.deleteUserPreset(named("a", "A")));
    EXPECT_EQ(namesOf(presets.userTextPresets()), QStringList("B"));
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(PresetLibraryTest, AFailedSaveKeepsTheList)
{
    PresetLibrary presets(support, clock, builtIn());
    ASSERT_TRUE(presets.saveTemplatePreset(named("a", "A")));
    TextPreset broken = named("a", "Other");
    broken.preferredRunDuration = std::nan("");

    EXPECT_FALSE(presets.saveTemplatePreset(broken));

    EXPECT_EQ(namesOf(presets.userTextPresets()), QStringList("A"));
}

TEST_F(PresetLibraryTest, ADeletionWithoutAFolderToLoadEmptiesTheList)
{
    PresetLibrary presets(support, clock, builtIn());
    ASSERT_TRUE(presets.saveTemplatePreset(named("a", "A")));
    ASSERT_TRUE(QDir(support.directory()).removeRecursively());
    QFile obstacle(folder.filePath("Tessara"));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));

    EXPECT_TRUE(presets.deleteUserPreset(named("a", "A")));

    EXPECT_EQ(presets.userTextPresets(), QList<TextPreset>());
}

TEST_F(PresetLibraryTest, AUsersPresetTakesThePlaceOfABuiltInOneUntilItIsDeleted)
{
    ship({named("one", "Apple"), named("two", "Banner"), named("three", "Cue")});
    PresetLibrary presets(support, clock, builtIn());
    ASSERT_TRUE(presets.saveTemplatePreset(named("two", "Zulu")));
    ASSERT_TRUE(presets.saveTemplatePreset(named("mine", "Mine")));

    EXPECT_EQ(namesOf(presets.systemPresets()), QStringList({"Apple", "Zulu", "Cue"}));
    EXPECT_EQ(namesOf(presets.visibleUserTextPresets()), QStringList("Mine"));
    EXPECT_EQ(namesOf(presets.userTextPresets()), QStringList({"Mine", "Zulu"}));

    ASSERT_TRUE(presets.deleteUserPreset(named("two", "Zulu")));
    EXPECT_EQ(namesOf(presets.systemPresets()), QStringList({"Apple", "Banner", "Cue"}));
    EXPECT_EQ(namesOf(presets.visibleUserTextPresets()), QStringList("Mine"));
}

TEST_F(PresetLibraryTest, OfTwoFilesWithOneIdTheFirstInTheListReplaces)
{
    ship({named("one", "Apple")});
    write("x.json", named("one", "Second"));
    write("y.json", named("one", "First"));

    EXPECT_EQ(namesOf(library().systemPresets()), QStringList("First"));
    EXPECT_EQ(library().visibleUserTextPresets(), QList<TextPreset>());
}

TEST_F(PresetLibraryTest, ASnapshotTrimsBlanksButNoLineEnds)
{
    const PresetLibrary presets(support, clock, builtIn());
    const CanvasDocument document(clock);
    const auto nameOf = [&](const QString &typed) {
        const auto preset = presets.snapshot(document, typed, "id");
        return preset ? preset->name : QString("none");
    };

    EXPECT_EQ(nameOf(" \t\u00a0\u3000My  title\u2009 "), "My  title");
    EXPECT_EQ(nameOf("\n A \r"), "\n A \r");
    EXPECT_EQ(nameOf(" \n "), "\n");
    EXPECT_EQ(nameOf(""), "none");
    EXPECT_EQ(nameOf(" \t\u00a0"), "none");
}

TEST_F(PresetLibraryTest, ASnapshotHasTheGivenIdOrOneOfTheTimeOfDay)
{
    const PresetLibrary presets(support, clock, builtIn());
    const CanvasDocument document(clock);
    clock.setWallClock(QDateTime::fromMSecsSinceEpoch(1'700'000'000'999));

    EXPECT_EQ(presets.snapshot(document, "A", std::nullopt)->id, "user-1700000000");
    EXPECT_EQ(presets.snapshot(document, "A", "News Bar/1")->id, "News Bar/1");
    EXPECT_EQ(presets.snapshot(document, "A", "")->id, "");
}

} // namespace
} // namespace tessara
