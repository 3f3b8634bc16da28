#include "Models/TemplateFields.h"

#include <QTemporaryDir>

#include "Models/DocumentFixture.h"

namespace tessara {
namespace {

class TemplateFieldsTest : public DocumentFixture
{
protected:
    TextLayer *addField(const char *key, TemplateFieldKind kind, const char *text)
    {
        TextLayer *layer = document.addTextLayer();
        layer->setFieldKey(QString::fromUtf8(key));
        layer->setFieldKind(kind);
        layer->setText(QString::fromUtf8(text));
        return layer;
    }

    ImageLayer *addSlot(const char *key, QSize picture = {400, 100}, QSizeF size = {200, 100})
    {
        ImageLayer *layer = addPicture(picture);
        layer->setPlaceholderKey(QString::fromUtf8(key));
        layer->setSize(size);
        layer->setContentMode(ImageLayerContentMode::fillCrop);
        return layer;
    }

    QUrl pictureFile(QSize size)
    {
        const QString path = directory.filePath(QStringLiteral("new logo.png"));
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::green);
        EXPECT_TRUE(image.save(path));
        return QUrl::fromLocalFile(path);
    }

    QString valueOf(const char *key) const
    {
        for (const DynamicTemplateField &field : document.dynamicTemplateFields()) {
            if (field.key == QString::fromUtf8(key))
                return field.value;
        }
        return QStringLiteral("(none)");
    }

    QTemporaryDir directory;
};

using Fields = QList<DynamicTemplateField>;

TEST_F(TemplateFieldsTest, AKeyIsTrimmedLoweredAndWithoutBlanks)
{
    EXPECT_EQ(normalizedFieldKey(QStringLiteral(" \n Home Score\t")), QStringLiteral("home_score"));
    EXPECT_EQ(normalizedFieldKey(QStringLiteral("a  b")), QStringLiteral("a__b"));
    EXPECT_EQ(normalizedFieldKey(QStringLiteral("ชื่อ ทีม")), QStringLiteral("ชื่อ_ทีม"));
    EXPECT_EQ(normalizedFieldKey(QStringLiteral(" \n ")), QString());
}

TEST_F(TemplateFieldsTest, LayersOfOneKeyAreOneField)
{
    TextLayer *first = addField("Home", TemplateFieldKind::score, "3");
    TextLayer *second = addField("home ", TemplateFieldKind::score, "4");
    EXPECT_EQ(document.dynamicTemplateFields(),
              (Fields{{QStringLiteral("home"), TemplateFieldKind::score, QStringLiteral("3")}}));

    document.setDynamicTemplateFieldValue(QStringLiteral("5"), QStringLiteral(" HOME"));

    EXPECT_EQ(first->text(), QStringLiteral("5"));
    EXPECT_EQ(second->text(), QStringLiteral("5"));
}

TEST_F(TemplateFieldsTest, TheFirstLayerGivesKindAndValueAndTheListIsSorted)
{
    addField("title", TemplateFieldKind::text, "Good evening");
    addField("away", TemplateFieldKind::score, "1");
    addField("away", TemplateFieldKind::text, "Andaman");
    addSlot("logo");
    addSlot("title"); // a text holds the key
    addSlot("  ");
    document.addTextLayer()->setText(QStringLiteral("no field"));

    Fields fields = document.dynamicTemplateFields();
    ASSERT_EQ(fields.size(), 3);
    EXPECT_EQ(fields[0], (DynamicTemplateField{QStringLiteral("away"), TemplateFieldKind::score,
                                               QStringLiteral("1")}));
    EXPECT_EQ(fields[1].key, QStringLiteral("logo"));
    EXPECT_EQ(fields[1].kind, TemplateFieldKind::image);
    EXPECT_EQ(fields[2].key, QStringLiteral("title"));
    EXPECT_EQ(fields[2].kind, TemplateFieldKind::text);
}

TEST_F(TemplateFieldsTest, ATextWithoutAKeyGoesByItsName)
{
    TextLayer *title = document.addTextLayer();
    title->setName(QStringLiteral("Title 1"));
    title->setFieldKind(TemplateFieldKind::text);
    EXPECT_EQ(document.dynamicTemplateFields().first().key, QStringLiteral("title_1"));

    title->setFieldKey(QString()); // present and empty
    EXPECT_TRUE(document.dynamicTemplateFields().isEmpty());
    document.setDynamicTemplateFieldValue(QStringLiteral("Lost"), QString());
    EXPECT_EQ(title->text(), QStringLiteral("Text 1"));
}

TEST_F(TemplateFieldsTest, AScoreStepsFromItsNumberAndNotBelowZero)
{
    TextLayer *score = addField("score", TemplateFieldKind::score, "0");
    const auto step = [&](const char *from, qint64 delta) {
        score->setText(QString::fromUtf8(from));
        document.adjustDynamicTemplateScore(QStringLiteral("Score"), delta);
        return score->text().toStdString();
    };

    EXPECT_EQ(step("0", -1), "0");
    EXPECT_EQ(step(" 7 ", 1), "8");
    EXPECT_EQ(step("+3", 2), "5");
    EXPECT_EQ(step("-3", 1), "0");
    EXPECT_EQ(step("12 pts", 1), "1");
    EXPECT_EQ(step("", 3), "3");
    EXPECT_EQ(step("9223372036854775807", 1), "9223372036854775807");
}

TEST_F(TemplateFieldsTest, AnUnknownKeyChangesNothing)
{
    TextLayer *score = addField("score", TemplateFieldKind::score, "4");
    ImageLayer *slot = addSlot("logo");
    const Picture before = slot->image();

    document.adjustDynamicTemplateScore(QStringLiteral("other"), 1);
    document.setDynamicTemplateFieldValue(QStringLiteral("9"), QStringLiteral("other"));
    EXPECT_TRUE(document.replaceDynamicImageField(QStringLiteral("other"), pictureFile({8, 8})));
    document.nudgeDynamicImageCrop(QStringLiteral("other"), 0.1, 0.1);
    document.resetDynamicImageCrop(QStringLiteral("other"));

    EXPECT_EQ(score->text(), QStringLiteral("4"));
    EXPECT_EQ(slot->image(), before);
    EXPECT_FALSE(slot->cropRectNormalized().has_value());
    EXPECT_EQ(document.dynamicImageContentMode(QStringLiteral("other")),
              ImageLayerContentMode::fitInside);
}

TEST_F(TemplateFieldsTest, AReplacedPictureIsWholeInFrontAndListed)
{
    ImageLayer *slot = addSlot("logo");
    slot->setCropRectNormalized(QRectF(0, 0, 0.5, 0.5));
    slot->setMaskShape(ImageLayerMaskShape::circle);
    ImageLayer *plain = addSlot("Logo ");
    const QUuid title = document.addTextLayer()->id();
    const QUrl file = pictureFile({300, 100});

    ASSERT_TRUE(document.replaceDynamicImageField(QStringLiteral("LOGO"), file));

    EXPECT_EQ(slot->image().size(), QSize(300, 100));
    EXPECT_EQ(slot->sourceURL(), file);
    EXPECT_DOUBLE_EQ(slot->lockedAspectRatio(), 3);
    EXPECT_FALSE(slot->cropRectNormalized().has_value());
    EXPECT_EQ(slot->maskPadding(), 12);
    EXPECT_EQ(plain->maskPadding(), 0); // a rectangle needs no margin
    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{title, slot->id(), plain->id()}));
    EXPECT_EQ(valueOf("logo"), QStringLiteral("new logo.png"));
}

TEST_F(TemplateFieldsTest, AMarginOfItsOwnIsKept)
{
    ImageLayer *slot = addSlot("logo");
    slot->setMaskShape(ImageLayerMaskShape::hexagon);
    slot->setMaskPadding(3);

    ASSERT_TRUE(document.replaceDynamicImageField(QStringLiteral("logo"), pictureFile({8, 8})));

    EXPECT_EQ(slot->maskPadding(), 3);
}

TEST_F(TemplateFieldsTest, AFileThatIsNoPictureChangesNothing)
{
    ImageLayer *slot = addSlot("logo");
    const Picture before = slot->image();

    const auto result = document.replaceDynamicImageField(
        QStringLiteral("logo"), QUrl::fromLocalFile(directory.filePath(QStringLiteral("no.png"))));

    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(text(result.error()), QStringLiteral("Could not load image file."));
    EXPECT_EQ(slot->image(), before);
}

TEST_F(TemplateFieldsTest, PictureOperationsReachASlotWhoseKeyATextHolds)
{
    addField("logo", TemplateFieldKind::text, "Logo");
    ImageLayer *slot = addSlot("logo");

    document.setDynamicImageContentMode(ImageLayerContentMode::fitInside, QStringLiteral("logo"));

    EXPECT_EQ(slot->contentMode(), ImageLayerContentMode::fitInside);
    EXPECT_EQ(document.dynamicImageContentMode(QStringLiteral("logo")),
              ImageLayerContentMode::fitInside);
    EXPECT_EQ(document.dynamicTemplateFields().first().kind, TemplateFieldKind::text);
}

TEST_F(TemplateFieldsTest, ANudgeMovesTheShownPartAndStopsAtTheEdge)
{
    ImageLayer *slot = addSlot("logo"); // 4 : 1 in 2 : 1 shows the middle half
    const auto nudge = [&](double x, double y) {
        document.nudgeDynamicImageCrop(QStringLiteral("logo"), x, y);
        return *slot->cropRectNormalized();
    };

    EXPECT_EQ(nudge(0.04, 0), QRectF(0.29, 0, 0.5, 1));
    EXPECT_EQ(nudge(0, 0.04), QRectF(0.29, 0, 0.5, 1));
    EXPECT_EQ(nudge(5, 0), QRectF(0.5, 0, 0.5, 1));
    EXPECT_EQ(nudge(-5, 0), QRectF(0, 0, 0.5, 1));
    document.resetDynamicImageCrop(QStringLiteral("logo"));
    EXPECT_FALSE(slot->cropRectNormalized().has_value());

    slot->setContentMode(ImageLayerContentMode::fitInside);
    document.nudgeDynamicImageCrop(QStringLiteral("logo"), 0.04, 0);
    EXPECT_FALSE(slot->cropRectNormalized().has_value());
}

TEST_F(TemplateFieldsTest, ANudgeOfAFullCropStoresIt)
{
    ImageLayer *slot = addSlot("logo", {200, 100}, {200, 100});

    document.nudgeDynamicImageCrop(QStringLiteral("logo"), 0.04, 0.04);

    EXPECT_EQ(slot->cropRectNormalized(), QRectF(0, 0, 1, 1));
}

TEST_F(TemplateFieldsTest, CommentTextsGoByTheirKeyAlone)
{
    TextLayer *comment = document.addTextLayer();
    comment->setFieldKey(QStringLiteral("Facebook Comment"));
    TextLayer *named = document.addTextLayer();
    named->setName(QStringLiteral("facebook_comment"));
    named->setFieldKind(TemplateFieldKind::text);
    const QString key = QStringLiteral("facebook_comment");

    EXPECT_EQ(document.textLayerCount(key), 1);
    EXPECT_EQ(document.textLayerCount(QStringLiteral("  ")), 0);
    document.setTextValue(QStringLiteral("Hello"), key);
    document.setTextValue(QStringLiteral("Nobody"), QString());

    EXPECT_EQ(comment->text(), QStringLiteral("Hello"));
    EXPECT_EQ(named->text(), QStringLiteral("Text 2"));
}

} // namespace
} // namespace tessara
