#include "Core/Macros/MacroFixture.h"

namespace tessara {
namespace {

class MacroPlaybackTest : public MacroFixture
{
protected:
    static constexpr double pause = 1; // s

    /// Sets the title to "1", "2", ... with a pause before each but the first.
    Macro countingMacro(const QUuid &id, int count) const
    {
        QList<MacroStep::Kind> kinds;
        for (int number = 1; number <= count; ++number) {
            if (number > 1)
                kinds.append(Pause{pause});
            kinds.append(setText(id, QString::number(number)));
        }
        return macroOf(kinds);
    }
};

TEST_F(MacroPlaybackTest, StepsRunInOrderAndPausesHoldThem)
{
    TextLayer *title = addTitle();
    const Macro macro = countingMacro(title->id(), 3);
    macros.runMacro(macro);
    EXPECT_TRUE(macros.isRunning());
    EXPECT_EQ(macros.runningMacroID(), macro.id);
    EXPECT_EQ(title->text(), QStringLiteral("Text 1")); // its first step is in the next turn

    clock.advance(seconds{0});
    EXPECT_EQ(title->text(), QStringLiteral("1"));
    clock.advance(milliseconds{999});
    EXPECT_EQ(title->text(), QStringLiteral("1"));
    clock.advance(milliseconds{1});
    EXPECT_EQ(title->text(), QStringLiteral("2"));
    clock.advance(seconds{1});
    EXPECT_EQ(title->text(), QStringLiteral("3"));
    EXPECT_FALSE(macros.isRunning());
    EXPECT_FALSE(macros.runningMacroID().has_value());
}

TEST_F(MacroPlaybackTest, ALoopPlaysItsPassesAndZeroNeverEnds)
{
    const QUuid id = addTitle()->id();
    Macro macro = macroOf({Pause{1}});
    const auto secondsOf = [&](bool loops, qint64 count) {
        macro.loopEnabled = loops;
        macro.loopCount = count;
        macros.runMacro(macro);
        int passed = 0;
        while (macros.isRunning() && passed < 100) {
            clock.advance(seconds{1});
            ++passed;
        }
        macros.stopRunning();
        return passed;
    };

    EXPECT_EQ(secondsOf(true, 3), 3);
    EXPECT_EQ(secondsOf(false, 3), 1);
    EXPECT_EQ(secondsOf(true, 0), 100);
    EXPECT_NE(document.layer(id), nullptr);
}

TEST_F(MacroPlaybackTest, AnEndlessLoopWithoutAPauseLetsTheProgramLive)
{
    TextLayer *title = addTitle();
    Macro macro = macroOf({setText(title->id(), QStringLiteral("Again"))});
    macro.loopEnabled = true;
    macros.runMacro(macro);
    clock.advance(seconds{1});
    EXPECT_TRUE(macros.isRunning());
    macros.stopRunning();

    macro.steps.clear();
    macros.runMacro(macro);
    clock.advance(seconds{1});
    EXPECT_TRUE(macros.isRunning());
    macros.stopRunning();
    EXPECT_FALSE(macros.isRunning());
}

TEST_F(MacroPlaybackTest, AnEndlessLoopWithPausesOfNoLengthLetsTheProgramLive)
{
    TextLayer *title = addTitle();
    int passes = 0;
    QObject::connect(title, &TextLayer::textChanged, [&] {
        ++passes;
        if (passes == 10'000) // rather than never come back
            macros.stopRunning();
    });
    Macro macro = macroOf({setText(title->id(), QStringLiteral("One")), Pause{1e-12},
                           setText(title->id(), QStringLiteral("Other")), Pause{1e-7}});
    macro.loopEnabled = true;
    macros.runMacro(macro);

    clock.advance(seconds{1});

    EXPECT_TRUE(macros.isRunning());
    EXPECT_LT(passes, 1000);
    macros.stopRunning();
}

TEST_F(MacroPlaybackTest, StoppingInAPauseEndsAtOnceAndCleanly)
{
    TextLayer *title = addTitle();
    macros.runMacro(countingMacro(title->id(), 3));
    clock.advance(milliseconds{500});

    macros.stopRunning();
    EXPECT_FALSE(macros.isRunning());
    EXPECT_FALSE(macros.runningMacroID().has_value());
    clock.advance(seconds{5});
    EXPECT_EQ(title->text(), QStringLiteral("1"));

    macros.runMacro(macroOf({setText(title->id(), QStringLiteral("Next"))}));
    clock.advance(seconds{0});
    EXPECT_EQ(title->text(), QStringLiteral("Next"));
}

TEST_F(MacroPlaybackTest, ASecondPressDuringARunDoesNothing)
{
    TextLayer *title = addTitle();
    const Macro first = countingMacro(title->id(), 2);
    macros.runMacro(first);
    clock.advance(milliseconds{500});

    macros.runMacro(first);
    macros.runMacro(macroOf({setText(title->id(), QStringLiteral("Other"))}));

    EXPECT_EQ(macros.runningMacroID(), first.id);
    clock.advance(milliseconds{500});
    EXPECT_EQ(title->text(), QStringLiteral("2"));
    EXPECT_FALSE(macros.isRunning());
}

TEST_F(MacroPlaybackTest, NothingIsPlayedWhileRecording)
{
    TextLayer *title = addTitle();
    startRecording();
    macros.runMacro(macroOf({setText(title->id(), QStringLiteral("Other"))}));
    clock.advance(seconds{1});

    EXPECT_FALSE(macros.isRunning());
    EXPECT_EQ(title->text(), QStringLiteral("Text 1"));
}

TEST_F(MacroPlaybackTest, ATakeGoesThroughTheLayersOwnTransitionAndEndsItsCue)
{
    const QUuid id = addTitle()->id();
    document.takeLayerOutNow(id);
    settle();
    document.setRunDissolveDuration(1, id);
    document.toggleCue(id);
    macros.clearLog();

    macros.runMacro(macroOf({ShowLayer{id, QString()}}));
    clock.advance(seconds{0});
    EXPECT_FALSE(macros.isRunning()); // a take is not waited for
    EXPECT_TRUE(document.cueTargets().isEmpty());
    clock.advance(milliseconds{500});
    EXPECT_NEAR(document.layerVisibility().value(id), 0.5, 0.02);
    clock.advance(seconds{1});
    EXPECT_EQ(document.layerVisibility().value(id), 1);
    EXPECT_TRUE(macros.log().isEmpty());

    macros.runMacro(macroOf({HideLayer{id, QString()}}));
    clock.advance(seconds{2});
    EXPECT_TRUE(document.layer(id)->isHidden());
}

TEST_F(MacroPlaybackTest, ATakeOfOneLayerLeavesItsGroupAlone)
{
    const QUuid one = addTitle()->id();
    const QUuid two = addTitle()->id();
    document.groupLayers({one, two}, QStringLiteral("Group"));

    macros.runMacro(macroOf({HideLayer{one, QString()}}));
    clock.advance(seconds{1});

    EXPECT_TRUE(document.layer(one)->isHidden());
    EXPECT_FALSE(document.layer(two)->isHidden());
}

TEST_F(MacroPlaybackTest, MissingLayersAreSkippedAndLoseTheirCue)
{
    TextLayer *title = addTitle();
    const QUuid missing = QUuid::createUuid();
    document.setCueTargets({{missing, true}});

    macros.runMacro(macroOf({ShowLayer{missing, QString()}, HideLayer{missing, QString()},
                             setText(missing, QStringLiteral("Nobody")),
                             AddLayer{QUuid::createUuid(), QStringLiteral("hologram"), {}},
                             AddLayer{QUuid::createUuid(),
                                      QStringLiteral("image"),
                                      {{QStringLiteral("url"), QStringLiteral("/no/such.png")}}},
                             setText(title->id(), QStringLiteral("Done"))}));
    clock.advance(seconds{0});

    EXPECT_EQ(title->text(), QStringLiteral("Done"));
    EXPECT_EQ(document.layerOrder().size(), 1);
    EXPECT_TRUE(document.cueTargets().isEmpty());
}

TEST_F(MacroPlaybackTest, ValuesAreSetAsTheyStand)
{
    ShapeLayer *star = document.addTemplateShapeLayer(ShapeKind::star);
    const auto set = [&](const char *key, const char *value) {
        return SetLayerProperty{star->id(), QString(), QLatin1String(key), QLatin1String(value)};
    };

    macros.runMacro(macroOf({set("opacity", "2"), set("sizeW", "many"), set("posX", "-5000"),
                             set("text", "no text"), set("shapeKind", "blob")}));
    clock.advance(seconds{0});

    EXPECT_EQ(star->opacity(), 2); // no limit
    EXPECT_EQ(star->size().width(), 280);
    EXPECT_EQ(star->position().x(), -5000);
    EXPECT_EQ(star->kind(), ShapeKind::star);
}

TEST_F(MacroPlaybackTest, ALoopMakesItsLayerOnce)
{
    const QUuid id = QUuid::createUuid();
    Macro macro = macroOf({AddLayer{id, QStringLiteral("text"), {}}, Pause{1}});
    macro.loopEnabled = true;
    macro.loopCount = 3;

    macros.runMacro(macro);
    clock.advance(seconds{5});

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{id});
}

TEST_F(MacroPlaybackTest, AMacroBringsADeletedLayerBackUnderItsId)
{
    startRecording();
    const QUuid id = document.addCountdownLayer()->id();
    macros.stopRecording(QStringLiteral("Add"));
    document.removeLayer(id);

    macros.runMacroAtIndex(0);
    clock.advance(seconds{0});

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{id});
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{id});
    EXPECT_TRUE(document.takes().isOnAir(id));
}

TEST_F(MacroPlaybackTest, PlaybackIsNeitherRecordedNorUndone)
{
    TextLayer *title = addTitle();
    macros.clearLog();
    const int entries = history.undoStack().count();

    macros.runMacro(macroOf({setText(title->id(), QStringLiteral("Played")),
                             AddLayer{QUuid::createUuid(), QStringLiteral("text"), {}},
                             HideLayer{title->id(), QString()}}));
    clock.advance(seconds{0});
    ASSERT_FALSE(macros.isRunning()); // long before any value has been quiet for its time
    clock.advance(seconds{3});

    EXPECT_EQ(title->text(), QStringLiteral("Played"));
    EXPECT_TRUE(macros.log().isEmpty());
    EXPECT_EQ(history.undoStack().count(), entries);
}

TEST_F(MacroPlaybackTest, PassesWithPausesAreNeitherRecordedNorUndone)
{
    TextLayer *title = addTitle();
    title->setFontSize(40);
    settle();
    history.undoStack().undo();
    settle();
    macros.clearLog();
    Macro macro = countingMacro(title->id(), 3);
    macro.loopEnabled = true;
    macro.loopCount = 3;

    macros.runMacro(macro);
    clock.advance(seconds{6});
    ASSERT_FALSE(macros.isRunning());
    clock.advance(seconds{1});

    EXPECT_TRUE(macros.log().isEmpty());
    EXPECT_TRUE(history.undoStack().canRedo());
}

TEST_F(MacroPlaybackTest, ALayerUndeletedDuringARunIsReachedByItAndNoStep)
{
    const QUuid id = addTitle()->id();
    document.removeLayer(id);
    macros.clearLog();
    macros.runMacro(
        macroOf({Pause{1}, HideLayer{id, QString()}, setText(id, QStringLiteral("Played"))}));
    clock.advance(milliseconds{500});

    history.undoStack().undo();
    EXPECT_TRUE(document.takes().isOnAir(id));
    clock.advance(seconds{3});

    EXPECT_TRUE(document.layer(id)->isHidden());
    EXPECT_EQ(document.layersOf<TextLayer>().first()->text(), QStringLiteral("Played"));
    EXPECT_TRUE(macros.log().isEmpty());
    EXPECT_TRUE(history.undoStack().canRedo());
}

TEST_F(MacroPlaybackTest, EditsDuringARunDoNotReachIt)
{
    TextLayer *title = addTitle();
    const Macro macro = imported(countingMacro(title->id(), 2));
    macros.runMacro(macro);
    clock.advance(milliseconds{500});

    macros.deleteMacro(macro.id);
    clock.advance(milliseconds{500});

    EXPECT_EQ(title->text(), QStringLiteral("2"));
}

TEST_F(MacroPlaybackTest, AnIndexBeyondTheListPlaysNothing)
{
    TextLayer *title = addTitle();
    imported(macroOf({setText(title->id(), QStringLiteral("Played"))}));
    for (const int index : {-1, 1, 1000}) {
        macros.runMacroAtIndex(index);
        EXPECT_FALSE(macros.isRunning());
    }
    MacroManager withoutDocument(clock, settings, nullptr);
    withoutDocument.runMacroAtIndex(0);
    EXPECT_FALSE(withoutDocument.isRunning());

    macros.runMacroAtIndex(0);
    clock.advance(seconds{0});
    EXPECT_EQ(title->text(), QStringLiteral("Played"));
}

TEST_F(MacroPlaybackTest, ADocumentThatGoesEndsTheRun)
{
    auto gone = std::make_unique<CanvasDocument>(clock);
    TextLayer *title = gone->addTextLayer();
    MacroManager manager(clock, settings, gone.get());
    manager.runMacro(countingMacro(title->id(), 3));
    clock.advance(milliseconds{500});

    gone.reset();
    clock.advance(seconds{5});

    EXPECT_FALSE(manager.isRunning());
}

TEST_F(MacroPlaybackTest, PausesOfAnyLengthAreWaitedForOrPassed)
{
    TextLayer *title = addTitle();
    macros.runMacro(macroOf({Pause{-1e308}, Pause{0}, setText(title->id(), QStringLiteral("On")),
                             Pause{1e308}, setText(title->id(), QStringLiteral("Never"))}));
    clock.advance(hours{24});

    EXPECT_EQ(title->text(), QStringLiteral("On"));
    EXPECT_TRUE(macros.isRunning());
}

TEST_F(MacroPlaybackTest, ARecordedShowRebuildsItselfInAnEmptyDocument)
{
    startRecording();
    TextLayer *title = addTitle();
    ShapeLayer *panel = document.addTemplateShapeLayer(ShapeKind::rectangle);
    ScoreLayer *score = document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::futsal);
    CountdownLayer *countdown = document.addCountdownLayer();
    settle();
    title->setText(QStringLiteral("Good evening"));
    title->setColor({1, 0.5, 0, 1});
    panel->setOpacity(0.5);
    panel->setSize({640, 120});
    score->setHomeScore(3);
    countdown->setName(QStringLiteral("Break"));
    settle();
    document.takeLayerOutNow(panel->id());
    settle();
    macros.stopRecording(QStringLiteral("Show"));

    CanvasDocument empty(clock);
    Settings none(data.filePath(QStringLiteral("none.json")));
    MacroManager player(clock, none, &empty);
    player.importMacros(*macros.exportJSON());
    player.runMacroAtIndex(0);
    clock.advance(seconds{1});

    EXPECT_EQ(empty.layerOrder(), document.layerOrder());
    for (const CanvasLayerItem &item : document.orderedLayers()) {
        const std::optional<CanvasLayerItem> copy = empty.layerItem(layerOf(item)->id());
        ASSERT_TRUE(copy.has_value());
        EXPECT_EQ(captureLayerProps(*copy), captureLayerProps(item));
    }
    EXPECT_TRUE(empty.layer(panel->id())->isHidden());
}

} // namespace
} // namespace tessara
