#include "Automation/ScriptFixture.h"

#include <QRegularExpression>

namespace tessara {
namespace {

class ScriptEngineTest : public ScriptTest
{
};

TEST_F(ScriptEngineTest, BlankLinesAndCommentsHaveNoReply)
{
    for (const char *line : {"", "\n", "   \t ", "# a word", "  # indented", "#{\"get\": 1}"})
        EXPECT_FALSE(engine.answerLine(line).has_value());
    EXPECT_TRUE(engine.allSucceeded());
}

TEST_F(ScriptEngineTest, AnIdComesBackWhateverItIs)
{
    for (const char *id : {"7", "\"seven\"", "null", "[1,2]", "{\"a\":1}"}) {
        const QByteArray text(id);
        const QJsonObject good = reply(R"({"id": )" + text + R"(, "get": "clock.now"})");
        EXPECT_EQ(jsonText(good.value("id")), text);
        const QJsonObject bad = reply(R"({"id": )" + text + R"(, "get": "clock.never"})");
        EXPECT_EQ(jsonText(bad.value("id")), text);
        EXPECT_FALSE(bad.value("ok").toBool(true));
    }
    EXPECT_FALSE(reply(R"({"get": "clock.now"})").contains("id"));
}

TEST_F(ScriptEngineTest, EveryObjectIsATarget)
{
    EXPECT_EQ(get("app.isDeckLinkOutputRunning"), "false");
    EXPECT_EQ(get("document.size"), "[1920,1080]");
    EXPECT_EQ(get("fill.sdkAvailable"), "true");
    EXPECT_EQ(get("key.isOutputRunning"), "false");
    EXPECT_EQ(get("clock.now"), "0");
    EXPECT_EQ(result(R"({"get": "card.devices"})").toArray().size(), 2);
    const QByteArray layer = addLayer("addTextLayer");
    EXPECT_EQ("layer:" + jsonValue(get(layer + ".id")).toString().toLatin1(), layer);
}

TEST_F(ScriptEngineTest, AnErrorNamesWhatIsWrong)
{
    const QByteArray layer = addLayer("addTextLayer");

    EXPECT_EQ(error(R"({"get": "nobody.size"})"), "unknown target 'nobody'");
    EXPECT_EQ(error("{\"get\": \"" + layer + ".fontsize\"}"),
              "no property 'fontsize' on TextLayer");
    EXPECT_EQ(callError("document.fly"), "no operation 'fly' on CanvasDocument");
    EXPECT_EQ(callError("document.addTextLayer", "[1]"), "'addTextLayer' takes 0 arguments, not 1");
    EXPECT_EQ(callError("document.renameLayer", "[]"), "'renameLayer' takes 2 arguments, not 0");
    EXPECT_EQ(callError("document.renameLayer", "[1, \"x\"]"),
              "argument 1 of 'renameLayer': wanted a UUID");
    EXPECT_EQ(setError(layer + ".fontSize", "\"large\""), "property 'fontSize': wanted a number");
    EXPECT_EQ(setError("document.layerOrder", "[]"),
              "property 'layerOrder' on CanvasDocument is read-only");
    EXPECT_EQ(error(R"({"get": "layer:00000000-0000-0000-0000-000000000001.name"})"),
              "no layer '00000000-0000-0000-0000-000000000001'");
    EXPECT_FALSE(engine.allSucceeded());
}

TEST_F(ScriptEngineTest, ARequestHasOneVerbAndOnlyItsOwnKeys)
{
    for (const char *line :
         {"{}", R"({"id": 1})", R"({"get": "clock.now", "call": "clock.now"})",
          R"({"get": "clock.now", "value": 1})", R"({"get": "clock.now", "args": []})",
          R"({"call": "document.addTextLayer", "value": 1})", R"({"get": "clock.now", "x": 1})",
          R"({"get": "clock"})", R"({"get": "clock."})", R"({"get": ".now"})", R"({"get": 5})",
          R"({"set": "document.size"})", R"({"call": "document.addTextLayer", "args": 5})",
          R"({"call": "document.addTextLayer", "args": null})"})
        EXPECT_NE(error(line), "");
}

TEST_F(ScriptEngineTest, ArgumentsMayBeLeftOutWhereThereAreNone)
{
    EXPECT_TRUE(reply(R"({"call": "document.addTextLayer"})").value("ok").toBool());
}

TEST_F(ScriptEngineTest, WhatIsNotARequestIsAnErrorAndTheRunGoesOn)
{
    for (const QByteArray &line :
         {QByteArray("nonsense"), QByteArray("{"), QByteArray("[]"), QByteArray("5"),
          QByteArray("{\"set\": \"document.size\", \"value\": [NaN, 1]}"),
          QByteArray("{\"set\": \"document.size\", \"value\": [1e999, 1]}"),
          QByteArray("{\"get\": \"\xff\xfe\"}"), QByteArray("\x00\x01\x02\x7f", 4),
          QByteArray("{\"get\": \"clock.now\0\"}", 21), QByteArray(100000, '['),
          QByteArray(100000, '{'),
          QByteArray("{\"id\": ") + QByteArray(5000, '[') + QByteArray(5000, ']') + "}"})
        EXPECT_NE(error(line), "");
    EXPECT_EQ(get("clock.now"), "0");
}

TEST_F(ScriptEngineTest, AZeroByteDoesNotShortenAName)
{
    EXPECT_NE(error(R"({"get": "document.size\u0000x"})"), "");
    EXPECT_NE(setError("document.size\\u0000x", "[1, 2]"), "");
    EXPECT_NE(callError("document.addTextLayer\\u0000"), "");
}

TEST_F(ScriptEngineTest, ATextOfTenMegabytesIsATextLikeAnyOther)
{
    const QByteArray layer = addLayer("addTextLayer");
    const QByteArray text(10'000'000, 'x');

    set(layer + ".name", '"' + text + '"');

    EXPECT_EQ(get(layer + ".name").size(), text.size() + 2);
    EXPECT_NE(error("{\"get\": \"" + text + "\"}"), "");
    EXPECT_NE(error(text), "");
}

TEST_F(ScriptEngineTest, NumbersWithoutMeasureAreErrorsAndNoFrameDies)
{
    for (const char *size : {"[1e300, 1]", "[-1e300, 1]", "[9.3e18, 10]", "[1, 1e16]"})
        EXPECT_NE(setError("document.size", size), "");
    EXPECT_NE(callError("clock.advance", "[1e300]"), "");
    EXPECT_NE(callError("clock.advance", "[-1]"), "");
    EXPECT_NE(callError("frame.make", R"(["fill", 2000000000, 2, "/tmp/never"])"), "");
    EXPECT_NE(callError("frame.make", R"(["fill", 2, 2000000000, "/tmp/never"])"), "");
    EXPECT_NE(callError("frame.make", R"(["fill", -1, 2, "/tmp/never"])"), "");
    EXPECT_NE(callError("card.frames", "[1e12]"), "");
    EXPECT_NE(callError("card.frames", "[0.5]"), "");

    set("document.size", "[1e9, 1e9]");

    EXPECT_EQ(callError("frame.render", R"(["/tmp/never.png", null])"),
              "Could not allocate bitmap buffer.");
    call("app.startDeckLinkOutput");
    EXPECT_EQ(get("app.lastErrorMessage"), "\"Could not allocate bitmap buffer.\"");
}

TEST_F(ScriptEngineTest, OperationsThatCreateALayerAnswerItsId)
{
    const QRegularExpression upperUuid(
        "^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$");
    QStringList ids;
    for (const auto &[operation, arguments] :
         std::initializer_list<std::pair<const char *, const char *>>{
             {"document.addTextLayer", "[]"},
             {"document.addTemplateShapeLayer", R"(["star"])"},
             {"document.addCustomShapeLayer", "[[1, 2], [30, 40], [[0, 0], [1, 0], [0, 1]]]"},
             {"document.addWebLayer", "[]"},
             {"document.addWindowCaptureLayer", "[]"},
             {"document.addCountdownLayer", "[]"},
             {"document.addModel3DLayer", R"(["/tmp/none.obj"])"},
             {"document.addScoreLayer", R"(["wideBroadcast", "futsal"])"},
             {"app.addTimerLayer", "[]"}}) {
        const QString id = call(operation, arguments).toString();
        EXPECT_TRUE(upperUuid.match(id).hasMatch()) << operation << " " << id.toStdString();
        ids.append(id);
    }
    const QString copy =
        call("document.duplicateLayer", "[\"" + ids.first().toLatin1() + "\"]").toString();
    EXPECT_TRUE(upperUuid.match(copy).hasMatch());
    EXPECT_EQ(jsonValue(get("document.layerOrder")).toArray().size(), 10);
    EXPECT_EQ(call("document.duplicateLayer", R"(["00000000-0000-0000-0000-000000000001"])"),
              QJsonValue());
}

TEST_F(ScriptEngineTest, APictureIsAddedByItsPathOrSaysWhyNot)
{
    QImage(40, 20, QImage::Format_RGB32).save(pathOf("p.png"));

    const QByteArray layer = addLayer("addImageLayer", "[\"" + pathOf("p.png").toLatin1() + "\"]");

    EXPECT_EQ(get(layer + ".sourceURL"), '"' + pathOf("p.png").toLatin1() + '"');
    EXPECT_EQ(callError("document.addImageLayer", R"(["/nowhere.png"])"),
              "Could not load image file.");
}

TEST_F(ScriptEngineTest, ValuesHaveTheirForms)
{
    const QByteArray text = addLayer("addTextLayer");
    set(text + ".position", "[12.5, -3]");
    EXPECT_EQ(get(text + ".position"), "[12.5,-3]");
    set(text + ".color", R"({"red": 1, "green": 0.5, "blue": 0, "alpha": 0.25})");
    EXPECT_EQ(get(text + ".color"), R"({"alpha":0.25,"blue":0,"green":0.5,"red":1})");
    set(text + ".horizontalAlignment", R"("trailing")");
    EXPECT_EQ(get(text + ".horizontalAlignment"), R"("trailing")");
    EXPECT_EQ(get(text + ".fontFamily"), "null");
    set(text + ".fontFamily", R"("Arial")");
    EXPECT_EQ(get(text + ".fontFamily"), R"("Arial")");
    set(text + ".fontFamily", "null");
    EXPECT_EQ(get(text + ".fontFamily"), "null");
    set(text + ".textBoxSize", "[300, 40]");
    EXPECT_EQ(get(text + ".textBoxSize"), "[300,40]");
    const QByteArray capture = addLayer("addWindowCaptureLayer");
    EXPECT_EQ(get(capture + ".cropRectNormalized"), "null");
    const QByteArray id = text.mid(6);
    EXPECT_EQ(jsonText(call("document.layerFrame", "[\"" + id + "\"]")).left(2), "[[");
}

TEST_F(ScriptEngineTest, ValuesOfAnotherTypeAreRefused)
{
    const QByteArray text = addLayer("addTextLayer");
    const std::pair<const char *, const char *> bad[] = {
        {".position", "[1]"},
        {".position", "[1, 2, 3]"},
        {".position", "[\"1\", 2]"},
        {".position", "{}"},
        {".position", "null"},
        {".isHidden", "1"},
        {".isHidden", "\"true\""},
        {".name", "5"},
        {".name", "null"},
        {".color", "{}"},
        {".color", "{\"red\": 1}"},
        {".color", "\"red\""},
        {".fontSize", "null"},
        {".fontWeight", "\"bold\""},
        {".textBoxSize", "[1]"},
        {".horizontalAlignment", "\"middle\""},
        {".horizontalAlignment", "1"},
        {".horizontalAlignment", "\"leading|trailing\""}};
    for (const auto &[property, value] : bad)
        EXPECT_NE(setError(text + property, value), "");
    EXPECT_EQ(setError(text + ".horizontalAlignment", "\"Center\""),
              "property 'horizontalAlignment': wanted one of leading, center, trailing");
}

TEST_F(ScriptEngineTest, MapsAreKeyedByUpperCaseIdsAndSetsAscend)
{
    QByteArrayList ids;
    for (int index = 0; index < 5; ++index)
        ids.append(addLayer("addTextLayer").mid(6));
    const QByteArray list = "[\"" + ids.join("\",\"") + "\"]";
    set("document.selectedLayerIDs", list);

    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(get("document.selectedLayerIDs"), "[\"" + ids.join("\",\"") + "\"]");
    set("document.layerVisibility", "{\"" + ids[0].toLower() + "\": 0.5}");
    EXPECT_EQ(get("document.layerVisibility"), "{\"" + ids[0] + "\":0.5}");
    set("document.cueTargets", "{\"" + ids[1] + "\": true}");
    EXPECT_EQ(get("document.cueTargets"), "{\"" + ids[1] + "\":true}");
    EXPECT_NE(setError("document.layerVisibility", R"({"nobody": 0.5})"), "");
    set("document.layerRunSettings",
        "{\"" + ids[0] + R"(": {"transitionStyle": "cut", "dissolveDuration": 2}})");
    EXPECT_EQ(get("document.layerRunSettings"),
              "{\"" + ids[0]
                  + R"(":{"autoOutDuration":0,"dissolveDuration":2,"transitionStyle":"cut"}})");
    EXPECT_NE(setError("document.layerRunSettings", "{\"" + ids[0] + R"(": {"style": "cut"}})"),
              "");
}

TEST_F(ScriptEngineTest, TheStateIsTheWholeDocument)
{
    const QByteArray back = addLayer("addTextLayer");
    const QByteArray front = addLayer("addTemplateShapeLayer", R"(["star"])");
    const QJsonObject state = result(R"({"get": "document.state"})").toObject();

    EXPECT_EQ(state.keys(), (QStringList{"cueTargets", "isDrawingCustomShape", "layerOrder",
                                         "layerRunSettings", "layerVisibility", "layers",
                                         "presetGroupNames", "selectedLayerIDs", "size"}));
    const QJsonArray layers = state.value("layers").toArray();
    ASSERT_EQ(layers.size(), 2);
    const QJsonObject text = layers[0].toObject();
    EXPECT_EQ(text.value("kind"), "text");
    EXPECT_EQ("layer:" + text.value("id").toString().toLatin1(), back);
    for (const char *name :
         {"name", "text", "fontSize", "fontFamily", "fontWeight", "color", "outlineColor",
          "outlineWidth", "position", "textBoxSize", "horizontalAlignment", "fieldKey", "fieldKind",
          "isHidden", "isLocked", "presetGroupID"})
        EXPECT_TRUE(text.contains(name)) << name;
    EXPECT_EQ(layers[1].toObject().value("kind"), "shape");
    EXPECT_EQ(layers[1].toObject().value("shapeKind"), "star");
    EXPECT_EQ("layer:" + layers[1].toObject().value("id").toString().toLatin1(), front);
}

TEST_F(ScriptEngineTest, TheManualClockRunsWhatFallsDue)
{
    const QByteArray id = addLayer("addTextLayer").mid(6);
    set("document.layerRunSettings", "{\"" + id + R"(": {"dissolveDuration": 1}})");
    call("document.takeLayerOutNow", "[\"" + id + "\"]");
    call("clock.advance", "[0.5]");
    EXPECT_EQ(get("clock.now"), "0.5");
    const double half =
        result(R"({"get": "document.layerVisibility"})").toObject().value(id).toDouble();
    EXPECT_NEAR(half, 0.5, 0.02);

    call("clock.advance", "[0.6]");

    EXPECT_EQ(get("layer:" + id + ".isHidden"), "true");
}

TEST_F(ScriptEngineTest, TheWallClockIsSetAndMovesWithTheTime)
{
    call("clock.setWallClock", R"(["2026-11-20T20:29:58"])");
    const QByteArray layer = addLayer("addTextLayer");
    set(layer + ".fieldKind", R"("timer")");
    call("clock.advance", "[3]");

    EXPECT_TRUE(get(layer + ".text").contains("30"));
    EXPECT_EQ(callError("clock.setWallClock", R"(["yesterday"])"),
              "'yesterday' is no date and time");
}

TEST_F(ScriptEngineTest, ARemovedLayerIsNoTargetAnyMore)
{
    const QByteArray layer = addLayer("addTextLayer");
    call("document.removeLayer", "[\"" + layer.mid(6) + "\"]");

    EXPECT_EQ(error("{\"get\": \"" + layer + ".name\"}"),
              "no layer '" + layer.mid(6).toStdString() + "'");
}

TEST_F(ScriptEngineTest, PrivateSlotsSignalsAndTheObjectsOwnAreOutOfReach)
{
    for (const char *operation :
         {"document.notifyLayerChanged", "document.changed", "document.deleteLater",
          "document.destroyed", "app.outputChanged"})
        EXPECT_NE(callError(operation), "");
    EXPECT_NE(error(R"({"get": "document.objectName"})"), "");
}

} // namespace
} // namespace tessara
