#include "Automation/ScriptFixture.h"

namespace tessara {
namespace {

/// Macros and the history of the document, reached from a script.
class ScriptMacrosTest : public ScriptTest
{
protected:
    /// The id of a title whose changes count.
    QByteArray addTitle()
    {
        const QByteArray id = addLayer("addTextLayer").mid(6);
        call("clock.advance", "[0.6]");
        return id;
    }

    QByteArray path(const char *name) const
    {
        return directory.filePath(QLatin1String(name)).toUtf8();
    }

    QJsonObject macro(int index)
    {
        return result(R"({"get": "macros.macros"})").toArray().at(index).toObject();
    }

    QTemporaryDir directory;
};

TEST_F(ScriptMacrosTest, AShowIsRecordedAndPlayedAgain)
{
    const QByteArray id = addTitle();
    set("macros.isRecording", "true");
    call("document.setLayerHidden", "[\"" + id + "\", true]");
    call("macros.addPause", "[1]");
    set("layer:" + id + ".text", R"("Good evening")");
    call("clock.advance", "[0.6]");
    EXPECT_EQ(result(R"({"get": "macros.recordingSteps"})").toArray().size(), 3);
    call("macros.stopRecording", R"(["Intro"])");
    EXPECT_EQ(macro(0).value("name"), "Intro");
    EXPECT_EQ(macro(0).value("steps").toArray().size(), 3);
    call("document.setLayerHidden", "[\"" + id + "\", false]");
    set("layer:" + id + ".text", R"("Something else")");

    call("macros.runMacroAtIndex", "[0]");
    EXPECT_EQ(get("macros.isRunning"), "true");
    EXPECT_EQ(get("macros.runningMacroID"), jsonText(macro(0).value("id")));
    call("clock.advance", "[1]");

    EXPECT_EQ(get("layer:" + id + ".isHidden"), "true");
    EXPECT_EQ(get("layer:" + id + ".text"), R"("Good evening")");
    EXPECT_EQ(get("macros.runningMacroID"), "null");
    const QJsonArray log = result(R"({"get": "macros.log"})").toArray();
    EXPECT_EQ(log.last().toObject().value("isRecorded"), false);
}

TEST_F(ScriptMacrosTest, AMacroAStepAndItsKindAreGivenAsInAFile)
{
    const QByteArray id = addTitle();
    const QByteArray given = R"({"id": "B7D4B6C2-0000-4000-8000-000000000001", "name": "Given",)"
                             R"( "steps": [{"id": "B7D4B6C2-0000-4000-8000-000000000002",)"
                             R"( "kind": {"type": "setProp", "layerID": ")"
                             + id + R"(", "layerName": "", "key": "text", "value": "Now"}}]})";
    call("macros.runMacro", "[" + given + "]");
    call("clock.advance", "[0]");
    EXPECT_EQ(get("layer:" + id + ".text"), R"("Now")");
    EXPECT_EQ(callError("macros.runMacro", R"([{"name": "No id"}])"),
              "argument 1 of 'runMacro': wanted a macro");

    QFile file(directory.filePath(QStringLiteral("macros.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write('[' + given + ']');
    file.close();
    EXPECT_EQ(call("macros.importMacros", "[\"" + path("macros.json") + "\"]"), 1);
    const QByteArray macroID = macro(0).value("id").toString().toLatin1();
    call("macros.updateStep", "[\"" + macroID
                                  + R"(", "B7D4B6C2-0000-4000-8000-000000000002",)"
                                    R"( {"type": "pause", "seconds": 2}])");
    call("macros.updateMacroLoop", "[\"" + macroID + "\", true, 3]");
    call("macros.updateMacroSchedule", "[\"" + macroID + R"(", true, "20:30:00"])");
    call("macros.renameMacro", "[\"" + macroID + R"(", "Evening"])");
    EXPECT_EQ(macro(0).value("loopCount"), 3);
    EXPECT_EQ(macro(0).value("name"), "Evening");
    EXPECT_EQ(jsonText(macro(0).value("steps").toArray().at(0).toObject().value("kind")),
              R"({"seconds":2,"type":"pause"})");

    const QByteArray exported = path("Tessara Macros.json");
    EXPECT_EQ(call("macros.exportJSON", "[\"" + exported + "\"]").toString().toUtf8(), exported);
    QFile written(QString::fromUtf8(exported));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QJsonDocument::fromJson(written.readAll()).array().at(0).toObject(), macro(0));
    call("macros.deleteMacro", "[\"" + macroID + "\"]");
    EXPECT_EQ(get("macros.macros"), "[]");
}

TEST_F(ScriptMacrosTest, FilesThatCannotBeReadOrWrittenAreErrorsOrNoMacros)
{
    EXPECT_EQ(callError("macros.importMacros", "[\"" + path("missing.json") + "\"]"),
              "argument 1 of 'importMacros': can't be read: No such file or directory");
    EXPECT_NE(callError("macros.exportJSON", "[\"" + path("no/such/folder.json") + "\"]"), "");
    EXPECT_NE(callError("macros.exportJSON"), "");
    QFile file(directory.filePath(QStringLiteral("broken.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[{");
    file.close();
    EXPECT_EQ(call("macros.importMacros", "[\"" + path("broken.json") + "\"]"), 0);
}

TEST_F(ScriptMacrosTest, AMacroFiresByTheWallClock)
{
    const QByteArray id = addTitle();
    set("macros.isRecording", "true");
    call("document.setLayerHidden", "[\"" + id + "\", true]");
    call("macros.stopRecording", R"(["Out"])");
    call("document.setLayerHidden", "[\"" + id + "\", false]");
    const QByteArray macroID = macro(0).value("id").toString().toLatin1();
    call("macros.updateMacroSchedule", "[\"" + macroID + R"(", true, "20:30:00"])");
    call("clock.setWallClock", R"(["2026-11-20T20:29:58"])");

    call("clock.advance", "[1.9]");
    EXPECT_EQ(get("layer:" + id + ".isHidden"), "false");
    call("clock.advance", "[2]");
    EXPECT_EQ(get("layer:" + id + ".isHidden"), "true");
}

TEST_F(ScriptMacrosTest, TheHistoryIsReadAndWalked)
{
    const QByteArray id = addTitle();
    set("layer:" + id + ".text", R"("Good evening")");
    call("clock.advance", "[0.6]");
    EXPECT_EQ(get("undo.undoLabel"), R"("Edit Text")");
    EXPECT_EQ(get("undo.cursor"), "1");

    call("undo.undo");
    EXPECT_EQ(get("layer:" + id + ".text"), R"("Text 1")");
    EXPECT_EQ(get("undo.redoLabel"), R"("Edit Text")");
    call("undo.redo");
    EXPECT_EQ(get("layer:" + id + ".text"), R"("Good evening")");
    EXPECT_EQ(get("undo.canRedo"), "false");
    EXPECT_NE(setError("undo.cursor", "0"), "");
}

} // namespace
} // namespace tessara
