#include "DocumentFixture.h"

#include "Base/RawString.h"
#include "Models/LayerFactory.h"

#include <QMetaProperty>

namespace tessara {
namespace {

class LayerFactoryTest : public DocumentFixture
{
};

TEST_F(LayerFactoryTest, ShapesComeInTheirSizesCentred)
{
    const std::pair<ShapeKind, QSizeF> sizes[] = {
        {ShapeKind::rectangle, {400, 120}}, {ShapeKind::ellipse, {300, 300}},
        {ShapeKind::triangle, {300, 260}},  {ShapeKind::diamond, {260, 260}},
        {ShapeKind::star, {280, 280}},      {ShapeKind::line, {480, 12}},
        {ShapeKind::custom, {300, 300}}};
    for (const auto &[kind, size] : sizes) {
        const ShapeLayer *shape = document.addTemplateShapeLayer(kind);
        EXPECT_EQ(shape->size(), size);
        EXPECT_EQ(shape->frame().center(), QPointF(960, 540));
        const double radius = kind == ShapeKind::rectangle ? 8 : kind == ShapeKind::line ? 6 : 0;
        EXPECT_EQ(shape->cornerRadius(), radius);
        EXPECT_EQ(shape->opacity(), 1);
        EXPECT_TRUE(shape->isAspectRatioLocked());
    }
}

TEST_F(LayerFactoryTest, EveryKindIsNamedByItsCount)
{
    EXPECT_EQ(document.addTextLayer()->name(), QStringLiteral("Text 1"));
    EXPECT_EQ(document.addTextLayer()->text(), QStringLiteral("Text 2"));
    EXPECT_EQ(document.addTemplateShapeLayer(ShapeKind::custom)->name(), QStringLiteral("Draw 1"));
    EXPECT_EQ(document.addTemplateShapeLayer(ShapeKind::star)->name(), QStringLiteral("Star 2"));
    EXPECT_EQ(document.addCustomShapeLayer({}, {1, 1}, {})->name(), QStringLiteral("Shape 3"));
    EXPECT_EQ(document.addWebLayer()->name(), QStringLiteral("Browser 1"));
    EXPECT_EQ(document.addWindowCaptureLayer()->name(), QStringLiteral("Window Capture 1"));
    EXPECT_EQ(document.addCountdownLayer()->name(), QStringLiteral("Countdown 1"));
    EXPECT_EQ(document.addModel3DLayer({})->name(), QStringLiteral("3D Model 1"));
    EXPECT_EQ(
        document.addScoreLayer(ScoreTemplate::wideBroadcast, ScoreSportPreset::football)->name(),
        QStringLiteral("Score 1"));
}

TEST_F(LayerFactoryTest, BoxesStandInTheMiddleAndScoresNearTheLowerEdge)
{
    EXPECT_EQ(document.addWebLayer()->frame(), QRectF(640, 360, 640, 360));
    EXPECT_EQ(document.addWindowCaptureLayer()->frame(), QRectF(320, 180, 1280, 720));
    EXPECT_EQ(document.addCountdownLayer()->frame(), QRectF(720, 460, 480, 160));
    EXPECT_EQ(document.addModel3DLayer({})->frame(), QRectF(640, 300, 640, 480));
    EXPECT_EQ(
        document.addScoreLayer(ScoreTemplate::wideBroadcast, ScoreSportPreset::football)->frame(),
        QRectF(480, 822, 960, 128));
    document.setSize({1920, 200});
    EXPECT_EQ(
        document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::football)->position().y(),
        0);
}

TEST_F(LayerFactoryTest, APictureTakesHalfTheCanvasAtMostAndIsNeverEnlarged)
{
    const LayerFactory factory(clock, {1920, 1080});

    EXPECT_EQ(factory.fittedImageSize({4000, 1000}), QSizeF(960, 240));
    EXPECT_EQ(factory.fittedImageSize({100, 50}), QSizeF(100, 50));
    EXPECT_EQ(factory.fittedImageSize({1000, 2000}), QSizeF(270, 540));
    EXPECT_EQ(factory.fittedImageSize({0, 50}), QSizeF(640, 360));
}

TEST_F(LayerFactoryTest, ADuplicateIsVisibleUnlockedAndInNoGroup)
{
    TextLayer *source = document.addTextLayer();
    document.setRunAutoOutDuration(7, source->id());
    document.groupLayers({source->id()}, QStringLiteral("Group"));
    source->setIsLocked(true);
    document.setLayerHidden(source->id(), true);

    Layer *copy = document.duplicateLayer(source->id());

    EXPECT_NE(copy->id(), source->id());
    EXPECT_FALSE(copy->isHidden() || copy->isLocked());
    EXPECT_FALSE(document.presetGroupID(copy->id()));
    EXPECT_EQ(document.runSettings(copy->id()).autoOutDuration, 7);
    EXPECT_EQ(document.layerVisibility().value(copy->id()), 1);
    EXPECT_EQ(copy->position(), QPointF(579, 147));
}

TEST_F(LayerFactoryTest, ADuplicatesNameTellsThatItIsOne)
{
    TextLayer *source = document.addTextLayer();
    const auto copyOf = [&](const char *name) {
        source->setName(QLatin1String(name));
        return document.duplicateLayer(source->id())->name();
    };

    EXPECT_EQ(copyOf("Title"), QStringLiteral("Title Copy"));
    EXPECT_EQ(copyOf("Title Copy"), QStringLiteral("Title Copy 2"));
    EXPECT_EQ(copyOf("Title Copy 2"), QStringLiteral("Title Copy 2 Copy"));
}

TEST_F(LayerFactoryTest, ADuplicateStaysOnTheCanvas)
{
    ShapeLayer *whole = document.addTemplateShapeLayer(ShapeKind::rectangle);
    whole->setPosition({0, 0});
    whole->setSize({1920, 1080});
    EXPECT_EQ(document.duplicateLayer(whole->id())->position(), QPointF(0, 0));

    whole->setSize({100, 100});
    whole->setPosition({1815, -500});
    EXPECT_EQ(document.duplicateLayer(whole->id())->position(), QPointF(1820, 0));

    TextLayer *text = document.addTextLayer();
    text->setPosition({1910, -500});
    EXPECT_EQ(document.duplicateLayer(text->id())->position(), QPointF(1919, -476));
}

TEST_F(LayerFactoryTest, ADuplicateOfEveryKindCarriesItsValues)
{
    document.addTextLayer()->setOutlineWidth(3);
    addPicture({40, 20})->setMaskShape(ImageLayerMaskShape::shield);
    document.addTemplateShapeLayer(ShapeKind::star)->setOpacity(0.4);
    document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::futsal)->setHomeScore(9);
    document.addWebLayer()->setVolume(0.3);
    document.addModel3DLayer({})->setCameraYaw(12);
    document.addWindowCaptureLayer()->setCropRectNormalized({0.1, 0.1, 0.5, 0.5});
    CountdownLayer *countdown = document.addCountdownLayer();
    countdown->setWarningThreshold(99);
    countdown->start();
    const QStringList own{QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("position"),
                          QStringLiteral("isRunning")};

    for (const QUuid &id : QList<QUuid>(document.layerOrder())) {
        const Layer *source = document.layer(id);
        const Layer *copy = document.duplicateLayer(id);
        const QMetaObject *kind = source->metaObject();
        for (int index = 1; index < kind->propertyCount(); ++index) {
            const QMetaProperty property = kind->property(index);
            if (own.contains(QLatin1String(property.name())))
                continue;
            EXPECT_EQ(property.read(copy), property.read(source))
                << kind->className() << "::" << property.name();
        }
    }
    EXPECT_FALSE(document.layersOf<CountdownLayer>().last()->isRunning());
}

} // namespace
} // namespace tessara
