#include <QColor>

#include "Base/ManualClock.h"
#include "UI/LayerEditor.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

class LayerEditorTest : public testing::Test
{
protected:
    QVariant value(const char *key) const { return editor.value(QLatin1String(key)); }
    // As a binding of the window writes it.
    void write(const char *key, const QVariant &input) { editor.setProperty(key, input); }

    ManualClock clock;
    CanvasDocument document{clock};
    LayerEditor editor{document};
};

TEST_F(LayerEditorTest, FollowsTheSelection)
{
    EXPECT_EQ(value("kindName"), QString());

    document.addTextLayer();
    EXPECT_EQ(value("kindName"), QStringLiteral("text"));
    EXPECT_EQ(value("fontSize"), 98.0);

    document.addCountdownLayer();
    EXPECT_EQ(value("kindName"), QStringLiteral("countdown"));

    document.setSelectedLayerIDs({});
    EXPECT_EQ(value("kindName"), QString());
}

TEST_F(LayerEditorTest, SpeaksOfColoursAndCasesAsTheWindowDoes)
{
    TextLayer *text = document.addTextLayer();

    write("color", QColor(255, 0, 0, 128));
    write("horizontalAlignment", QStringLiteral("center"));
    write("fontWeight", 700);

    EXPECT_EQ(text->color().red, 1);
    EXPECT_NEAR(text->color().alpha, 0.5, 0.01);
    EXPECT_EQ(text->horizontalAlignment(), TextLayerHorizontalAlignment::center);
    EXPECT_EQ(text->fontWeight(), 700.0);
    EXPECT_EQ(value("horizontalAlignment"), QStringLiteral("center"));
}

TEST_F(LayerEditorTest, WritesTheRunSettingsOfTheSelectedLayer)
{
    const QUuid id = document.addTextLayer()->id();

    write("transitionStyle", QStringLiteral("presetReveal"));
    write("dissolveDuration", 20);
    write("autoOutDuration", 5);

    EXPECT_EQ(document.runSettings(id),
              (LayerRunSettings{LayerRunTransitionStyle::presetReveal, 8, 5}));
    EXPECT_EQ(value("dissolveDuration"), 8.0);
}

TEST_F(LayerEditorTest, ALockedRatioCarriesTheOtherSideAlong)
{
    ShapeLayer *shape = document.addTemplateShapeLayer(ShapeKind::rectangle);

    editor.setWidth(800);
    EXPECT_EQ(shape->size(), QSizeF(800, 240));

    editor.setAspectRatioLocked(false);
    editor.setHeight(100);
    EXPECT_EQ(shape->size(), QSizeF(800, 100));
}

TEST_F(LayerEditorTest, ShowsWhatTheLayerDoesByItself)
{
    CountdownLayer *countdown = document.addCountdownLayer();
    editor.startCountdown();

    clock.advance(Seconds{9.5});

    EXPECT_EQ(value("formattedTime"), QStringLiteral("04:50"));
    EXPECT_EQ(value("isRunning"), true);
    editor.resetCountdown();
    EXPECT_EQ(countdown->remainingSeconds(), 300);
    EXPECT_FALSE(countdown->isRunning());
}

TEST_F(LayerEditorTest, ATextBecomesAFieldUnderItsNameAndNoLongerOne)
{
    TextLayer *text = document.addTextLayer();
    text->setName(QStringLiteral("Home Score "));

    editor.setDynamicField(true);
    EXPECT_EQ(text->fieldKind(), TemplateFieldKind::text);
    EXPECT_EQ(text->fieldKey(), QStringLiteral("home_score"));
    EXPECT_EQ(value("fieldKind"), QStringLiteral("text"));

    editor.setDynamicField(false);
    EXPECT_EQ(text->fieldKind(), std::nullopt);
    EXPECT_EQ(text->fieldKey(), std::nullopt);
    EXPECT_FALSE(value("fieldKind").isValid());
}

TEST_F(LayerEditorTest, AFieldKeepsTheTypeAndTheKeyThatItHas)
{
    TextLayer *text = document.addTextLayer();
    text->setFieldKind(TemplateFieldKind::score);
    text->setFieldKey(QStringLiteral("Away"));

    editor.setDynamicField(true);

    EXPECT_EQ(text->fieldKind(), TemplateFieldKind::score);
    EXPECT_EQ(text->fieldKey(), QStringLiteral("Away"));
}

TEST_F(LayerEditorTest, ANamelessTextBecomesTheFieldField)
{
    TextLayer *text = document.addTextLayer();
    text->setName({});
    text->setFieldKey(QString());

    editor.setDynamicField(true);

    EXPECT_EQ(text->fieldKey(), QStringLiteral("field"));
}

TEST_F(LayerEditorTest, AKeyIsStoredNormalizedAndAnEmptyOneIsKept)
{
    TextLayer *text = document.addTextLayer();

    editor.setFieldKey(QStringLiteral(" Away Score "));
    EXPECT_EQ(text->fieldKey(), QStringLiteral("away_score"));

    editor.setFieldKey(QString());
    EXPECT_EQ(text->fieldKey(), QString());
}

TEST_F(LayerEditorTest, TheTypeOfAFieldIsWrittenByItsName)
{
    TextLayer *text = document.addTextLayer();

    write("fieldKind", QStringLiteral("timer"));

    EXPECT_EQ(text->fieldKind(), TemplateFieldKind::timer);
    EXPECT_EQ(value("fieldKind"), QStringLiteral("timer"));
}

TEST_F(LayerEditorTest, SaysWhereATextIsLongerThanCanBeShown)
{
    TextLayer *text = document.addTextLayer();
    EXPECT_EQ(value("textNote"), QString());

    const QString megabyte(1'000'000, QLatin1Char('x'));
    write("text", megabyte);

    EXPECT_EQ(value("textNote"),
              QStringLiteral("This text is longer than can be shown: its beginning is drawn, and "
                             "nothing of it is lost."));
    EXPECT_EQ(text->text(), megabyte);
    write("text", QStringLiteral("short"));
    EXPECT_EQ(value("textNote"), QString());
}

} // namespace
} // namespace tessara
