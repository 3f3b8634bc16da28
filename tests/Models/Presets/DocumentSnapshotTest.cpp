#include "Models/DocumentFixture.h"

#include "Models/Presets/DocumentSnapshot.h"
#include "Models/Presets/PresetFormat.h"

#include <QPainter>

namespace tessara {
namespace {

class DocumentSnapshotTest : public DocumentFixture
{
protected:
    TextPreset snapshot() const { return presetOf(document, "user-1", "Mine"); }

    ShapeLayer *addShape(const QString &name)
    {
        ShapeLayer *shape = document.addTemplateShapeLayer(ShapeKind::diamond);
        shape->setName(name);
        return shape;
    }
};

TEST_F(DocumentSnapshotTest, ATextIsTakenAsItIs)
{
    TextLayer *text = document.addTextLayer();
    text->setName("Headline");
    text->setText("Two\nlines");
    text->setFontSize(77.5);
    text->setFontFamily("Sarabun");
    text->setFontWeight(600);
    text->setColor({0.1, 0.2, 0.3, 0.4});
    text->setOutlineColor({0.5, 0.6, 0.7, 0.8});
    text->setOutlineWidth(3);
    text->setPosition({11, 22.5});
    text->setTextBoxSize(QSizeF(300, 90));
    text->setHorizontalAlignment(TextLayerHorizontalAlignment::trailing);
    text->setFieldKey(" Home Score ");
    text->setFieldKind(TemplateFieldKind::score);

    EXPECT_EQ(
        snapshot().entries,
        QList<TextPresetEntry>({{.name = "Headline",
                                 .text = "Two\nlines",
                                 .fontSize = 77.5,
                                 .fontFamily = "Sarabun",
                                 .fontWeight = 600,
                                 .color = {0.1, 0.2, 0.3, 0.4},
                                 .outlineColor = {0.5, 0.6, 0.7, 0.8},
                                 .outlineWidth = 3,
                                 .position = {11, 22.5},
                                 .textBoxSize = QSizeF(300, 90),
                                 .horizontalAlignment = TextLayerHorizontalAlignment::trailing,
                                 .fieldKey = " Home Score ",
                                 .fieldKind = TemplateFieldKind::score}}));
}

TEST_F(DocumentSnapshotTest, AShapeIsTakenAsItIs)
{
    ShapeLayer *shape = addShape("Bar");
    shape->setPosition({-5, 7});
    shape->setSize({200, 40});
    shape->setColor({0.9, 0.8, 0.7, 0.6});
    shape->setCornerRadius(9);
    shape->setOpacity(0.25);

    EXPECT_EQ(snapshot().rects, QList<PresetRectEntry>({{.name = "Bar",
                                                         .position = {-5, 7},
                                                         .size = {200, 40},
                                                         .color = {0.9, 0.8, 0.7, 0.6},
                                                         .cornerRadius = 9,
                                                         .opacity = 0.25,
                                                         .kind = ShapeKind::diamond}}));
}

TEST_F(DocumentSnapshotTest, APictureCarriesItsPixels)
{
    QImage pixels(40, 20, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::transparent);
    QPainter(&pixels).fillRect(0, 0, 20, 20, Qt::red);
    ImageLayer *layer = addPicture({40, 20});
    layer->setName("Logo");
    layer->setImage(Picture(pixels));
    layer->setSourceURL(QUrl::fromLocalFile("/nowhere/logo.png"));
    layer->setPosition({1, 2});
    layer->setSize({80, 60});
    layer->setOpacity(0.5);
    layer->setIsAspectRatioLocked(false);
    layer->setCropRectNormalized(QRectF(0.1, 0.1, 0.5, 0.5));
    layer->setPlaceholderKey(" logo ");
    layer->setContentMode(ImageLayerContentMode::fitInside);
    layer->setMaskShape(ImageLayerMaskShape::shield);
    layer->setMaskPadding(4);

    const QList<PresetImageEntry> images = snapshot().images;

    ASSERT_EQ(images.size(), 1);
    const PresetImageEntry wanted{.name = "Logo",
                                  .position = {1, 2},
                                  .size = {80, 60},
                                  .opacity = 0.5,
                                  .isAspectRatioLocked = false,
                                  .cropRectNormalized = QRectF(0.1, 0.1, 0.5, 0.5),
                                  .placeholderKey = " logo ",
                                  .contentMode = ImageLayerContentMode::fitInside,
                                  .maskShape = ImageLayerMaskShape::shield,
                                  .maskPadding = 4,
                                  .pngBase64 = images[0].pngBase64};
    EXPECT_EQ(images[0], wanted);
    EXPECT_FALSE(images[0].pngBase64.contains('\n'));
    const QImage read = QImage::fromData(images[0].pngData().value(), "PNG");
    EXPECT_EQ(read.convertToFormat(pixels.format()), pixels);
}

TEST_F(DocumentSnapshotTest, ALayerStandsInItsKindsListBackToFront)
{
    const TextLayer *first = document.addTextLayer();
    addShape("A");
    const TextLayer *second = document.addTextLayer();
    ShapeLayer *last = addShape("B");
    document.moveInLayerOrder(last->id(), 0);
    document.moveInLayerOrder(second->id(), 1);

    const TextPreset preset = snapshot();

    ASSERT_EQ(preset.rects.size(), 2);
    EXPECT_EQ(preset.rects[0].name, "B");
    EXPECT_EQ(preset.rects[1].name, "A");
    ASSERT_EQ(preset.entries.size(), 2);
    EXPECT_EQ(preset.entries[0].name, second->name());
    EXPECT_EQ(preset.entries[1].name, first->name());
}

TEST_F(DocumentSnapshotTest, OtherKindsStayOut)
{
    document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::football);
    document.addWebLayer();
    document.addWindowCaptureLayer();
    document.addCountdownLayer();
    document.addModel3DLayer(QUrl::fromLocalFile("/tmp/cup.obj"));

    EXPECT_EQ(document.layerOrder().size(), 5);
    EXPECT_EQ(snapshot(), (TextPreset{.id = "user-1", .name = "Mine"}));
}

TEST_F(DocumentSnapshotTest, APictureWithoutContentIsLeftOut)
{
    addPicture({10, 10})->setImage(Picture());
    addPicture({20, 20});

    EXPECT_EQ(snapshot().images.size(), 1);
}

TEST_F(DocumentSnapshotTest, WhatIsNotKeptMakesNoDifference)
{
    ShapeLayer *shape = addShape("A");
    TextLayer *text = document.addTextLayer();
    const TextPreset before = snapshot();

    shape->setCustomPoints({{0, 0}, {1, 0}, {1, 1}});
    shape->setIsHidden(!shape->isHidden());
    text->setIsLocked(true);
    document.setRunTransitionStyle(LayerRunTransitionStyle::cut, text->id());

    EXPECT_EQ(snapshot(), before);
}

TEST_F(DocumentSnapshotTest, SurvivesItsFile)
{
    addShape("A");
    addPicture({30, 30});
    document.addTextLayer();

    EXPECT_EQ(decodePreset(encodePreset(snapshot()).value()), snapshot());
}

} // namespace
} // namespace tessara
