#include "Core/Presets/PresetFolder.h"

#include <cmath>

#include <sys/stat.h>
#include <unistd.h>

namespace tessara {
namespace {

class TemplatePresetStoreTest : public PresetFolder
{
protected:
    QStringList loadedNames() const
    {
        const auto presets = store.loadAll();
        EXPECT_TRUE(presets) << qPrintable(presets ? QString() : presets.error());
        return namesOf(presets.value_or(QList<TextPreset>()));
    }

    void expectFile(const TextPreset &preset, const QString &file)
    {
        ASSERT_TRUE(store.save(preset));
        EXPECT_EQ(files(), QStringList(file));
        ASSERT_TRUE(store.remove(preset));
        EXPECT_EQ(files(), QStringList());
    }

    TemplatePresetStore store{support, clock};
};

TEST_F(TemplatePresetStoreTest, MakesItsFolderWhenItIsFirstNeeded)
{
    EXPECT_EQ(store.directory(), folder.filePath("Tessara/Templates"));
    EXPECT_FALSE(QFile::exists(folder.filePath("Tessara")));

    EXPECT_EQ(store.loadAll(), QList<TextPreset>());

    EXPECT_TRUE(QFile::exists(store.directory()));
    ASSERT_TRUE(QDir(folder.filePath("Tessara")).removeRecursively());
    EXPECT_TRUE(store.save(named("a", "A")));
    EXPECT_EQ(loadedNames(), QStringList("A"));
}

TEST_F(TemplatePresetStoreTest, WhatIsSavedIsLoaded)
{
    const TextPreset preset{.id = "lower",
                            .name = "ล่าง",
                            .templateTags = {"a"},
                            .rects = {{.name = "Bar", .position = {0.1 + 0.2, 1}}}};

    ASSERT_TRUE(store.save(preset));

    EXPECT_EQ(store.loadAll(), QList<TextPreset>({preset}));
    EXPECT_EQ(bytesOf("lower.json"), encodePreset(preset).value());
}

TEST_F(TemplatePresetStoreTest, FilesAreNamedByTheIdAndElseByTheName)
{
    expectFile(named("News Bar/1", "x"), "news-bar-1.json");
    expectFile(named("", "Lower Third"), "lower-third.json");
    expectFile(named("A\\b_C-9", ""), "a-b_c-9.json");
    expectFile(named("../../etc/passwd", ""), "--etc-passwd.json");
    expectFile(named("Tï\ntle.json\t", ""), "ttlejson.json");
    expectFile(named("ÀB", ""), "b.json");
    expectFile(named(" ", "x"), "-.json");
}

TEST_F(TemplatePresetStoreTest, AnEmptyIdStaysEmpty)
{
    ASSERT_TRUE(store.save(named("", "Lower Third")));

    const QList<TextPreset> presets = store.loadAll().value();

    ASSERT_EQ(presets.size(), 1);
    EXPECT_EQ(presets[0].id, "");
}

// Kept that way: a name in Thai script vanishes whole.
TEST_F(TemplatePresetStoreTest, ANameWithoutSafeCharactersGetsAFileForEverySecond)
{
    const TextPreset preset = named("", "สวัสดี");
    clock.setWallClock(QDateTime::fromMSecsSinceEpoch(1'700'000'000'999));
    ASSERT_TRUE(store.save(preset));
    EXPECT_EQ(files(), QStringList("template-1700000000.json"));

    clock.advance(Seconds{1});
    ASSERT_TRUE(store.save(preset));
    clock.advance(Seconds{1});
    ASSERT_TRUE(store.remove(preset));

    EXPECT_EQ(files(), QStringList({"template-1700000000.json", "template-1700000001.json"}));
}

TEST_F(TemplatePresetStoreTest, IdsThatSanitizeAlikeShareAFile)
{
    ASSERT_TRUE(store.save(named("News Bar", "First")));
    ASSERT_TRUE(store.save(named("news-bar", "Second")));

    EXPECT_EQ(files(), QStringList("news-bar.json"));
    EXPECT_EQ(loadedNames(), QStringList("Second"));
}

TEST_F(TemplatePresetStoreTest, TheExtensionDecidesAndNotItsCase)
{
    write("a.JSON", named("a", "A"));
    write("b.Json", named("b", "B"));
    write("c.txt", named("c", "C"));
    write("d", named("d", "D"));
    write("e.json.bak", named("e", "E"));
    write(".f.json", named("f", "F"));

    EXPECT_EQ(loadedNames(), QStringList({"A", "B"}));
    EXPECT_EQ(files().size(), 6);
}

TEST_F(TemplatePresetStoreTest, TheFilesNameIsNoPartOfThePreset)
{
    write("something-else.json", named("News Bar/1", "A"));

    const QList<TextPreset> presets = store.loadAll().value();

    EXPECT_EQ(presets, QList<TextPreset>({named("News Bar/1", "A")}));
    ASSERT_TRUE(store.remove(presets[0])); // its own file would be another one
    EXPECT_EQ(files(), QStringList("something-else.json"));
}

TEST_F(TemplatePresetStoreTest, BrokenFilesAreSkippedAndKept)
{
    const QByteArray whole = encodePreset(named("a", "A")).value();
    const QMap<QString, QByteArray> broken{
        {"cut.json", whole.left(whole.size() / 2)}, {"empty.json", ""},
        {"list.json", "[" + whole + "]"},           {"mistyped.json", R"({"id": 1, "name": "A"})"},
        {"picture.json", "\x89PNG\r\n\x1a\n"},      {"unnamed.json", R"({"id": "a"})"}};
    for (auto file = broken.begin(); file != broken.end(); ++file)
        write(file.key(), file.value());
    write("whole.json", whole);

    EXPECT_EQ(loadedNames(), QStringList("A"));

    for (auto file = broken.begin(); file != broken.end(); ++file)
        EXPECT_EQ(bytesOf(file.key()), file.value());
}

TEST_F(TemplatePresetStoreTest, WhatIsNoFileIsPassedOver)
{
    write("a.json", named("a", "A"));
    ASSERT_TRUE(QDir().mkpath(path("folder.json")));
    ASSERT_EQ(mkfifo(qPrintable(path("pipe.json")), 0600), 0);
    ASSERT_EQ(symlink("/dev/zero", qPrintable(path("endless.json"))), 0);
    ASSERT_EQ(symlink("/nowhere", qPrintable(path("lost.json"))), 0);
    ASSERT_EQ(symlink("pipe.json", qPrintable(path("other-pipe.json"))), 0);
    ASSERT_EQ(symlink("a.json", qPrintable(path("second.json"))), 0);

    EXPECT_EQ(loadedNames(), QStringList({"A", "A"}));
}

TEST_F(TemplatePresetStoreTest, AFileThatNoMemoryHoldsIsPassedOver)
{
    write("a.json", named("a", "A"));
    write("huge.json", "{");
    ASSERT_TRUE(QFile::resize(path("huge.json"), 1LL << 40)); // sparse

    EXPECT_EQ(loadedNames(), QStringList("A"));
}

TEST_F(TemplatePresetStoreTest, IsSortedByNameWithoutRegardToCase)
{
    write("1.json", named("1", "zebra"));
    write("2.json", named("2", "Apple"));
    write("3.json", named("3", "banner"));
    write("4.json", named("4", "apple"));

    EXPECT_EQ(loadedNames(), QStringList({"Apple", "apple", "banner", "zebra"}));
}

TEST_F(TemplatePresetStoreTest, AFolderThatCannotBeMadeIsAnError)
{
    QFile obstacle(folder.filePath("Tessara"));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    const QString error = "The folder \"" + store.directory() + "\" could not be created";

    EXPECT_EQ(store.loadAll().error(), error);
    EXPECT_EQ(store.save(named("a", "A")).error(), error);
    EXPECT_TRUE(store.remove(named("a", "A")));
}

TEST_F(TemplatePresetStoreTest, AFileThatCannotBeReplacedIsAnError)
{
    ASSERT_TRUE(QDir().mkpath(path("a.json/inside")));

    const auto saved = store.save(named("a", "A"));
    const auto removed = store.remove(named("a", "A"));

    ASSERT_FALSE(saved);
    EXPECT_TRUE(
        saved.error().startsWith("The file \"" + path("a.json") + "\" could not be written: "))
        << qPrintable(saved.error());
    ASSERT_FALSE(removed);
    EXPECT_TRUE(
        removed.error().startsWith("The file \"" + path("a.json") + "\" could not be removed: "))
        << qPrintable(removed.error());
    EXPECT_EQ(files(), QStringList("a.json"));
    EXPECT_TRUE(QFile::exists(path("a.json/inside")));
}

TEST_F(TemplatePresetStoreTest, ANameThatIsTooLongForAFileIsAnError)
{
    EXPECT_FALSE(store.save(named(QString(5000, 'x'), "A")));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(TemplatePresetStoreTest, APresetThatCannotBeWrittenLeavesTheOldFile)
{
    TextPreset preset = named("a", "A");
    ASSERT_TRUE(store.save(preset));
    preset.preferredRunDuration = HUGE_VAL;

    EXPECT_EQ(store.save(preset).error(),
              "The preset \"A\" could not be saved: preferredRunDuration: "
              "a number that isn't finite can't be written");

    EXPECT_EQ(store.loadAll(), QList<TextPreset>({named("a", "A")}));
}

TEST_F(TemplatePresetStoreTest, LeavesNothingButTheFile)
{
    for (int round = 0; round < 20; ++round)
        ASSERT_TRUE(store.save(named("a", QString::number(round))));

    EXPECT_EQ(files(), QStringList("a.json"));
    EXPECT_EQ(loadedNames(), QStringList("19"));
}

} // namespace
} // namespace tessara
