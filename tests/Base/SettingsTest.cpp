#include "Base/ApplicationSupport.h"
#include "Base/HostileDisk.h"
#include "Base/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace tessara {
namespace {

class SettingsTest : public testing::Test
{
protected:
    QByteArray stored() const { return bytesOf(file); }

    static QByteArray bytesOf(const QString &path)
    {
        QFile content(path);
        return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray();
    }

    void store(const QByteArray &text) const
    {
        QFile content(file);
        ASSERT_TRUE(content.open(QIODevice::WriteOnly));
        content.write(text);
    }

    QTemporaryDir directory;
    QString file = directory.filePath(QStringLiteral("settings.json"));
    QString key = QStringLiteral("projectFrameRate");
};

TEST_F(SettingsTest, WhatIsSetReadsBackInTheNextRun)
{
    const QJsonValue whole = QJsonArray{1.5, QStringLiteral("สวัสดี")};
    ASSERT_TRUE(Settings(file).setValue(key, whole));

    EXPECT_EQ(Settings(file).value(key), whole);
}

TEST_F(SettingsTest, AKeyNeverSetIsUndefined)
{
    EXPECT_TRUE(Settings(file).value(key).isUndefined());
    EXPECT_FALSE(Settings(file).contains(key));
}

TEST_F(SettingsTest, OnlyTheUserMayReadTheFile)
{
    ASSERT_TRUE(Settings(file).setValue(key, 1));

    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFileInfo(file).permissions() & others);
}

TEST_F(SettingsTest, AFailedWriteChangesNothing)
{
    Settings settings(directory.filePath(QStringLiteral("no/such/folder/settings.json")));

    EXPECT_FALSE(settings.setValue(key, 1));
    EXPECT_FALSE(settings.contains(key));
}

TEST_F(SettingsTest, AnUnreadableFileIsPutAsideAndKept)
{
    store("{ torn");

    Settings settings(file);
    EXPECT_FALSE(settings.contains(key));
    ASSERT_TRUE(settings.setValue(key, 1));

    EXPECT_EQ(bytesOf(file + QStringLiteral(".unreadable")), QByteArray("{ torn"));
}

TEST_F(SettingsTest, ASecondUnreadableFileLeavesTheFirstOneAlone)
{
    store("first");
    Settings{file};
    store("second");
    Settings{file};

    EXPECT_EQ(bytesOf(file + QStringLiteral(".unreadable")), QByteArray("first"));
    EXPECT_EQ(bytesOf(file + QStringLiteral(".unreadable-2")), QByteArray("second"));
}

TEST_F(SettingsTest, AFullDiskLeavesTheOldSettings)
{
    SmallDisk disk;
    TESSARA_NEEDS(disk);
    file = disk.path() + QStringLiteral("/settings.json");
    Settings settings(file);
    ASSERT_TRUE(settings.setValue(key, QStringLiteral("25")));
    disk.fill();

    EXPECT_FALSE(settings.setValue(key, QStringLiteral("50")));

    EXPECT_EQ(settings.value(key), QStringLiteral("25"));
    EXPECT_EQ(Settings(file).value(key), QStringLiteral("25"));
    disk.makeRoom();
    EXPECT_TRUE(settings.setValue(key, QStringLiteral("50")));
    EXPECT_EQ(Settings(file).value(key), QStringLiteral("50"));
}

TEST_F(SettingsTest, ALimitOnTheSizeOfFilesLeavesTheOldSettings)
{
    Settings settings(file);
    ASSERT_TRUE(settings.setValue(key, 1));
    const QByteArray before = stored();
    {
        const FileSizeLimit limit(100);
        EXPECT_FALSE(settings.setValue(QStringLiteral("long"), QString(1000, QLatin1Char('x'))));
        EXPECT_FALSE(settings.setValue(QStringLiteral("longer"), QString(99999, QLatin1Char('x'))));
    }

    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(settings.setValue(QStringLiteral("long"), QString(1000, QLatin1Char('x'))));
}

TEST_F(SettingsTest, ASaveOverALinkLeavesWhatItLeadsTo)
{
    const QString other = directory.filePath(QStringLiteral("other.json"));
    ASSERT_TRUE(Settings(other).setValue(key, 1));
    ASSERT_EQ(symlink("other.json", qPrintable(file)), 0);

    ASSERT_TRUE(Settings(file).setValue(key, 2));

    EXPECT_EQ(Settings(other).value(key), 1);
    EXPECT_EQ(Settings(file).value(key), 2);
    EXPECT_FALSE(QFileInfo(file).isSymLink());
}

TEST_F(SettingsTest, AFolderInTheFilesPlaceIsPutAside)
{
    ASSERT_TRUE(QDir().mkpath(file + QStringLiteral("/inside")));

    Settings settings(file);

    EXPECT_TRUE(settings.setValue(key, 1));
    EXPECT_EQ(Settings(file).value(key), 1);
    EXPECT_TRUE(QFileInfo::exists(file + QStringLiteral(".unreadable/inside")));
}

TEST_F(SettingsTest, AProtectedFileIsNotWrittenOver)
{
    const OrdinaryUser user;
    const QTemporaryDir folder; // of that user's own
    file = folder.filePath(QStringLiteral("settings.json"));
    store("{}");
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));

    EXPECT_FALSE(Settings(file).setValue(key, 1));

    EXPECT_EQ(stored(), QByteArray("{}"));
}

TEST_F(SettingsTest, ARemovedKeyIsGoneFromTheFile)
{
    Settings settings(file);
    ASSERT_TRUE(settings.setValue(key, 1));

    ASSERT_TRUE(settings.remove(key));

    EXPECT_FALSE(stored().contains("projectFrameRate"));
}

TEST_F(SettingsTest, TheSupportFolderBelongsToItsUserAlone)
{
    const ApplicationSupport support(directory.filePath(QStringLiteral("Tessara")));

    const QFileInfo folder(support.directory());

    EXPECT_TRUE(folder.isDir());
    EXPECT_FALSE(folder.permissions() & (QFile::ReadGroup | QFile::ReadOther));
}

} // namespace
} // namespace tessara
