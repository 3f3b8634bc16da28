#include "Base/ApplicationSupport.h"
#include "Base/Settings.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessara {
namespace {

class SettingsTest : public testing::Test
{
protected:
    QByteArray stored() const
    {
        QFile content(file);
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

    QFile aside(file + QStringLiteral(".unreadable"));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), QByteArray("{ torn"));
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
