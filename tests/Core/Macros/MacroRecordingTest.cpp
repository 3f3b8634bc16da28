#include "Core/Macros/MacroFixture.h"

namespace tessara {
namespace {

class MacroRecordingTest : public MacroFixture
{
protected:
    const MacroStep::Kind &lastKind() const { return macros.recordingSteps().last().kind; }
};

TEST_F(MacroRecordingTest, TypingIsOneStepWithTheLastText)
{
    TextLayer *title = addTitle();
    startRecording();

    for (const char *typed : {"H", "He", "Hel", "Hell", "Hello"}) {
        title->setText(QLatin1String(typed));
        clock.advance(milliseconds{100});
    }
    settle();

    ASSERT_EQ(macros.recordingSteps().size(), 1);
    EXPECT_EQ(lastKind(),
              MacroStep::Kind(SetLayerProperty{title->id(), QStringLiteral("Text 1"),
                                               QStringLiteral("text"), QStringLiteral("Hello")}));
}

TEST_F(MacroRecordingTest, AStopInTheMiddleOfTypingMakesTwoSteps)
{
    TextLayer *title = addTitle();
    startRecording();

    title->setText(QStringLiteral("Hel"));
    clock.advance(milliseconds{501});
    title->setText(QStringLiteral("Hello"));
    settle();

    EXPECT_EQ(recordedTexts(), (QStringList{QStringLiteral("Text  \"Text 1\"  →  Hel"),
                                            QStringLiteral("Text  \"Text 1\"  →  Hello")}));
}

TEST_F(MacroRecordingTest, ASliderDragIsOneStepAndADiagonalMoveTwo)
{
    TextLayer *title = addTitle();
    startRecording();

    for (int step = 1; step <= 50; ++step) {
        title->setFontSize(40 + step);
        document.moveLayer(title->id(), QPointF(step, 2 * step));
        clock.advance(milliseconds{16});
    }
    settle();

    EXPECT_EQ(recordedTexts(), (QStringList{QStringLiteral("Font Size  \"Text 1\"  →  90.0 pt"),
                                            QStringLiteral("Position X  \"Text 1\"  →  50.0"),
                                            QStringLiteral("Position Y  \"Text 1\"  →  100.0")}));
}

TEST_F(MacroRecordingTest, AChangeRightAfterTheLayersCreationIsNoStep)
{
    startRecording();
    TextLayer *title = document.addTextLayer();
    clock.advance(milliseconds{200});
    title->setColor({1, 0, 0, 1});
    settle();

    ASSERT_EQ(macros.recordingSteps().size(), 1);
    EXPECT_TRUE(std::holds_alternative<AddLayer>(lastKind()));
    title->setColor({0, 1, 0, 1});
    settle();
    EXPECT_EQ(macros.recordingSteps().size(), 2);
}

TEST_F(MacroRecordingTest, AValueStillQuietWhenTheRecordingStopsOnlyReachesTheLog)
{
    TextLayer *title = addTitle();
    startRecording();
    document.takeLayerOutNow(title->id());
    title->setText(QStringLiteral("Late"));
    macros.stopRecording(QStringLiteral("Show"));
    settle();

    ASSERT_EQ(macros.macros().size(), 1);
    EXPECT_EQ(macros.macros().first().steps.size(), 1);
    EXPECT_EQ(macros.log().last().label, QStringLiteral("Text  \"Text 1\"  →  Late"));
    EXPECT_EQ(macros.log().last().detail, QStringLiteral("not recording"));
    EXPECT_FALSE(macros.log().last().isRecorded);
}

TEST_F(MacroRecordingTest, AChangeJustBeforeTheRecordingIsPartOfIt)
{
    TextLayer *title = addTitle();
    title->setText(QStringLiteral("Early"));
    clock.advance(milliseconds{400});
    startRecording();
    settle();

    EXPECT_EQ(macros.recordingSteps().size(), 1);
}

TEST_F(MacroRecordingTest, WhatAMacroWroteJustBeforeTheRecordingIsNoPartOfIt)
{
    TextLayer *title = addTitle();
    macros.runMacro(macroOf({setText(title->id(), QStringLiteral("Played"))}));
    clock.advance(seconds{0});

    startRecording();
    settle();
    EXPECT_TRUE(macros.recordingSteps().isEmpty());

    title->setText(QStringLiteral("By hand"));
    settle();
    EXPECT_EQ(recordedTexts(), QStringList{QStringLiteral("Text  \"Text 1\"  →  By hand")});
}

TEST_F(MacroRecordingTest, AnEditJustBeforeAMacroStandsInTheLogThoughTheMacroWritesOverIt)
{
    TextLayer *title = addTitle();
    macros.clearLog();
    title->setText(QStringLiteral("By hand"));
    macros.runMacro(macroOf({setText(title->id(), QStringLiteral("Played"))}));
    settle();

    ASSERT_EQ(macros.log().size(), 1);
    EXPECT_EQ(macros.log().first().label, QStringLiteral("Text  \"Text 1\"  →  By hand"));
}

TEST_F(MacroRecordingTest, AStepBearsTheNameOfItsMoment)
{
    TextLayer *title = addTitle();
    startRecording();
    document.takeLayerOutNow(title->id());
    document.renameLayer(title->id(), QStringLiteral("Headline"));
    settle();
    document.takeLayerInNow(title->id());

    EXPECT_EQ(recordedTexts(), (QStringList{QStringLiteral("Hide  \"Text 1\""),
                                            QStringLiteral("Rename  \"Headline\"  →  Headline"),
                                            QStringLiteral("Show  \"Headline\"")}));
}

TEST_F(MacroRecordingTest, EveryTakeIsAStepForEachOfItsLayers)
{
    const QUuid one = addTitle()->id();
    const QUuid two = addTitle()->id();
    document.groupLayers({one, two}, QStringLiteral("Group"));
    const QUuid group = *document.presetGroupID(one);
    const QUuid alone = addTitle()->id();
    startRecording();
    const auto steps = [&](auto operation) {
        const qsizetype before = macros.recordingSteps().size();
        operation();
        clock.advance(seconds{1});
        return textsOf(macros.recordingSteps().sliced(before)).join(QStringLiteral(", "));
    };
    const QString both = QStringLiteral("%1  \"Text 1\", %1  \"Text 2\"");
    const QString hide = QStringLiteral("Hide");
    const QString show = QStringLiteral("Show");

    EXPECT_EQ(steps([&] { document.takePresetGroupOutNow(group); }), both.arg(hide));
    EXPECT_EQ(steps([&] { document.takePresetGroupInNow(group); }), both.arg(show));
    EXPECT_EQ(steps([&] { document.togglePresetGroupInRunlist(group); }), both.arg(hide));
    EXPECT_EQ(steps([&] { document.toggleLayerInRunlist(alone); }),
              QStringLiteral("Hide  \"Text 3\""));
    EXPECT_EQ(steps([&] { document.toggleLayerHidden(alone); }),
              QStringLiteral("Show  \"Text 3\""));
    EXPECT_EQ(steps([&] { document.setLayerHidden(alone, true); }),
              QStringLiteral("Hide  \"Text 3\""));
    document.toggleCue(alone);
    EXPECT_EQ(steps([&] { document.takeCues(); }), QStringLiteral("Show  \"Text 3\""));
}

TEST_F(MacroRecordingTest, AnAutoOutIsNoStep)
{
    const QUuid id = addTitle()->id();
    document.setRunAutoOutDuration(1, id);
    document.takeLayerOutNow(id);
    settle();
    startRecording();

    document.takeLayerInNow(id);
    clock.advance(seconds{3});

    EXPECT_TRUE(document.layer(id)->isHidden());
    EXPECT_EQ(recordedTexts(), QStringList{QStringLiteral("Show  \"Text 1\"")});
}

TEST_F(MacroRecordingTest, ANewLayerIsAStepThatHoldsWhatItIs)
{
    startRecording();
    ShapeLayer *star = document.addTemplateShapeLayer(ShapeKind::star);

    ASSERT_EQ(macros.recordingSteps().size(), 1);
    const auto &add = std::get<AddLayer>(lastKind());
    EXPECT_EQ(add.layerID, star->id());
    EXPECT_EQ(add.layerType, QStringLiteral("shape"));
    EXPECT_EQ(add.props.value(QStringLiteral("shapeKind")), QStringLiteral("star"));
    EXPECT_EQ(add.props.value(QStringLiteral("sizeW")), QStringLiteral("280.00"));
}

TEST_F(MacroRecordingTest, ATimeGapIsNoPause)
{
    const QUuid id = addTitle()->id();
    startRecording();
    document.takeLayerOutNow(id);
    clock.advance(seconds{30});
    document.takeLayerInNow(id);

    EXPECT_EQ(macros.recordingSteps().size(), 2);
}

TEST_F(MacroRecordingTest, APauseIsAddedByHandAndOnlyWhileRecording)
{
    macros.addPause(1);
    EXPECT_TRUE(macros.log().isEmpty());
    startRecording();
    macros.addPause(0);
    macros.addPause(-1);
    macros.addPause(std::numeric_limits<double>::quiet_NaN());
    macros.addPause(std::numeric_limits<double>::infinity());
    EXPECT_TRUE(macros.recordingSteps().isEmpty());

    macros.addPause(1.5);

    ASSERT_EQ(macros.log().size(), 1);
    EXPECT_EQ(macros.log().first().label, QStringLiteral("Pause  1.500 s"));
    EXPECT_EQ(macros.log().first().detail, QStringLiteral("● REC (manual)"));
    EXPECT_EQ(macros.log().first().icon, QStringLiteral("clock"));
    EXPECT_TRUE(macros.log().first().isRecorded);
    EXPECT_EQ(lastKind(), MacroStep::Kind(Pause{1.5}));
}

TEST_F(MacroRecordingTest, TheLogHoldsTwoHundredAndOnlyStepsTrimIt)
{
    const QUuid id = addTitle()->id();
    macros.clearLog();
    macros.record(ShowLayer{id, QStringLiteral("First")});
    for (int index = 0; index < 199; ++index)
        macros.record(HideLayer{id, QStringLiteral("Other")});
    ASSERT_EQ(macros.log().size(), 200);
    EXPECT_EQ(macros.log().first().label, QStringLiteral("Show  \"First\""));

    macros.record(HideLayer{id, QStringLiteral("Newest")});
    EXPECT_EQ(macros.log().size(), 200);
    EXPECT_EQ(macros.log().first().label, QStringLiteral("Hide  \"Other\""));
    EXPECT_EQ(macros.log().last().label, QStringLiteral("Hide  \"Newest\""));

    startRecording();
    for (int index = 0; index < 10; ++index)
        macros.addPause(1);
    EXPECT_EQ(macros.log().size(), 210);
    macros.record(ShowLayer{id, QStringLiteral("Trims")});
    EXPECT_EQ(macros.log().size(), 200);
}

TEST_F(MacroRecordingTest, TheLogTellsTimeIconAndWhetherItWasRecorded)
{
    const QUuid id = addTitle()->id();
    macros.clearLog();
    setTimeOfDay(20, 15, 0);
    clock.advance(milliseconds{250});
    startRecording();
    document.takeLayerOutNow(id);

    const MacroLogEntry &entry = macros.log().last();
    EXPECT_EQ(entry.date.toString(QStringLiteral("HH:mm:ss.zzz")),
              clock.wallClock().toString(QStringLiteral("HH:mm:ss.zzz")));
    EXPECT_EQ(entry.icon, QStringLiteral("eye.slash"));
    EXPECT_EQ(entry.detail, QStringLiteral("● REC"));
    EXPECT_TRUE(entry.isRecorded);
    EXPECT_FALSE(entry.id.isNull());
}

TEST_F(MacroRecordingTest, StoppingKeepsTheMacroUnderItsTrimmedName)
{
    const QUuid id = addTitle()->id();
    startRecording();
    document.takeLayerOutNow(id);
    macros.stopRecording(QStringLiteral("  Intro \n"));

    ASSERT_EQ(macros.macros().size(), 1);
    const Macro &macro = macros.macros().first();
    EXPECT_EQ(macro.name, QStringLiteral("Intro"));
    EXPECT_EQ(macro.steps.size(), 1);
    EXPECT_FALSE(macro.loopEnabled || macro.scheduleEnabled);
    EXPECT_EQ(macro.loopCount, 0);
    EXPECT_EQ(macro.scheduleTime, QString());
    EXPECT_FALSE(macros.isRecording());
    EXPECT_TRUE(macros.recordingSteps().isEmpty());
}

TEST_F(MacroRecordingTest, ABlankNameOrNoStepDiscardsTheRecording)
{
    const QUuid id = addTitle()->id();
    startRecording();
    document.takeLayerOutNow(id);
    macros.stopRecording(QStringLiteral(" \n\t "));
    EXPECT_TRUE(macros.macros().isEmpty());
    EXPECT_TRUE(macros.recordingSteps().isEmpty());

    startRecording();
    macros.stopRecording(QStringLiteral("Nothing"));
    EXPECT_TRUE(macros.macros().isEmpty());
}

TEST_F(MacroRecordingTest, ADeletedLayersStepsStayAndItsQuietValueDoesNotCome)
{
    TextLayer *title = addTitle();
    startRecording();
    document.takeLayerOutNow(title->id());
    title->setText(QStringLiteral("Never"));
    document.removeLayer(title->id());
    settle();

    EXPECT_EQ(recordedTexts(), QStringList{QStringLiteral("Hide  \"Text 1\"")});
}

TEST_F(MacroRecordingTest, MacrosSurviveARestart)
{
    const QUuid id = addTitle()->id();
    startRecording();
    document.takeLayerOutNow(id);
    macros.addPause(0.25);
    macros.stopRecording(QStringLiteral("Intro"));

    Settings reread(settings.file());
    const MacroManager restarted(clock, reread, &document);

    EXPECT_EQ(restarted.macros(), macros.macros());
}

TEST_F(MacroRecordingTest, ACorruptStoreIsAnEmptyList)
{
    for (const QJsonValue &stored :
         {QJsonValue(QStringLiteral("[{\"id\":")), QJsonValue(7), QJsonValue()}) {
        ASSERT_TRUE(settings.setValue(MacroManager::saveKey, stored));
        EXPECT_TRUE(MacroManager(clock, settings, &document).macros().isEmpty());
    }
}

} // namespace
} // namespace tessara
