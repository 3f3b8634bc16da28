#include "UI/WindowFixture.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

namespace tessara {
namespace {

/// Counts what the operator's keys take.
class TakeCounter : public DocumentHooks
{
public:
    void takeRequested(const QUuid &, const QString &, bool) override { ++takes; }

    int takes = 0;
};

/// A key that is held repeats; what acts on the show acts once.
class HeldKeyTest : public WindowFixture
{
protected:
    HeldKeyTest()
    {
        document->addHooks(&counter);
        addTitleNamed(QStringLiteral("logo"));
        title = addTitleNamed(QStringLiteral("title"));
        settle();
    }
    ~HeldKeyTest() override { document->removeHooks(&counter); }

    void openRunlist()
    {
        runlistWindow->show();
        window = runlistWindow->window();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
        settle();
    }
    void focus(QQuickItem *target)
    {
        target->forceActiveFocus(Qt::TabFocusReason);
        ASSERT_TRUE(target->hasActiveFocus());
    }

    TakeCounter counter;
    QUuid title;
};

TEST_F(HeldKeyTest, DeleteRemovesOneSelectionAndNoMore)
{
    focus(item(QStringLiteral("layersList")));

    hold(Qt::Key_Delete);

    EXPECT_EQ(document->layerOrder().size(), 1);
}

TEST_F(HeldKeyTest, SpaceOnAnEyeHidesOnce)
{
    focus(inRow(QStringLiteral("title"), QStringLiteral("airCell")));

    hold(Qt::Key_Space);

    EXPECT_EQ(counter.takes, 1);
    EXPECT_TRUE(document->layer(title)->isHidden());
}

// As X tells it when Qt has read a repeat's release before its press was there.
TEST_F(HeldKeyTest, ARepeatThatIsNotMarkedAsOneIsKnownByItsTime)
{
    focus(inRow(QStringLiteral("title"), QStringLiteral("airCell")));
    const auto send = [this](QEvent::Type type, quint64 time) {
        constexpr quint32 spaceBar = 65;
        QKeyEvent event(type, Qt::Key_Space, {}, spaceBar, 0, 0, QStringLiteral(" "));
        event.setTimestamp(time);
        QCoreApplication::sendEvent(window, &event);
    };

    send(QEvent::KeyPress, 1000);
    for (quint64 time = 1660; time < 2000; time += 40) {
        send(QEvent::KeyRelease, time);
        send(QEvent::KeyPress, time);
    }
    send(QEvent::KeyRelease, 2010);
    EXPECT_EQ(counter.takes, 1);

    send(QEvent::KeyPress, 2090); // by a quick hand
    EXPECT_EQ(counter.takes, 2);
    send(QEvent::KeyRelease, 2120);
}

TEST_F(HeldKeyTest, SpaceOnAllOutTakesOut)
{
    openRunlist();
    focus(item(QStringLiteral("allOut")));

    hold(Qt::Key_Space);

    EXPECT_EQ(counter.takes, 2); // each layer once
}

TEST_F(HeldKeyTest, ARowOfTheRunlistIsTakenOnce)
{
    openRunlist();
    press(Qt::Key_Down);

    hold(Qt::Key_Space);
    EXPECT_EQ(counter.takes, 1);

    hold(Qt::Key_Return);
    EXPECT_EQ(counter.takes, 2);
}

TEST_F(HeldKeyTest, ControlAndANumberPlayOnce)
{
    MacroManager &macros = *app->macros();
    macros.setIsRecording(true);
    macros.record(
        SetLayerProperty{title, QString(), QStringLiteral("name"), QStringLiteral("New")});
    macros.stopRecording(QStringLiteral("Rename"));
    const QSignalSpy plays(&macros, &MacroManager::isRunningChanged);

    hold(Qt::Key_1, Qt::ControlModifier);
    ASSERT_TRUE(until([&] { return !macros.isRunning(); }));

    EXPECT_EQ(plays.count(), 2); // on and off
}

TEST_F(HeldKeyTest, UndoGoesOneStepBack)
{
    const int before = app->undoStack()->cursor();

    hold(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app->undoStack()->cursor(), before - 1);

    addTitle();
    click(item(QStringLiteral("textContent")));
    hold(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(app->undoStack()->cursor(), before - 1);
}

TEST_F(HeldKeyTest, AButtonIsPressedOnce)
{
    const int before = app->undoStack()->cursor();
    focus(item(QStringLiteral("undoButton")));

    hold(Qt::Key_Return);
    EXPECT_EQ(app->undoStack()->cursor(), before - 1);

    hold(Qt::Key_Space);
    EXPECT_EQ(app->undoStack()->cursor(), before - 2);
}

TEST_F(HeldKeyTest, AChoiceIsOpenedOnceAndStaysOpen)
{
    document->setSelectedLayerIDs({title});
    settle();
    focus(item(QStringLiteral("fontWeight")));

    hold(Qt::Key_Space);

    EXPECT_TRUE(itemWithText(QStringLiteral("Heavy")));
}

TEST_F(HeldKeyTest, AScoreStepIsHeldByTheMouseAlone)
{
    const ScoreLayer *bar =
        document->addScoreLayer(ScoreTemplate::wideBroadcast, ScoreSportPreset::football);
    settle();
    const int before = bar->homeScore();
    QQuickItem *up = item(QStringLiteral("homeScoreUp"));
    focus(up);

    hold(Qt::Key_Space);
    EXPECT_EQ(bar->homeScore(), before + 1);

    QTest::keyPress(window, Qt::Key_Space);
    EXPECT_FALSE(up->property("pressed").toBool()); // it would go on by itself
    QTest::keyRelease(window, Qt::Key_Space);
    EXPECT_EQ(bar->homeScore(), before + 2);
}

TEST_F(HeldKeyTest, TypingRepeats)
{
    document->setSelectedLayerIDs({title});
    settle();
    click(item(QStringLiteral("textContent")));
    press(Qt::Key_A, Qt::ControlModifier);

    hold(Qt::Key_X);
    EXPECT_EQ(document->layersOf<TextLayer>().last()->text(), QStringLiteral("xxxxxx"));

    hold(Qt::Key_Backspace);
    EXPECT_EQ(document->layersOf<TextLayer>().last()->text(), QString());
}

TEST_F(HeldKeyTest, ArrowsGoOnWalking)
{
    for (const char *name : {"a", "b", "c", "d", "e", "f", "g"})
        addTitleNamed(QLatin1String(name));
    openRunlist();

    hold(Qt::Key_Down);

    EXPECT_EQ(item(QStringLiteral("runlistRows"))->property("currentIndex").toInt(), 5);
}

} // namespace
} // namespace tessara
