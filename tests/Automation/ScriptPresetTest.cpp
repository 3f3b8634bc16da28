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
