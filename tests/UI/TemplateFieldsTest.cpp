#include "UI/WindowFixture.h"

#include <QImage>

namespace tessara {
namespace {

class TemplateFieldsTest : public WindowFixture
{
protected:
    TextLayer *addField(const QString &key, TemplateFieldKind kind, const QString &text)
    {
        TextLayer *layer = document->addTextLayer();
        layer->setFieldKey(key);
        layer->setFieldKind(kind);
        layer->setText(text);
        settle();
        return layer;
    }
    ImageLayer *addPicture(const QString &key)
    {
        const QString file = data.filePath(QStringLiteral("wide logo.png"));
        QImage picture(400, 100, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        picture.save(file);
        ImageLayer *layer = *document->addImageLayer(QUrl::fromLocalFile(file));
        layer->setSize({300, 300});
        layer->setContentMode(ImageLayerContentMode::fitInside);
        layer->setPlaceholderKey(key);
        settle();
        return layer;
    }

    /// The place of a text field that is typed into.
    QQuickItem *areaOf(const QString &key) const
    {
        const QQuickItem *row = item(QStringLiteral("field_") + key);
        for (QQuickItem *candidate : visibleItems()) {
            if (candidate->objectName() == QStringLiteral("area") && row->isAncestorOf(candidate))
                return candidate;
        }
        ADD_FAILURE() << "no text area for " << qPrintable(key);
        return nullptr;
    }
    QString textOf(const QString &name) const { return item(name)->property("text").toString(); }
};

TEST_F(TemplateFieldsTest, TheSectionStandsOnlyWhereThereAreFields)
{
    addTitle();
    EXPECT_FALSE(item(QStringLiteral("templateFields"))->isVisible());

    addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Live"));

    EXPECT_TRUE(item(QStringLiteral("templateFields"))->isVisible());
    EXPECT_EQ(textOf(QStringLiteral("templateFieldCount")), QStringLiteral("1"));
}

TEST_F(TemplateFieldsTest, TypingGoesToTheLayerAndTheCursorStays)
{
    const TextLayer *title =
        addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Live"));
    QQuickItem *area = areaOf(QStringLiteral("title"));
    click(area);
    press(Qt::Key_Home);

    for (const QChar letter : QStringLiteral("Now ")) {
        type(letter);
        settle(); // the list tells of the change while the field is typed in
    }

    EXPECT_EQ(title->text(), QStringLiteral("Now Live"));
    EXPECT_EQ(area->property("cursorPosition").toInt(), 4);
    EXPECT_TRUE(area->hasActiveFocus());
}

TEST_F(TemplateFieldsTest, TypingSurvivesFieldsThatComeAndGo)
{
    const TextLayer *title = addField(QStringLiteral("title"), TemplateFieldKind::text, QString());
    QQuickItem *area = areaOf(QStringLiteral("title"));
    click(area);
    type(QStringLiteral("ab"));

    const QUuid other =
        addField(QStringLiteral("a"), TemplateFieldKind::text, QStringLiteral("x"))->id();
    type(QStringLiteral("c"));
    document->removeLayer(other);
    settle();
    type(QStringLiteral("d"));

    EXPECT_EQ(title->text(), QStringLiteral("abcd"));
    EXPECT_TRUE(area->hasActiveFocus());
}

TEST_F(TemplateFieldsTest, AScoreGoesUpAndDownAndNeverBelowZero)
{
    const TextLayer *score =
        addField(QStringLiteral("home_score"), TemplateFieldKind::score, QStringLiteral("0"));

    click(item(QStringLiteral("field_home_score_up")));
    click(item(QStringLiteral("field_home_score_up")));
    EXPECT_EQ(score->text(), QStringLiteral("2"));
    EXPECT_EQ(textOf(QStringLiteral("field_home_score")), QStringLiteral("2"));

    for (int times = 0; times < 3; ++times)
        click(item(QStringLiteral("field_home_score_down")));
    EXPECT_EQ(score->text(), QStringLiteral("0"));
}

TEST_F(TemplateFieldsTest, ATimerIsShownAndFollows)
{
    TextLayer *timer =
        addField(QStringLiteral("clock"), TemplateFieldKind::timer, QStringLiteral("10:00:00"));
    EXPECT_EQ(textOf(QStringLiteral("field_clock")), timer->text());

    EXPECT_TRUE(until([this] {
        document->setRealtimeTimerText(QStringLiteral("23:59:58")); // the clock has its own
        return textOf(QStringLiteral("field_clock")) == QStringLiteral("23:59:58");
    }));
}

TEST_F(TemplateFieldsTest, APictureIsFittedCroppedMovedAndReset)
{
    ImageLayer *logo = addPicture(QStringLiteral("logo"));
    EXPECT_EQ(textOf(QStringLiteral("field_logo")), QStringLiteral("wide logo.png"));
    EXPECT_FALSE(itemWithText(QStringLiteral("Crop Position")));

    click(segment(QStringLiteral("Show Full Logo"))); // is chosen already
    EXPECT_EQ(logo->contentMode(), ImageLayerContentMode::fitInside);
    click(segment(QStringLiteral("Crop to Fit")));
    EXPECT_EQ(logo->contentMode(), ImageLayerContentMode::fillCrop);

    const double middle = logo->normalizedCropRect(logo->size()).x();
    click(item(QStringLiteral("crop_Left")));
    EXPECT_NEAR(logo->cropRectNormalized()->x(), middle - 0.04, 1e-9);
    click(item(QStringLiteral("crop_Right")));
    click(item(QStringLiteral("crop_Right")));
    EXPECT_NEAR(logo->cropRectNormalized()->x(), middle + 0.04, 1e-9);
    click(item(QStringLiteral("crop_Center")));
    EXPECT_EQ(logo->cropRectNormalized(), std::nullopt);
}

TEST_F(TemplateFieldsTest, AnotherPictureIsChosenFromAFile)
{
    const ImageLayer *logo = addPicture(QStringLiteral("logo"));
    const QString file = data.filePath(QStringLiteral("other.png"));
    QImage(64, 64, QImage::Format_RGB32).save(file);

    auto *dialog = window->findChild<QObject *>(QStringLiteral("fieldPictureDialog"));
    ASSERT_TRUE(dialog);
    dialog->setProperty("currentFolder", QUrl::fromLocalFile(data.path()));

    click(item(QStringLiteral("field_logo_choose")));
    ASSERT_TRUE(until([this] { return itemWithText(QStringLiteral("other.png")) != nullptr; }));
    click(itemWithText(QStringLiteral("other.png")));
    click(itemWithText(QStringLiteral("Open")));

    EXPECT_EQ(logo->sourceURL(), QUrl::fromLocalFile(file));
    EXPECT_EQ(textOf(QStringLiteral("field_logo")), QStringLiteral("other.png"));
}

TEST_F(TemplateFieldsTest, TheSectionFolds)
{
    addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Live"));
    EXPECT_TRUE(item(QStringLiteral("field_title"))->isVisible());

    click(item(QStringLiteral("templateFieldsHead")));
    keepPicture(QStringLiteral("template-fields-folded"));

    EXPECT_FALSE(item(QStringLiteral("field_title"))->isVisible());
    EXPECT_TRUE(itemWithText(QStringLiteral("Template Fields")));
}

TEST_F(TemplateFieldsTest, TheFieldsStayWithNothingSelectedAndWithALockedLayer)
{
    TextLayer *title =
        addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Live"));

    document->setSelectedLayerIDs({});
    settle();
    keepPicture(QStringLiteral("template-fields-nothing-selected"));
    EXPECT_TRUE(itemWithText(QStringLiteral("Template Fields")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Select a layer to edit its properties")));

    document->setSelectedLayerIDs({title->id()});
    title->setIsLocked(true);
    settle();
    EXPECT_TRUE(itemWithText(QStringLiteral("Template Fields")));
    EXPECT_TRUE(itemWithText(QStringLiteral("Layer is locked")));
}

TEST_F(TemplateFieldsTest, AllKindsOfFieldsStandTogether)
{
    window->setHeight(1100);
    addField(QStringLiteral("title"), TemplateFieldKind::text, QStringLiteral("Bangkok Sport"));
    addField(QStringLiteral("lyrics"), TemplateFieldKind::text,
             QStringLiteral("Line one\nLine two"));
    addField(QStringLiteral("home_score"), TemplateFieldKind::score, QStringLiteral("2"));
    addField(QStringLiteral("realtime_timer_1"), TemplateFieldKind::timer,
             QStringLiteral("21:47:32"));
    addPicture(QStringLiteral("profile_image"))->setContentMode(ImageLayerContentMode::fillCrop);
    settle();
    keepPicture(QStringLiteral("template-fields"));

    EXPECT_EQ(textOf(QStringLiteral("templateFieldCount")), QStringLiteral("5"));
}

TEST_F(TemplateFieldsTest, ASwitchMakesATextAFieldAndTakesItBack)
{
    addTitle();
    ASSERT_EQ(document->layersOf<TextLayer>().size(), 1);
    TextLayer *title = document->layersOf<TextLayer>().constFirst();
    title->setName(QStringLiteral(" Home Team "));
    window->setHeight(1100);
    settle();

    click(item(QStringLiteral("dynamicField")));
    keepPicture(QStringLiteral("dynamic-field"));
    EXPECT_EQ(title->fieldKind(), TemplateFieldKind::text);
    EXPECT_EQ(title->fieldKey(), QStringLiteral("home_team"));
    EXPECT_EQ(textOf(QStringLiteral("templateFieldCount")), QStringLiteral("1"));

    click(item(QStringLiteral("dynamicField")));
    EXPECT_EQ(title->fieldKind(), std::nullopt);
    EXPECT_EQ(title->fieldKey(), std::nullopt);
}

TEST_F(TemplateFieldsTest, AKeyIsNormalizedAsItIsTyped)
{
    TextLayer *title = addField(QStringLiteral("a"), TemplateFieldKind::text, QString());
    window->setHeight(1100);
    settle();
    QQuickItem *box = item(QStringLiteral("fieldKeyField"));
    click(box);

    type(QStringLiteral("Home Score"));

    EXPECT_EQ(box->property("text").toString(), QStringLiteral("home_score"));
    EXPECT_EQ(title->fieldKey(), QStringLiteral("home_score"));
}

TEST_F(TemplateFieldsTest, TheTypeOfAFieldIsChosen)
{
    const TextLayer *title =
        addField(QStringLiteral("a"), TemplateFieldKind::text, QStringLiteral("3"));
    window->setHeight(1100);
    settle();

    click(segment(QStringLiteral("Score")));

    EXPECT_EQ(title->fieldKind(), TemplateFieldKind::score);
    EXPECT_TRUE(until([this] { return itemWithText(QStringLiteral("Score")) != nullptr; }));
    EXPECT_TRUE(item(QStringLiteral("field_a_up")));
}

} // namespace
} // namespace tessara
