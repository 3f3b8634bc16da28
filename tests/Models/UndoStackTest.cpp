#include "Models/UndoStack.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

class UndoStackTest : public testing::Test
{
protected:
    /// An entry that counts the value up from what it was.
    void edit()
    {
        const int before = value++;
        stack.push(
            QStringLiteral("Edit %1").arg(value), [=, this] { value = before; },
            [=, this] { value = before + 1; });
    }

    int value = 0;
    UndoStack stack;
};

TEST_F(UndoStackTest, AnEmptyStackHasNoLabelsAndDoesNothing)
{
    stack.undo();
    stack.redo();

    EXPECT_FALSE(stack.canUndo());
    EXPECT_FALSE(stack.canRedo());
    EXPECT_EQ(stack.undoLabel(), QString());
    EXPECT_EQ(stack.redoLabel(), QString());
    EXPECT_EQ(stack.undoHelpText(), QStringLiteral("Nothing to Undo  Ctrl+Z"));
    EXPECT_EQ(stack.redoHelpText(), QStringLiteral("Nothing to Redo  Ctrl+Shift+Z"));
    EXPECT_EQ(stack.cursor(), -1);
}

TEST_F(UndoStackTest, APushRecordsAndRunsNothing)
{
    int calls = 0;
    stack.push(
        QStringLiteral("Edit"), [&] { ++calls; }, [&] { ++calls; });

    EXPECT_EQ(calls, 0);
    EXPECT_EQ(stack.undoLabel(), QStringLiteral("Edit"));
    EXPECT_EQ(stack.undoHelpText(), QStringLiteral("Undo Edit  Ctrl+Z"));
}

TEST_F(UndoStackTest, UndoAndRedoWalkTheEntries)
{
    edit();
    edit();

    stack.undo();
    EXPECT_EQ(value, 1);
    EXPECT_EQ(stack.undoLabel(), QStringLiteral("Edit 1"));
    EXPECT_EQ(stack.redoLabel(), QStringLiteral("Edit 2"));
    stack.undo();
    EXPECT_EQ(value, 0);
    EXPECT_FALSE(stack.canUndo());

    stack.redo();
    stack.redo();
    stack.redo();
    EXPECT_EQ(value, 2);
    EXPECT_FALSE(stack.canRedo());
}

TEST_F(UndoStackTest, FiftyOneEditsLeaveFifty)
{
    for (int index = 0; index < 51; ++index)
        edit();
    EXPECT_EQ(stack.count(), 50);
    EXPECT_EQ(stack.cursor(), 49);

    while (stack.canUndo())
        stack.undo();
    EXPECT_EQ(value, 1); // the first edit stays
}

TEST_F(UndoStackTest, ANewEditEndsTheRedoSide)
{
    edit();
    edit();
    stack.undo();
    ASSERT_TRUE(stack.canRedo());

    edit();

    EXPECT_FALSE(stack.canRedo());
    EXPECT_EQ(stack.count(), 2);
    EXPECT_EQ(stack.undoLabel(), QStringLiteral("Edit 2"));
}

TEST_F(UndoStackTest, WhatWaitsForItsEntryIsPushedBeforeAStep)
{
    QStringList done;
    bool isWaiting = true;
    UndoStack waiting([&] {
        if (std::exchange(isWaiting, false))
            waiting.push(
                QStringLiteral("Late"), [&] { done << QStringLiteral("undone"); },
                [&] { done << QStringLiteral("redone"); });
    });

    waiting.undo();
    EXPECT_EQ(done, QStringList{QStringLiteral("undone")});
    isWaiting = true;
    waiting.redo();

    EXPECT_EQ(done, QStringList{QStringLiteral("undone")}); // the redo side has ended
    EXPECT_FALSE(waiting.canRedo());
}

} // namespace
} // namespace tessara
