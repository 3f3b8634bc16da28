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

} // namespace
} // namespace tessara
