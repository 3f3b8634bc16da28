// Whose writes are history: the operator's, and neither a macro's nor the clock's.
#include "Models/HistoryFixture.h"

namespace tessara {
namespace {

class HistoryOfWritersTest : public HistoryFixture
{
protected:
    QString committedText() const
    {
        return history.undoCommittedProps(title()->id()).value(QStringLiteral("text"));
    }
};

// Macros

TEST_F(HistoryOfWritersTest, WhatAMacroDoesIsNoHistory)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    playMacro([&] {
        text->setText(QStringLiteral("Macro"));
        document.addCountdownLayer();
    });
    settle();
    EXPECT_EQ(undo().count(), before);
    EXPECT_EQ(committedText(), QStringLiteral("Text 1"));

    text->setText(QStringLiteral("By hand"));
    settle();
    ASSERT_EQ(undo().count(), before + 1);
    undo().undo();
    EXPECT_EQ(text->text(), QStringLiteral("Text 1")); // as it was before the macro
}

TEST_F(HistoryOfWritersTest, AMacroLeavesWhatCanBeRedone)
{
    TextLayer *text = addTitle();
    text->setText(QStringLiteral("By hand"));
    settle();
    undo().undo();

    playMacro([&] { text->setFontSize(40); });
    settle();

    ASSERT_TRUE(undo().canRedo());
    undo().redo();
    EXPECT_EQ(text->text(), QStringLiteral("By hand"));
}

TEST_F(HistoryOfWritersTest, AMacroOfPassesWithPausesIsNoHistory)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    isMacroRunning = true;
    for (const char *shown : {"3", "2", "1", "On air"}) {
        text->setText(QLatin1String(shown));
        clock.advance(milliseconds{200});
        text->setFontSize(text->fontSize() + 1);
        clock.advance(milliseconds{700});
    }
    text->setText(QStringLiteral("Last"));
    isMacroRunning = false;
    settle();

    EXPECT_EQ(undo().count(), before);
    EXPECT_EQ(committedText(), QStringLiteral("Text 1"));
}

TEST_F(HistoryOfWritersTest, AnEditJustBeforeAMacroIsHistoryThoughTheMacroWritesOverIt)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    text->setText(QStringLiteral("By hand"));
    clock.advance(milliseconds{100});
    playMacro([&] { text->setText(QStringLiteral("Macro")); });
    settle();

    ASSERT_EQ(undo().count(), before + 1);
    EXPECT_EQ(committedText(), QStringLiteral("By hand"));
    undo().undo();
    EXPECT_EQ(text->text(), QStringLiteral("Text 1"));
    undo().redo();
    EXPECT_EQ(text->text(), QStringLiteral("By hand"));
}

TEST_F(HistoryOfWritersTest, AnEditJustBeforeAMacroIsHistoryThoughTheMacroStillRuns)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    text->setFontSize(40);
    isMacroRunning = true;
    text->setText(QStringLiteral("Macro"));
    settle();

    ASSERT_EQ(undo().count(), before + 1);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Change Font Size"));
}

TEST_F(HistoryOfWritersTest, AnEditJustAfterAMacroIsComparedWithTheValueBeforeIt)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    playMacro([&] { text->setText(QStringLiteral("Macro")); });
    clock.advance(milliseconds{100});
    text->setText(QStringLiteral("By hand"));
    settle();

    ASSERT_EQ(undo().count(), before + 1);
    undo().undo();
    EXPECT_EQ(text->text(), QStringLiteral("Text 1"));
    undo().redo();
    EXPECT_EQ(text->text(), QStringLiteral("By hand"));
}

TEST_F(HistoryOfWritersTest, AnEditDuringAMacroIsNoHistory)
{
    TextLayer *text = addTitle();
    const int before = undo().count();

    isMacroRunning = true;
    text->setText(QStringLiteral("By hand"));
    isMacroRunning = false;
    settle();

    EXPECT_EQ(undo().count(), before);
}

// The clock

TEST_F(HistoryOfWritersTest, TheClockNeitherEvictsAnEntryNorEndsTheRedoSide)
{
    TextLayer *headline = addTitle();
    addTitle()->setFieldKind(TemplateFieldKind::timer);
    headline->setText(QStringLiteral("By hand"));
    settle();
    undo().undo();
    const int before = undo().count();

    for (int second = 0; second < 100; ++second) {
        document.setRealtimeTimerText(QStringLiteral("20:30:%1").arg(second));
        clock.advance(seconds{1});
    }

    EXPECT_EQ(undo().count(), before);
    undo().redo();
    EXPECT_EQ(headline->text(), QStringLiteral("By hand"));
}

TEST_F(HistoryOfWritersTest, AnEditOfAClockIsComparedWithTheTimeThatItShowed)
{
    TextLayer *time = addTitle();
    time->setFieldKind(TemplateFieldKind::timer);
    document.setRealtimeTimerText(QStringLiteral("20:30:00"));
    clock.advance(seconds{1});
    document.setRealtimeTimerText(QStringLiteral("20:30:01"));
    const int before = undo().count();

    time->setText(QStringLiteral("By hand"));
    clock.advance(milliseconds{100});
    document.setRealtimeTimerText(QStringLiteral("20:30:02"));
    settle();

    ASSERT_EQ(undo().count(), before + 1);
    undo().undo();
    EXPECT_EQ(time->text(), QStringLiteral("20:30:01"));
}

// What is still in its quiet time

TEST_F(HistoryOfWritersTest, AnUndoTakesTheEditThatIsStillInItsQuietTime)
{
    TextLayer *text = addTitle();
    text->setFontSize(40);
    settle();
    const int before = undo().count();

    text->setText(QStringLiteral("Typed"));
    undo().undo();

    EXPECT_EQ(text->text(), QStringLiteral("Text 1"));
    EXPECT_EQ(text->fontSize(), 40);
    EXPECT_EQ(undo().count(), before + 1);
    settle();
    EXPECT_EQ(undo().count(), before + 1); // and it does not come once more
    undo().redo();
    EXPECT_EQ(text->text(), QStringLiteral("Typed"));
}

TEST_F(HistoryOfWritersTest, EditsInTheirQuietTimeAreUndoneFromTheLatestOn)
{
    TextLayer *one = addTitle();
    TextLayer *two = addTitle();
    two->setText(QStringLiteral("First"));
    one->setFontSize(40);
    one->setText(QStringLiteral("Third"));
    two->setName(QStringLiteral("Last"));

    QStringList labels;
    for (int step = 0; step < 4; ++step) {
        undo().undo();
        labels.append(undo().redoLabel());
    }

    EXPECT_EQ(labels,
              (QStringList{QStringLiteral("Rename Layer"), QStringLiteral("Edit Text"),
                           QStringLiteral("Change Font Size"), QStringLiteral("Edit Text")}));
    EXPECT_EQ(one->text(), QStringLiteral("Text 1"));
    EXPECT_EQ(two->text(), QStringLiteral("Text 2"));
}

TEST_F(HistoryOfWritersTest, AnEditInItsQuietTimeEndsTheRedoSideBeforeARedo)
{
    TextLayer *text = addTitle();
    text->setFontSize(40);
    settle();
    undo().undo();

    text->setText(QStringLiteral("Typed"));
    undo().redo();

    EXPECT_EQ(text->text(), QStringLiteral("Typed"));
    EXPECT_EQ(text->fontSize(), 98);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Edit Text"));
    EXPECT_FALSE(undo().canRedo());
}

TEST_F(HistoryOfWritersTest, AnUndoRightAfterALayersCreationTakesTheLayerWithWhatWasTyped)
{
    TextLayer *text = document.addTextLayer();
    text->setText(QStringLiteral("At once"));

    undo().undo();
    EXPECT_TRUE(document.layerOrder().isEmpty());
    undo().redo();

    EXPECT_EQ(title()->text(), QStringLiteral("At once"));
}

} // namespace
} // namespace tessara
