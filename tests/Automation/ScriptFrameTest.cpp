#include "Automation/ScriptFixture.h"

namespace tessara {
namespace {

class ScriptFrameTest : public ScriptTest
{
protected:
    ScriptFrameTest()
    {
        set("document.size", "[64, 36]");
        const QByteArray shape =
            addLayer("addCustomShapeLayer", "[[0, 0], [64, 18], [[0, 0], [1, 0], [1, 1], [0, 1]]]");
        set(shape + ".color", R"({"red": 1, "green": 0, "blue": 0, "alpha": 0.5})");
        set(shape + ".opacity", "1");
    }

    QByteArray quoted(const QString &name) const { return '"' + pathOf(name).toUtf8() + '"'; }
};

TEST_F(ScriptFrameTest, ARawFrameIsPremultipliedFromTheTop)
{
    const QJsonObject answer = call("frame.render", '[' + quoted("f.rgba") + ", null]").toObject();

    EXPECT_EQ(answer.value("width"), 64);
    EXPECT_EQ(answer.value("height"), 36);
    EXPECT_GT(answer.value("seconds").toDouble(), 0);
    const QByteArray bytes = bytesOf("f.rgba");
    ASSERT_EQ(bytes.size(), 64 * 36 * 4);
    EXPECT_NEAR(quint8(bytes[0]), 128, 1);
    EXPECT_NEAR(quint8(bytes[3]), 128, 1);
    EXPECT_EQ(bytes.right(4), QByteArray(4, '\0'));
}

TEST_F(ScriptFrameTest, APictureHasStraightAlphaAndItsBackground)
{
    call("frame.render", '[' + quoted("f.png") + ", null]");
    const QImage straight(pathOf("f.png"));
    EXPECT_NEAR(straight.pixelColor(5, 5).red(), 255, 1);
    EXPECT_NEAR(straight.pixelColor(5, 5).alpha(), 128, 1);

    call("frame.render",
         '[' + quoted("g.png") + R"(, {"red": 0, "green": 0, "blue": 1, "alpha": 1}])");

    EXPECT_EQ(QImage(pathOf("g.png")).pixelColor(5, 30), QColor(0, 0, 255));
}

TEST_F(ScriptFrameTest, FramesAreMadeAsAnOutputMakesThem)
{
    for (const char *kind : {"fill", "key", "externalKeyFill"})
        call("frame.make", QByteArray("[\"") + kind + "\", 64, 36, " + quoted(kind) + ']');

    EXPECT_NEAR(quint8(bytesOf("fill")[2]), 128, 1);
    EXPECT_NEAR(quint8(bytesOf("fill")[3]), 128, 1);
    EXPECT_NEAR(quint8(bytesOf("key")[0]), 128, 1);
    EXPECT_EQ(quint8(bytesOf("key")[3]), 255);
    EXPECT_NEAR(quint8(bytesOf("externalKeyFill")[2]), 128, 1);
    EXPECT_EQ(quint8(bytesOf("externalKeyFill")[3]), 0);
    EXPECT_EQ(bytesOf("fill").size(), 64 * 36 * 4);
}

TEST_F(ScriptFrameTest, WhatCannotBeWrittenIsAnError)
{
    EXPECT_EQ(callError("frame.render", R"(["/tmp/x.jpg", null])"),
              "a frame is written as .png or .rgba");
    EXPECT_NE(callError("frame.render", R"(["/no/such/folder/x.png", null])"), "");
    EXPECT_EQ(callError("frame.make", R"(["matte", 4, 4, "/tmp/x"])"),
              "no frame of kind 'matte': wanted fill, key or externalKeyFill");
    EXPECT_NE(callError("frame.make", R"(["fill", 4, 4, "/no/such/folder/x"])"), "");
    EXPECT_NE(callError("frame.make", R"(["fill", 0, 4, "/tmp/x"])"), "");
    EXPECT_NE(callError("frame.render", R"(["/tmp/x.png"])"), "");
}

TEST_F(ScriptFrameTest, AnOutputIsStartedWatchedAndStopped)
{
    set("app.deckLinkOutputRouting", R"("keyAndFill")");
    call("app.startDeckLinkOutput");
    call("clock.advance", "[0.1]");

    const QJsonObject frames = call("card.frames", "[0]").toObject();
    EXPECT_EQ(frames.value("sent"), 6);
    EXPECT_EQ(frames.value("format"), "BGRA");
    EXPECT_EQ(frames.value("rowBytes"), 7680);
    EXPECT_TRUE(frames.value("intervals").toObject().contains("p99"));
    EXPECT_TRUE(result(R"({"get": "card.devices"})")[1].toObject().value("outputEnabled").toBool());
    call("card.save", "[0, " + quoted("m.png") + ']');
    EXPECT_EQ(QImage(pathOf("m.png")).size(), QSize(1920, 1080));
    call("card.save", "[1, " + quoted("m.raw") + ']');
    EXPECT_EQ(bytesOf("m.raw").size(), 7680 * 1080);
    call("app.stopDeckLinkOutput");
    EXPECT_EQ(get("fill.isOutputRunning"), "false");
}

TEST_F(ScriptFrameTest, TheCardFailsAndLimitsAsItIsTold)
{
    call("card.fail", R"([0, "EnableVideoOutput", 1])");
    call("app.startDeckLinkOutput");
    EXPECT_EQ(get("app.lastErrorMessage"), R"("EnableVideoOutput failed.")");
    call("card.limit", R"([0, {"formats": ["2vuy"], "modes": ["1080p50"], "keying": false}])");
    call("app.startDeckLinkOutput");
    EXPECT_EQ(call("card.frames", "[0]").toObject().value("format"), "2vuy");
    call("app.stopDeckLinkOutput");
    call("card.limit", R"([0, {"rowBytes": 7744}])");
    call("fill.startOutput", R"(["standard"])");
    call("fill.stopOutput");
    call("card.remove", "[1]");
    call("fill.refreshDevices");
    EXPECT_EQ(jsonValue(get("fill.devices")).toArray().size(), 1);
    call("card.restore", "[1]");
}

TEST_F(ScriptFrameTest, TheCardNamesWhatItDoesNotHave)
{
    EXPECT_EQ(callError("card.fail", R"([0, "Fly", 1])"), "no call 'Fly' on device 0");
    EXPECT_NE(callError("card.fail", R"([0, "Keyer.Enable", -1])"), "");
    EXPECT_EQ(callError("card.frames", "[5]"), "no device 5");
    EXPECT_EQ(callError("card.remove", "[-1]"), "no device -1");
    EXPECT_NE(callError("card.save", R"([1, "/tmp/x.jpg"])"), "");
    for (const char *limits : {R"({"modes": "1080p50"})", R"({"modes": [5]})", R"({"speed": 1})",
                               R"({"keying": 1})", R"({"rowBytes": -4})", "[]", "null",
                               R"({"formats": ["RGB"]})", R"({"modes": ["9999p1"]})"})
        EXPECT_NE(callError("card.limit", QByteArray("[0, ") + limits + ']'), "") << limits;
}

TEST_F(ScriptFrameTest, AnOutputsSelectionIsSetByIndexAndMode)
{
    set("fill.selectedDeviceIndex", "1");
    EXPECT_EQ(get("fill.selectedDeviceIndex"), "1");
    const QJsonObject mode = jsonValue(get("fill.modes")).toArray().last().toObject();
    set("fill.selectedModeID", QByteArray::number(mode.value("modeID").toInteger()));
    EXPECT_EQ(jsonValue(get("fill.selectedMode")).toObject().value("name"), mode.value("name"));
    set("fill.selectedModeID", "null");
    EXPECT_EQ(get("fill.selectedMode"), "null");
    EXPECT_NE(setError("fill.selectedDeviceIndex", "1.5"), "");
    EXPECT_NE(setError("app.deckLinkOutputRouting", "\"everywhere\""), "");
}

} // namespace
} // namespace tessara
