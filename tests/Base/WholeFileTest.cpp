#include "Base/HostileDisk.h"
#include "Base/WholeFile.h"

#include <QDir>

#include <sys/stat.h>

namespace tessara {
namespace {

class WholeFileTest : public testing::Test
{
protected:
    static constexpr qint64 plenty = 1 << 20; // bytes

    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }

    QStringList files() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                       QDir::Name);
    }

    static void expectWritten(const QString &file, const QByteArray &bytes)
    {
        const auto written = writeFile(file, bytes);
        EXPECT_TRUE(written) << qPrintable(written ? QString() : written.error());
        EXPECT_EQ(readFile(file, plenty), bytes);
    }

    static QString errorOf(const QString &file)
    {
        const auto written = writeFile(file, "new");
        return written ? QString() : written.error();
    }

    QTemporaryDir folder;
};

TEST_F(WholeFileTest, WhatIsWrittenIsReadAndNothingElseIsLeft)
{
    expectWritten(path("a"), "one");
    expectWritten(path("a"), QByteArray(300'000, 'x'));
    expectWritten(path("a"), "");
    expectWritten(path("\xe0\xb8\xaa.json"), "two");

    EXPECT_EQ(files().size(), 2);
}

TEST_F(WholeFileTest, ANameWithoutAFolderIsAFileOfTheWorkingFolder)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));

    expectWritten("a", "one");

    EXPECT_EQ(files(), QStringList("a"));
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(WholeFileTest, AFailureLeavesTheOldFileAndNothingElse)
{
    expectWritten(path("a"), "old");
    ASSERT_TRUE(QDir().mkpath(path("folder/inside")));
    ASSERT_EQ(mkfifo(qPrintable(path("pipe")), 0600), 0);
    const QStringList before = files();

    EXPECT_EQ(errorOf(path("folder")), "Is a directory");
    EXPECT_EQ(errorOf(path("pipe")), "It is no ordinary file");
    EXPECT_EQ(errorOf(path("a/b")), "Not a directory");
    EXPECT_EQ(errorOf(path("no/such")), "No such file or directory");
    EXPECT_EQ(errorOf(""), "No such file or directory");
    EXPECT_EQ(errorOf(path("a") + QChar(0) + "b"), "Invalid argument");
    EXPECT_EQ(errorOf(path(QByteArray(300, 'x').constData())), "File name too long");
    for (const rlim_t bytes : {0, 1, 2}) {
        const FileSizeLimit limit(bytes);
        EXPECT_EQ(errorOf(path("a")), "File too large");
    }

    EXPECT_EQ(files(), before);
    EXPECT_EQ(readFile(path("a"), plenty), QByteArray("old"));
}

TEST_F(WholeFileTest, AFullDiskLeavesTheOldFile)
{
    SmallDisk disk;
    TESSARA_NEEDS(disk);
    const QString file = disk.path() + "/a";
    expectWritten(file, "old");
    disk.fill();

    EXPECT_EQ(errorOf(file), "No space left on device");

    EXPECT_EQ(readFile(file, plenty), QByteArray("old"));
    disk.makeRoom();
    expectWritten(file, "new");
}

TEST_F(WholeFileTest, AFileForItsOwnerAloneIsNeverAnybodyElses)
{
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    ASSERT_TRUE(writeFile(path("a"), "one"));
    EXPECT_TRUE(QFile::permissions(path("a")) & others);

    ASSERT_TRUE(writeFile(path("a"), "two", FileReaders::ownerOnly));
    ASSERT_TRUE(writeFile(path("b"), "two", FileReaders::ownerOnly));

    EXPECT_FALSE(QFile::permissions(path("a")) & others);
    EXPECT_FALSE(QFile::permissions(path("b")) & others);
}

TEST_F(WholeFileTest, AFileIsReadUpToALimit)
{
    ASSERT_TRUE(writeFile(path("a"), QByteArray(2048, 'x')));

    EXPECT_EQ(readFile(path("a"), 2048)->size(), 2048);
    EXPECT_EQ(readFile(path("a"), 2047).error(), "It is larger than 2 kB");
}

TEST_F(WholeFileTest, AFileThatNoMemoryHoldsIsAnError)
{
    ASSERT_TRUE(writeFile(path("a"), "x"));
    ASSERT_TRUE(QFile::resize(path("a"), 1LL << 40)); // sparse

    EXPECT_EQ(readFile(path("a"), 64 << 20).error(), "It is larger than 64 MB");
}

// As one that grows while it is read.
TEST_F(WholeFileTest, AFileThatIsLongerThanItSaysIsReadToItsEnd)
{
    const QString file = "/proc/self/mountinfo";
    ASSERT_EQ(QFileInfo(file).size(), 0);

    EXPECT_GT(readFile(file, plenty)->size(), 0);
    EXPECT_FALSE(readFile(file, 10));
    EXPECT_GT(readFile("/proc/self/smaps", 64 << 20)->size(), 4096);
}

TEST_F(WholeFileTest, WhatIsNoFileIsNotReadAndNotWaitedFor)
{
    ASSERT_EQ(mkfifo(qPrintable(path("pipe")), 0600), 0);
    ASSERT_EQ(symlink("pipe", qPrintable(path("link"))), 0);

    for (const QString &name :
         {path("pipe"), path("link"), QString("/dev/zero"), QString("/dev/ptmx")})
        EXPECT_EQ(readFile(name, plenty).error(), "It is no ordinary file") << qPrintable(name);
    EXPECT_EQ(readFile(folder.path(), plenty).error(), "Is a directory");
    EXPECT_EQ(readFile(path("missing"), plenty).error(), "No such file or directory");
}

TEST_F(WholeFileTest, RightsAreRespected)
{
    const OrdinaryUser user;
    const QTemporaryDir own;
    const QString file = own.filePath("a");
    expectWritten(file, "old");

    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
    EXPECT_EQ(errorOf(file), "Permission denied");
    EXPECT_EQ(readFile(file, plenty), QByteArray("old"));

    ASSERT_TRUE(QFile::setPermissions(file, QFile::WriteOwner));
    EXPECT_EQ(readFile(file, plenty).error(), "Permission denied");
    ASSERT_TRUE(QFile::setPermissions(own.path(), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(errorOf(file), "Permission denied");
    ASSERT_TRUE(
        QFile::setPermissions(own.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

} // namespace
} // namespace tessara
