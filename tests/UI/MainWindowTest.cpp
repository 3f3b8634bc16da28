#include "UI/WindowFixture.h"

#include "DeckLink/VirtualCard.h"

#include <QAccessible>
#include <QImage>

namespace tessara {
namespace {

class MainWindowTest : public WindowFixture
{
protected:
    Layer *selected() const { return document->layer(*document->selectedLayerID()); }

    void openOutputSheet()
    {
        click(item(QStringLiteral("outputButton")));
        ASSERT_TRUE(until([this] { return item(QStringLiteral("startButton"))->isVisible(); }));
    }

    void startOutput()
    {
        openOutputSheet();
        click(item(QStringLiteral("startButton")));
        ASSERT_TRUE(until([this] { return app->isDeckLinkOutputRunning(); }));
    }

    double rightEdge(const QString &name) const
    {
        const QQuickItem *found = item(name);
        return found->mapToScene(QPointF(found->width(), 0)).x();
    }

    void expectNothingClipped() const
    {
        for (QQuickItem *candidate : visibleItems()) {
            const QString text = candidate->property("text").toString();
            if (!candidate->inherits("QQuickText") || text.isEmpty())
                continue;
            EXPECT_FALSE(candidate->property("truncated").toBool()) << qPrintable(text);
            EXPECT_LE(candidate->mapToScene(QPointF(candidate->width(), 0)).x(), window->width())
                << qPrintable(text);
        }
    }

    QString outputText() const
    {
        return item(QStringLiteral("outputButton"))->property("text").toString();
    }
};

TEST_F(MainWindowTest, ANewShowInvitesToAddALayer)
{
    EXPECT_TRUE(itemWithText(QStringLiteral("No Layers")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Add a layer")));
    keepPicture(QStringLiteral("empty"));
}

TEST_F(MainWindowTest, TheToolPickerAddsATitleAndCloses)
{
    addTitle();

    ASSERT_EQ(document->layerOrder().size(), 1);
    EXPECT_EQ(selected()->name(), QStringLiteral("Text 1"));
    EXPECT_FALSE(item(QStringLiteral("tool0"))->isVisible());
}

TEST_F(MainWindowTest, TheToolPickerIsDrivenByKeysAlone)
{
    item(QStringLiteral("toolButton"))->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    keepPicture(QStringLiteral("tools"));
    press(Qt::Key_Return);

    ASSERT_EQ(document->layersOf<CountdownLayer>().size(), 1);
}

TEST_F(MainWindowTest, TheShapeMenuAddsTheShapeThatIsChosen)
{
    openTools();
    click(item(QStringLiteral("tool1")));
    keepPicture(QStringLiteral("shapes"));
    click(itemWithText(QStringLiteral("Star")));

    ASSERT_EQ(document->layersOf<ShapeLayer>().size(), 1);
    EXPECT_EQ(document->layersOf<ShapeLayer>().first()->kind(), ShapeKind::star);
}

TEST_F(MainWindowTest, WhatIsTypedInTheInspectorIsOnTheCanvasAtOnce)
{
    addTitle();
    click(item(QStringLiteral("textContent")));
    press(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("Good evening"));

    EXPECT_EQ(document->layersOf<TextLayer>().first()->text(), QStringLiteral("Good evening"));
    keepPicture(QStringLiteral("title"));
}

TEST_F(MainWindowTest, ANameIsKeptOnReturnAndDroppedOnEscape)
{
    addTitle();
    QQuickItem *field = item(QStringLiteral("nameField"));

    click(field);
    type(QStringLiteral("Headline"));
    press(Qt::Key_Return);
    EXPECT_EQ(selected()->name(), QStringLiteral("Headline"));

    click(field);
    type(QStringLiteral("Mistake"));
    press(Qt::Key_Escape);
    EXPECT_EQ(selected()->name(), QStringLiteral("Headline"));
    EXPECT_EQ(field->property("text").toString(), QStringLiteral("Headline"));
}

TEST_F(MainWindowTest, AScoreBarIsAddedAndScored)
{
    window->resize(1280, 1100);
    openTools();
    click(item(QStringLiteral("tool3")));
    ASSERT_EQ(document->layersOf<ScoreLayer>().size(), 1);
    const ScoreLayer *bar = document->layersOf<ScoreLayer>().first();

    click(item(QStringLiteral("awayScoreUp")));
    click(item(QStringLiteral("homeTeam")));
    press(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("Chiang Mai"));

    EXPECT_EQ(bar->awayScore(), 1);
    EXPECT_EQ(bar->homeTeam(), QStringLiteral("Chiang Mai"));
    keepPicture(QStringLiteral("score"));
    click(item(QStringLiteral("applySport")));
    EXPECT_EQ(bar->homeTeam(), QStringLiteral("HOME"));
    click(item(QStringLiteral("resetScore")));
    EXPECT_EQ(bar->homeScore() + bar->awayScore(), 0);
    expectNothingClipped();
}

TEST_F(MainWindowTest, DeleteRemovesTheSelectedLayerButNotWhileTyping)
{
    addTitle();
    click(item(QStringLiteral("textContent")));
    press(Qt::Key_Delete);
    EXPECT_EQ(document->layerOrder().size(), 1);

    click(item(QStringLiteral("canvas")));
    item(QStringLiteral("layersList"))->forceActiveFocus();
    press(Qt::Key_Delete);

    EXPECT_TRUE(document->layerOrder().isEmpty());
}

TEST_F(MainWindowTest, APictureFileIsChosenInTheDialog)
{
    QImage picture(64, 32, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString file = data.filePath(QStringLiteral("team.png"));
    ASSERT_TRUE(picture.save(file));
    auto *dialog = window->findChild<QObject *>(QStringLiteral("pictureDialog"));
    ASSERT_TRUE(dialog);
    dialog->setProperty("currentFolder", QUrl::fromLocalFile(data.path()));

    openTools();
    click(item(QStringLiteral("tool2")));
    ASSERT_TRUE(until([this] { return itemWithText(QStringLiteral("team.png")) != nullptr; }));
    keepPicture(QStringLiteral("picture-dialog"));
    click(itemWithText(QStringLiteral("team.png")));
    click(itemWithText(QStringLiteral("Open")));

    ASSERT_TRUE(until([this] { return !document->layersOf<ImageLayer>().isEmpty(); }));
    EXPECT_EQ(document->layersOf<ImageLayer>().first()->name(), QStringLiteral("team"));
}

TEST_F(MainWindowTest, ABrokenPictureIsAnsweredWithItsTextAndAddsNothing)
{
    workspace->addPicture(QUrl::fromLocalFile(data.filePath(QStringLiteral("none.png"))));
    settle();

    EXPECT_TRUE(itemWithText(QStringLiteral("Could not load image file.")));
    EXPECT_TRUE(document->layerOrder().isEmpty());
}

TEST_F(MainWindowTest, TheOutputSheetOpensWithTheFocusOnRouting)
{
    openOutputSheet();

    EXPECT_TRUE(item(QStringLiteral("routing"))->hasActiveFocus());
    keepPicture(QStringLiteral("sheet-stopped"));
}

TEST_F(MainWindowTest, AShowOfPresetsIsOnAirAndReadable)
{
    for (const char *name : {"Score Strip", "Weather Card", "Bilingual Lower Third"}) {
        for (const TextPreset &preset : app->systemPresets()) {
            if (preset.name == QLatin1String(name))
                app->applyPreset(preset.id);
        }
    }
    document->addCountdownLayer()->setPosition({96, 330});
    startOutput();
    press(Qt::Key_Escape);
    ASSERT_TRUE(until([] { return VirtualCard::find()->frames(0)->sent > 5; }));

    EXPECT_EQ(workspace->entries()->count(), 4);
    expectNothingClipped();
    keepPicture(QStringLiteral("show"));
}

TEST_F(MainWindowTest, StartingTheOutputTurnsTheAirMarksRed)
{
    addTitle();
    startOutput();
    press(Qt::Key_Escape);

    EXPECT_EQ(outputText(), QStringLiteral("ON AIR  —  Stop"));
    EXPECT_TRUE(item(QStringLiteral("tallyTab"))->isVisible());
    EXPECT_TRUE(itemWithText(QStringLiteral("Output started")));
    ASSERT_TRUE(until([] { return VirtualCard::find()->frames(0)->sent > 5; }));
    expectNothingClipped();
    keepPicture(QStringLiteral("on-air"));
}

TEST_F(MainWindowTest, ReturnInTheSheetNeverGoesOnAir)
{
    openOutputSheet();
    item(QStringLiteral("startButton"))->forceActiveFocus(Qt::TabFocusReason);

    press(Qt::Key_Return);

    EXPECT_FALSE(app->isDeckLinkOutputRunning());
}

TEST_F(MainWindowTest, AnotherRoutingStopsARunningOutput)
{
    startOutput();
    keepPicture(QStringLiteral("sheet-running"));

    click(item(QStringLiteral("routing")));
    click(itemWithText(QStringLiteral("DeckLink Key+Fill (Dual Device)")));

    EXPECT_EQ(app->deckLinkOutputRouting(), DeckLinkOutputRouting::keyAndFill);
    EXPECT_FALSE(app->isDeckLinkOutputRunning());
    EXPECT_TRUE(itemWithText(
        QStringLiteral("Key mode follows Fill mode: 1080p50 (1920x1080 @ 50.00 fps)")));
    keepPicture(QStringLiteral("sheet-key-and-fill"));
}

TEST_F(MainWindowTest, AFailureStandsInTheStatusBarAndTheRedIsGone)
{
    startOutput();
    press(Qt::Key_Escape);
    ASSERT_TRUE(VirtualCard::find()->fail(0, QStringLiteral("DisplayVideoFrameSync"), 1));

    ASSERT_TRUE(until([this] { return !app->isDeckLinkOutputRunning(); }));
    settle();

    EXPECT_EQ(item(QStringLiteral("statusError"))->property("text").toString(),
              QStringLiteral("DisplayVideoFrameSync failed."));
    EXPECT_EQ(outputText(), QStringLiteral("DeckLink Output"));
    EXPECT_FALSE(item(QStringLiteral("tallyTab"))->isVisible());
    expectNothingClipped();
    keepPicture(QStringLiteral("failure"));
}

TEST_F(MainWindowTest, EveryControlHasAName)
{
    addTitle();
    document->addCountdownLayer();
    openTools();
    int controls = 0;

    for (QQuickItem *candidate : visibleItems()) {
        if (!candidate->inherits("QQuickAbstractButton") && !candidate->inherits("QQuickTextField"))
            continue;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(candidate);
        ASSERT_TRUE(accessible);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << candidate->metaObject()->className() << qPrintable(candidate->objectName());
        ++controls;
    }

    EXPECT_GT(controls, 20);
}

TEST_F(MainWindowTest, NothingIsClippedAtTheSmallestSize)
{
    window->resize(window->minimumSize());
    document->addTemplateShapeLayer(ShapeKind::rectangle);
    document->addCountdownLayer();
    addTitle();
    keepPicture(QStringLiteral("smallest"));

    expectNothingClipped();
    EXPECT_EQ(rightEdge(QStringLiteral("textContent")), rightEdge(QStringLiteral("nameField")));
}

TEST_F(MainWindowTest, TheCanvasShowsAShapeUpright)
{
    ShapeLayer *triangle = document->addTemplateShapeLayer(ShapeKind::triangle);
    triangle->setColor({1, 0, 0, 1});
    triangle->setPosition({0, 0});
    triangle->setSize({1920, 1080});
    document->setSelectedLayerIDs({});
    settle();
    const auto *canvas = item(QStringLiteral("canvas"));
    const QRectF rect = canvas->property("canvasRect").toRectF();

    const QImage picture = window->grabWindow();
    const auto colorAt = [&](double x, double y) {
        const QPointF scene =
            canvas->mapToScene(rect.topLeft() + QPointF(x * rect.width(), y * rect.height()));
        return picture.pixelColor((scene * window->effectiveDevicePixelRatio()).toPoint());
    };

    EXPECT_EQ(colorAt(0.1, 0.95), QColor(Qt::red));
    EXPECT_NE(colorAt(0.1, 0.1), QColor(Qt::red));
}

} // namespace
} // namespace tessara
