#include "UI/WindowFixture.h"

namespace tessara {
namespace {

/// The undo buttons of the title bar, and the keys that act in every window.
class UndoAndMacroKeysTest : public WindowFixture
{
protected:
    UndoStack &undo() const { return *app->undoStack(); }

    QString helpOf(const QString &button) const
    {
        return item(button)->property("help").toString();
    }

    /// A macro of one step that sets the name of the layer.
    void addRenamingMacro(const QUuid &layer, const QString &name)
    {
        MacroManager &macros = *app->macros();
        macros.setIsRecording(true);
        macros.record(SetLayerProperty{layer, QString(), QStringLiteral("name"), name});
        macros.stopRecording(name);
    }

    TextLayer *title() const { return document->layersOf<TextLayer>().first(); }
};

TEST_F(UndoAndMacroKeysTest, TheButtonsSayWhatTheyWouldDo)
{
    EXPECT_EQ(helpOf(QStringLiteral("undoButton")), QStringLiteral("Nothing to Undo  Ctrl+Z"));
    EXPECT_EQ(helpOf(QStringLiteral("redoButton")),
              QStringLiteral("Nothing to Redo  Ctrl+Shift+Z"));

    addTitle();
    EXPECT_EQ(helpOf(QStringLiteral("undoButton")), QStringLiteral("Undo Add Text Layer  Ctrl+Z"));
    settle();
    keepPicture(QStringLiteral("undo-buttons"));

    click(item(QStringLiteral("undoButton")));
    EXPECT_TRUE(document->layerOrder().isEmpty());
    EXPECT_EQ(helpOf(QStringLiteral("redoButton")),
              QStringLiteral("Redo Add Text Layer  Ctrl+Shift+Z"));

    click(item(QStringLiteral("redoButton")));
    EXPECT_EQ(document->layerOrder().size(), 1);
}

TEST_F(UndoAndMacroKeysTest, TheKeysUndoAndRedo)
{
    addTitle();

    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(document->layerOrder().isEmpty());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(document->layerOrder().size(), 1);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(document->layerOrder().size(), 1);
}

TEST_F(UndoAndMacroKeysTest, UndoReachesTheShowWhileATextIsBeingTyped)
{
    addTitle();
    const QString before = title()->text();
    ASSERT_TRUE(until([&] { return undo().count() == 1; }));
    QQuickItem *field = item(QStringLiteral("textContent"));
    click(field);
    const Nanoseconds quiet = clock.now() + std::chrono::milliseconds{700};
    ASSERT_TRUE(until([&] { return clock.now() > quiet; })); // past the layer's beginning
    type(QStringLiteral("!"));
    ASSERT_TRUE(until([&] { return undo().undoLabel() == QStringLiteral("Edit Text"); }));

    press(Qt::Key_Z, Qt::ControlModifier);

    EXPECT_EQ(title()->text(), before);
    EXPECT_EQ(undo().undoLabel(), QStringLiteral("Add Text Layer"));
}

TEST_F(UndoAndMacroKeysTest, ANumberPlaysItsMacro)
{
    addTitle();
    addRenamingMacro(title()->id(), QStringLiteral("First"));
    addRenamingMacro(title()->id(), QStringLiteral("Second"));

    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(until([&] { return title()->name() == QStringLiteral("Second"); }));

    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_TRUE(until([&] { return title()->name() == QStringLiteral("First"); }));
}

TEST_F(UndoAndMacroKeysTest, OtherNumbersArePassedOn)
{
    addTitle();
    addRenamingMacro(title()->id(), QStringLiteral("First"));
    const QString name = title()->name();

    press(Qt::Key_0, Qt::ControlModifier);
    press(Qt::Key_2, Qt::ControlModifier); // beyond the list
    press(Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier);
    press(Qt::Key_1);
    app->macros()->setIsRecording(true);
    press(Qt::Key_1, Qt::ControlModifier);
    settle();

    EXPECT_FALSE(app->macros()->isRunning());
    EXPECT_EQ(title()->name(), name);
}

} // namespace
} // namespace tessara
