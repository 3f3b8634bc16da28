// Presets on a disk that fails, and among files that are none of theirs.
#include "Base/HostileDisk.h"
#include "Core/Presets/PresetFolder.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tessara {
namespace {

class HostileStoreTest : public PresetFolder
{
protected:
    static TextPreset longer(const TextPreset &preset)
    {
        TextPreset changed = preset;
        changed.templateTags = QStringList(50, QStringLiteral("more than before"));
        return changed;
    }

    TemplatePresetStore store{support, clock};
    const TextPreset preset = named("a", "A");
};

TEST_F(HostileStoreTest, AFullDiskLeavesTheOldPreset)
{
    SmallDisk disk;
    TESSARA_NEEDS(disk);
    const TemplatePresetStore small(ApplicationSupport(disk.path()), clock);
    ASSERT_TRUE(small.save(preset));
    disk.fill();

    const auto saved = small.save(longer(preset));

    ASSERT_FALSE(saved);
    EXPECT_TRUE(saved.error().endsWith("could not be written: No space left on device"))
        << qPrintable(saved.error());
    EXPECT_EQ(small.loadAll(), QList<TextPreset>{preset});
    EXPECT_EQ(QDir(small.directory()).entryList(QDir::Files | QDir::Hidden), QStringList("a.json"));
    disk.makeRoom();
    EXPECT_TRUE(small.save(longer(preset)));
    EXPECT_EQ(small.loadAll(), QList<TextPreset>{longer(preset)});
}

TEST_F(HostileStoreTest, ALimitOnTheSizeOfFilesLeavesTheOldPreset)
{
    ASSERT_TRUE(store.save(preset));
    for (const rlim_t bytes : {0, 1, 200}) {
        const FileSizeLimit limit(bytes);
        EXPECT_FALSE(store.save(longer(preset))) << bytes;
    }

    EXPECT_EQ(store.loadAll(), QList<TextPreset>{preset});
    EXPECT_EQ(files(), QStringList("a.json"));
}

TEST_F(HostileStoreTest, ASaveOverALinkLeavesWhatItLeadsTo)
{
    const QString outside = folder.filePath("outside.json");
    write("real.json", preset);
    ASSERT_TRUE(QFile::rename(path("real.json"), outside));
    ASSERT_EQ(symlink(qPrintable(outside), qPrintable(path("a.json"))), 0);
    ASSERT_EQ(symlink("/nowhere/at/all", qPrintable(path("b.json"))), 0);

    EXPECT_TRUE(store.save(longer(preset)));
    EXPECT_TRUE(store.save(named("b", "B")));

    EXPECT_EQ(bytesOf("../../outside.json"), encodePreset(preset).value());
    EXPECT_EQ(store.loadAll(), QList<TextPreset>({longer(preset), named("b", "B")}));
    EXPECT_FALSE(QFileInfo(path("a.json")).isSymLink());
}

TEST_F(HostileStoreTest, APipeInAPresetsPlaceIsAnErrorAndStays)
{
    write("b.json", named("b", "B"));
    ASSERT_EQ(mkfifo(qPrintable(path("a.json")), 0600), 0);

    EXPECT_FALSE(store.save(preset));

    EXPECT_EQ(files(), QStringList({"a.json", "b.json"}));
    EXPECT_EQ(namesOf(store.loadAll().value()), QStringList("B"));
}

TEST_F(HostileStoreTest, AFileThatMayNotBeReadIsPassedOverAndOneThatMayNotBeWrittenStays)
{
    const OrdinaryUser user;
    const QTemporaryDir own;
    const TemplatePresetStore protectedStore(ApplicationSupport(own.path()), clock);
    const QDir files(protectedStore.directory());
    ASSERT_TRUE(protectedStore.save(preset));
    ASSERT_TRUE(protectedStore.save(named("b", "B")));
    ASSERT_TRUE(QFile::setPermissions(files.filePath("a.json"), QFile::Permissions()));
    ASSERT_TRUE(QFile::setPermissions(files.filePath("b.json"), QFile::ReadOwner));

    EXPECT_EQ(namesOf(protectedStore.loadAll().value()), QStringList("B"));
    EXPECT_FALSE(protectedStore.save(named("a", "New")));
    EXPECT_FALSE(protectedStore.save(named("b", "New")));

    ASSERT_TRUE(QFile::setPermissions(files.filePath("a.json"), QFile::ReadOwner));
    EXPECT_EQ(namesOf(protectedStore.loadAll().value()), QStringList({"A", "B"}));
}

TEST_F(HostileStoreTest, ASaveKeepsTheRightsOfTheFile)
{
    ASSERT_TRUE(store.save(preset));
    const auto shared = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path("a.json"), shared));

    ASSERT_TRUE(store.save(longer(preset)));

    const auto everybody = shared | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_EQ(QFileInfo(path("a.json")).permissions() & everybody, shared);
}

} // namespace
} // namespace tessara
