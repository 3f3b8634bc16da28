// Files that scripts name, on disks that fail and among files that are none.
#include "Automation/ScriptFixture.h"
#include "Base/HostileDisk.h"

#include <sys/stat.h>

namespace tessara {
namespace {

class ScriptFilesTest : public ScriptTest
{
protected:
    QByteArray quoted(const QString &path) const { return "[\"" + path.toUtf8() + "\"]"; }
};

TEST_F(ScriptFilesTest, AFullDiskLeavesTheOldFiles)
{
    SmallDisk disk;
    TESSARA_NEEDS(disk);
    const QString macros = disk.path() + "/macros.json";
    const QString frame = disk.path() + "/frame.png";
    call("macros.exportJSON", quoted(macros));
    call("frame.render", "[\"" + frame.toUtf8() + "\", null]");
    const qint64 frameBytes = QFileInfo(frame).size();
    disk.fill();

    EXPECT_EQ(callError("macros.exportJSON", quoted(macros)),
              "'" + macros.toStdString() + "' can't be written: No space left on device");
    EXPECT_EQ(callError("frame.render", "[\"" + frame.toUtf8() + "\", null]"),
              frame.toStdString() + ": No space left on device");
    EXPECT_EQ(callError("card.save", "[0, \"" + frame.toUtf8() + "\"]"), "device 0 has no frame");

    QFile written(macros);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), "[]");
    EXPECT_EQ(QFileInfo(frame).size(), frameBytes);
}

TEST_F(ScriptFilesTest, WhatIsNoMacroFileIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo(qPrintable(pathOf("pipe")), 0600), 0);
    QFile huge(pathOf("huge.json"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_TRUE(huge.resize(1LL << 30)); // sparse

    const std::string sentence = "argument 1 of 'importMacros': can't be read: ";
    EXPECT_EQ(callError("macros.importMacros", quoted(pathOf("pipe"))),
              sentence + "It is no ordinary file");
    EXPECT_EQ(callError("macros.importMacros", quoted("/dev/zero")),
              sentence + "It is no ordinary file");
    EXPECT_EQ(callError("macros.importMacros", quoted(pathOf("huge.json"))),
              sentence + "It is larger than 64 MB");
    EXPECT_EQ(callError("macros.importMacros", quoted(folder.path())), sentence + "Is a directory");
    EXPECT_EQ(callError("macros.importMacros", "[7]"),
              "argument 1 of 'importMacros': wanted the path of a file");
    EXPECT_EQ(get("macros.macros"), "[]");
}

} // namespace
} // namespace tessara
