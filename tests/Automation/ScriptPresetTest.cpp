#include "Automation/ScriptFixture.h"

namespace tessara {
namespace {

/// The library of presets, reached from a script.
using ScriptPresetTest = ScriptTest;

TEST_F(ScriptPresetTest, APresetIsGivenAndReadInTheFormOfItsFile)
{
    call("app.saveTemplatePreset", R"([{"id": "a", "name": "A", "rects": [{"name": "Bar",
        "position": {"x": 1, "y": 2}, "size": [30, 40], "cornerRadius": 0, "opacity": 1,
        "color": {"red": 1, "green": 0, "blue": 0, "alpha": 1}}]}])");

    const QJsonArray presets = jsonValue(get("app.userTextPresets")).toArray();
    ASSERT_EQ(presets.size(), 1);
    EXPECT_EQ(presets[0]["rects"][0]["position"], (QJsonArray{1, 2}));
    EXPECT_EQ(presets[0]["rects"][0]["kind"], "rectangle");
    EXPECT_EQ(get("app.visibleUserTextPresets"), get("app.userTextPresets"));
    EXPECT_EQ(get("app.lastErrorMessage"), "null");

    call("app.deleteUserPreset", R"([{"id": "a", "name": "A"}])");
    EXPECT_EQ(get("app.userTextPresets"), "[]");
}

TEST_F(ScriptPresetTest, APresetIsAppliedAndItsFieldsAreFilledIn)
{
    const QByteArray preset = R"({"id": "a", "name": "Lower third", "entries": [{"name": "Name",
        "text": "Nobody", "fontSize": 40, "position": [1, 2], "fieldKey": "Name", "fieldKind": "text",
        "color": {"red": 1, "green": 1, "blue": 1, "alpha": 1}}, {"name": "Score", "text": "2",
        "fontSize": 40, "position": [1, 2], "fieldKind": "score",
        "color": {"red": 1, "green": 1, "blue": 1, "alpha": 1}}]})";
    call("document.addTextPreset", "[" + preset + "]");
    EXPECT_EQ(get("document.dynamicTemplateFields"),
              R"([{"key":"name","kind":"text","value":"Nobody"},)"
              R"({"key":"score","kind":"score","value":"2"}])");

    call("document.setDynamicTemplateFieldValue", R"(["Kamon", "NAME"])");
    call("document.adjustDynamicTemplateScore", R"(["score", 1])");
    EXPECT_EQ(get("document.dynamicTemplateFields"),
              R"([{"key":"name","kind":"text","value":"Kamon"},)"
              R"({"key":"score","kind":"score","value":"3"}])");
    EXPECT_EQ(call("document.textLayerCount", R"(["name"])"), 1);
    EXPECT_EQ(call("document.dynamicImageContentMode", R"(["logo"])"), "fitInside");
    EXPECT_EQ(callError("document.replaceDynamicImageField", R"(["logo", "/no/such.png"])"),
              "Could not load image file.");
}

TEST_F(ScriptPresetTest, TheStoreIsReachedAndAPresetAppliedByItsId)
{
    call("presets.save", R"([{"id": "mine", "name": "Mine"}])");
    EXPECT_EQ(call("presets.loadAll").toArray().size(), 1);
    EXPECT_EQ(get("presets.userTextPresets"), "[]"); // until the application saves or loads
    EXPECT_FALSE(jsonValue(get("presets.systemPresets")).toArray().isEmpty());
    const QByteArray builtIn =
        jsonText(jsonValue(get("presets.systemPresets")).toArray().at(0).toObject().value("id"));

    call("app.prefetchPresets");
    call("app.applyPreset", "[" + builtIn + "]");
    EXPECT_NE(get("document.layerOrder"), "[]");
    const QByteArray applied = get("document.layerOrder");
    call("app.applyPreset", R"(["no such preset"])");
    EXPECT_EQ(get("document.layerOrder"), applied);

    call("presets.remove", R"([{"id": "mine", "name": "Mine"}])");
    EXPECT_TRUE(call("presets.loadAll").toArray().isEmpty());
}

TEST_F(ScriptPresetTest, WhatIsNoPresetIsAnError)
{
    EXPECT_EQ(callError("app.saveTemplatePreset", R"([{"id": "a"}])"),
              "argument 1 of 'saveTemplatePreset': name: missing");
    EXPECT_EQ(get("app.userTextPresets"), "[]");
}

TEST_F(ScriptPresetTest, TheDocumentBecomesAPreset)
{
    addLayer("addTextLayer");

    call("app.snapshotDocument", R"(["Mine", null])");
    call("app.snapshotDocument", R"(["Other", "other"])");

    const QJsonArray presets = jsonValue(get("app.userTextPresets")).toArray();
    ASSERT_EQ(presets.size(), 2);
    EXPECT_EQ(presets[0]["name"], "Mine");
    EXPECT_EQ(presets[0]["entries"].toArray().size(), 1);
    EXPECT_EQ(presets[1]["id"], "other");
}

} // namespace
} // namespace tessara
