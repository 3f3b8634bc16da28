#include "Automation/ScriptFixture.h"

namespace tessara {
namespace {

/// Cues, groups and the rows of the show, reached from a script.
class ScriptRunlistTest : public ScriptTest
{
protected:
    /// Off air, and on and off with a cut.
    QByteArray addTitle()
    {
        const QByteArray id = addLayer("addTextLayer").mid(6);
        call("document.setLayerHidden", "[\"" + id + "\", true]");
        call("document.setRunTransitionStyle", R"(["cut", ")" + id + "\"]");
        return id;
    }

    bool isOnAir(const QByteArray &id) { return get("layer:" + id + ".isHidden") == "false"; }

    /// The id of a new group of the layers.
    QByteArray group(const QByteArray &first, const QByteArray &second)
    {
        call("document.groupLayers", "[[\"" + first + "\", \"" + second + "\"], \"Lower third\"]");
        return jsonValue(get("document.selectedPresetGroupID")).toString().toLatin1();
    }
};

TEST_F(ScriptRunlistTest, CuesAreSetReadAndTaken)
{
    const QByteArray title = addTitle();
    const QByteArray logo = addTitle();

    call("document.toggleCue", "[\"" + title + "\"]");
    EXPECT_EQ(get("document.cueTargets"), "{\"" + title + "\":true}");
    set("document.cueTargets", "{\"" + title + "\":true,\"" + logo + "\":true}");
    EXPECT_EQ(get("runlist.cueCount"), "2");
    EXPECT_FALSE(isOnAir(title));

    call("document.takeCues");

    EXPECT_TRUE(isOnAir(title));
    EXPECT_TRUE(isOnAir(logo));
    EXPECT_EQ(get("document.cueTargets"), "{}");
    EXPECT_EQ(get("runlist.onAirCount"), "2");
}

TEST_F(ScriptRunlistTest, AGroupIsSetCuedAndTakenAsOne)
{
    const QByteArray panel = addTitle();
    const QByteArray title = addTitle();
    const QByteArray groupID = group(panel, title);
    const QByteArray target = "[\"" + groupID + "\"]";
    call("document.setPresetGroupRunTransitionStyle", R"(["presetReveal", ")" + groupID + "\"]");
    call("document.setPresetGroupRunDissolveDuration", "[0.5, \"" + groupID + "\"]");
    call("document.setPresetGroupRunAutoOutDuration", "[2, \"" + groupID + "\"]");
    const QJsonObject settings = call("document.presetGroupRunSettings", target).toObject();
    EXPECT_EQ(settings.value("transitionStyle"), "presetReveal");
    EXPECT_EQ(settings.value("dissolveDuration"), 0.5);
    EXPECT_EQ(settings.value("autoOutDuration"), 2);

    EXPECT_TRUE(call("document.cueTargetForPresetGroup", target).isNull());
    call("document.toggleCueForPresetGroup", target);
    EXPECT_EQ(call("document.cueTargetForPresetGroup", target), true);
    call("document.clearCueForPresetGroup", target);
    EXPECT_EQ(get("document.cueTargets"), "{}");

    call("document.takePresetGroupInNow", target);
    call("clock.advance", "[1]");
    EXPECT_TRUE(isOnAir(panel) && isOnAir(title));
    call("clock.advance", "[3]");
    EXPECT_FALSE(isOnAir(panel) || isOnAir(title));
}

TEST_F(ScriptRunlistTest, TheRowsOfTheShowAreClickedMovedAndTakenOut)
{
    const QByteArray panel = addTitle();
    const QByteArray title = addTitle();
    const QByteArray logo = addTitle();
    const QByteArray groupID = group(panel, title);
    EXPECT_EQ(get("runlist.entryIDs"), "[\"" + logo + "\",\"" + groupID + "\"]");

    call("runlist.click", "[\"" + logo + "\", true, false]"); // in cue mode
    EXPECT_EQ(get("document.cueTargets"), "{\"" + logo + "\":true}");
    call("runlist.click", "[\"" + groupID + "\", false, true]"); // on a locked list
    EXPECT_FALSE(isOnAir(panel));
    call("runlist.click", "[\"" + groupID + "\", false, false]");
    EXPECT_TRUE(isOnAir(panel) && isOnAir(title));

    EXPECT_EQ(call("runlist.dropTarget", "[0, 42]"), 1);
    call("runlist.moveEntries", "[0, 2]");
    EXPECT_EQ(get("runlist.entryIDs"), "[\"" + groupID + "\",\"" + logo + "\"]");

    call("runlist.takeAllOut");
    EXPECT_EQ(get("runlist.shownLayerCount"), "0");
    call("runlist.remove", "[\"" + groupID + "\"]");
    EXPECT_EQ(get("document.layerOrder"), "[\"" + logo + "\"]");
}

TEST_F(ScriptRunlistTest, AScoreBarIsAddedAndRunFromTheScript)
{
    const QByteArray bar =
        "layer:"
        + call("document.addScoreLayer", R"(["titleBar", "badminton"])").toString().toLatin1();

    set(bar + ".homeScore", "21");
    set(bar + ".homeTeam", R"("Siam")");

    EXPECT_EQ(get(bar + ".template"), "\"titleBar\"");
    EXPECT_EQ(get(bar + ".homeScore"), "21");
    EXPECT_NE(setError(bar + ".homeScore", "\"many\""), "");
    EXPECT_NE(callError("document.addScoreLayer", R"(["titleBar", "chess"])"), "");
}

} // namespace
} // namespace tessara
