#include "Base/ManualClock.h"
#include "Base/RawString.h"
#include "Models/CanvasLayerItem.h"
#include "Models/LayerGeometry.h"
#include "Models/LayerRunSettings.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>

namespace tessara {
namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();

template <typename Enum>
QString spellings()
{
    QStringList names;
    for (const Enum value : allCases<Enum>())
        names.append(rawString(value));
    return names.join(QLatin1Char(' '));
}

TEST(LayerEnumsTest, AreSpelledAsFilesSpellThem)
{
    EXPECT_EQ(spellings<TemplateFieldKind>(), QStringLiteral("text score timer image"));
    EXPECT_EQ(spellings<TextLayerHorizontalAlignment>(), QStringLiteral("leading center trailing"));
    EXPECT_EQ(spellings<ImageLayerContentMode>(), QStringLiteral("fillCrop fitInside"));
    EXPECT_EQ(spellings<ImageLayerMaskShape>(),
              QStringLiteral("rectangle roundedRectangle circle hexagon shield customPolygon"));
    EXPECT_EQ(spellings<ShapeKind>(),
              QStringLiteral("rectangle ellipse triangle diamond star line custom"));
    EXPECT_EQ(spellings<ScoreTemplate>(), QStringLiteral("wideBroadcast compactStrip titleBar"));
    EXPECT_EQ(spellings<ScoreSportPreset>(),
              QStringLiteral("football basketball volleyball badminton futsal baseball"));
    EXPECT_EQ(spellings<LayerRunTransitionStyle>(), QStringLiteral("cut dissolve presetReveal"));
}

TEST(LayerEnumsTest, ShapesHaveTheirNamesAndSymbols)
{
    QStringList names;
    QStringList icons;
    for (const ShapeKind kind : allCases<ShapeKind>()) {
        names.append(displayName(kind));
        icons.append(iconName(kind));
    }

    EXPECT_EQ(names.join(QLatin1Char(' ')),
              QStringLiteral("Rectangle Ellipse Triangle Diamond Star Line Draw"));
    EXPECT_EQ(icons.join(QLatin1Char(' ')),
              QStringLiteral("rectangle oval triangle diamond star minus scribble"));
}

TEST(LayerGeometryTest, ACropIsMendedToStayInsideThePicture)
{
    EXPECT_EQ(sanitizedNormalizedRect({0.9, 0.9, 0.5, 0.5}), QRectF(0.5, 0.5, 0.5, 0.5));
    EXPECT_EQ(sanitizedNormalizedRect({0, 0, 0, 1}), QRectF(0, 0, 0.04, 1));
    EXPECT_EQ(sanitizedNormalizedRect({notANumber, -1, notANumber, 7}), QRectF(0, 0, 1, 1));
    EXPECT_EQ(sanitizedNormalizedRect({1, 1, 0.001, 0.001}), QRectF(0.96, 0.96, 0.04, 0.04));
}

TEST(LayerGeometryTest, TheLargestPartOfTheShapeWantedIsCentred)
{
    EXPECT_EQ(aspectFillRect({100, 100}, {200, 100}), QRectF(0, 0.25, 1, 0.5));
    EXPECT_EQ(aspectFillRect({200, 100}, {100, 100}), QRectF(0.25, 0, 0.5, 1));
    EXPECT_EQ(aspectFillRect({0, 100}, {100, 100}), QRectF(0, 0, 1, 1));
}

TEST(AspectLockedLayerTest, LockingAgainASizeWithoutHeightGivesSixteenToNine)
{
    ShapeLayer shape(QUuid::createUuid(), {}, ShapeKind::rectangle, {}, {300, 100});
    WebLayer web(QUuid::createUuid(), {}, {}, {});
    ImageLayer picture(QUuid::createUuid(), {}, Picture(), {}, {}, {300, 100});

    for (AspectLockedLayer *layer :
         std::initializer_list<AspectLockedLayer *>{&shape, &web, &picture}) {
        layer->setAspectRatioLocked(false);
        layer->setSize({300, 0});
        layer->setAspectRatioLocked(true);
        EXPECT_EQ(layer->lockedAspectRatio(), 1.7777777777777777);
    }
}

TEST(AspectLockedLayerTest, ALockedLayerKeepsItsRatioWhenLockedAgain)
{
    ShapeLayer shape(QUuid::createUuid(), {}, ShapeKind::rectangle, {}, {300, 100});

    shape.setSize({500, 100});
    shape.setAspectRatioLocked(true);
    EXPECT_EQ(shape.lockedAspectRatio(), 3);

    shape.setAspectRatioLocked(false);
    EXPECT_EQ(shape.lockedAspectRatio(), 3);
    shape.setAspectRatioLocked(true);
    EXPECT_EQ(shape.lockedAspectRatio(), 5);
}

TEST(ImageLayerTest, APlaceholderIsShownWholeAndBlanksAreNone)
{
    const auto modeFor = [](const std::optional<QString> &key) {
        ImageLayerOptions options;
        options.placeholderKey = key;
        return ImageLayer(QUuid::createUuid(), {}, Picture(), {}, {}, {10, 10}, options)
            .contentMode();
    };

    EXPECT_EQ(modeFor(std::nullopt), ImageLayerContentMode::fillCrop);
    EXPECT_EQ(modeFor(QStringLiteral(" \n ")), ImageLayerContentMode::fillCrop);
    EXPECT_EQ(modeFor(QStringLiteral("logo")), ImageLayerContentMode::fitInside);
}

TEST(ImageLayerTest, TakesItsRatioFromThePictureThenFromItsSize)
{
    const Picture wide(QImage(400, 100, QImage::Format_RGB32));

    EXPECT_EQ(ImageLayer(QUuid::createUuid(), {}, wide, {}, {}, {10, 10}).lockedAspectRatio(), 4);
    EXPECT_EQ(ImageLayer(QUuid::createUuid(), {}, {}, {}, {}, {20, 10}).lockedAspectRatio(), 2);
    EXPECT_EQ(ImageLayer(QUuid::createUuid(), {}, {}, {}, {}, {20, 0}).lockedAspectRatio(),
              1.7777777777777777);
}

TEST(ImageLayerTest, MendsItsCropAndItsPadding)
{
    ImageLayerOptions options;
    options.cropRectNormalized = QRectF(0.9, 0.9, 0.5, 0.5);
    options.maskPadding = -3;
    const ImageLayer layer(QUuid::createUuid(), {}, Picture(), {}, {}, {10, 10}, options);

    EXPECT_EQ(layer.cropRectNormalized(), QRectF(0.5, 0.5, 0.5, 0.5));
    EXPECT_EQ(layer.maskPadding(), 0);
}

TEST(ImageLayerTest, ACustomPolygonMasksAsTheRectangle)
{
    ImageLayer layer(QUuid::createUuid(), {}, Picture(), {}, {}, {10, 10});
    layer.setMaskShape(ImageLayerMaskShape::customPolygon);
    QPainterPath rectangle;
    rectangle.addRect(0, 0, 40, 20);

    EXPECT_EQ(layer.maskPath({0, 0, 40, 20}), rectangle);
}

TEST(WindowCaptureLayerTest, TheWholeWindowClearsTheCrop)
{
    WindowCaptureLayer layer(QUuid::createUuid(), {}, {}, {100, 100});
    layer.setCropRectNormalized({0.1, 0.1, 0.5, 0.5});
    ASSERT_TRUE(layer.cropRectNormalized());

    layer.setCropRectNormalized({0, 0, 1, 1});
    EXPECT_FALSE(layer.cropRectNormalized());

    layer.setCropRectNormalized({0.99, 0, 1, 1});
    EXPECT_EQ(layer.cropRectNormalized()->x(), 0.98);
    EXPECT_NEAR(layer.cropRectNormalized()->width(), 0.02, 1e-12);
}

TEST(WindowCaptureLayerTest, ABoxWithoutHeightIsSixteenToNine)
{
    EXPECT_EQ(WindowCaptureLayer(QUuid::createUuid(), {}, {}, {100, 0}).aspectRatio(),
              1.7777777777777777);
    EXPECT_EQ(WindowCaptureLayer(QUuid::createUuid(), {}, {}, {100, 50}).aspectRatio(), 2);
}

TEST(TextLayerTest, StartsAsANewTitleDoes)
{
    const TextLayer layer(QUuid::createUuid(), QStringLiteral("A"), QStringLiteral("B"));

    EXPECT_EQ(layer.fontSize(), 98);
    EXPECT_EQ(layer.color(), RGBAColor::white);
    EXPECT_EQ(layer.outlineColor(), (RGBAColor{0, 0, 0, 1}));
    EXPECT_EQ(layer.outlineWidth(), 0);
    EXPECT_EQ(layer.position(), QPointF(555, 123));
    EXPECT_EQ(layer.horizontalAlignment(), TextLayerHorizontalAlignment::leading);
    EXPECT_FALSE(layer.fontFamily() || layer.fontWeight() || layer.textBoxSize() || layer.fieldKey()
                 || layer.fieldKind() || layer.presetGroupID());
    EXPECT_FALSE(layer.isHidden() || layer.isLocked());
}

TEST(LayerDefaultsTest, LiveViewsAndShapesStartAsStated)
{
    const WebLayer web(QUuid::createUuid(), {}, {}, {});
    EXPECT_EQ(web.size(), QSizeF(640, 360));
    EXPECT_EQ(web.cornerRadius(), 8);
    EXPECT_EQ(web.volume(), 1);
    EXPECT_TRUE(web.isAspectRatioLocked());
    EXPECT_FALSE(web.isInteractive() || web.isMuted());

    const Model3DLayer model(QUuid::createUuid(), {}, {});
    EXPECT_EQ(model.size(), QSizeF(640, 480));
    EXPECT_EQ(model.cameraPitch(), -20);
    EXPECT_EQ(model.cameraDistance(), 5);
    EXPECT_TRUE(model.autoFit());
    EXPECT_FALSE(model.showsFloor());

    const ShapeLayer shape(QUuid::createUuid(), {}, ShapeKind::star, {}, {10, 10});
    EXPECT_EQ(shape.color(), (RGBAColor{0.15, 0.15, 0.18, 0.85}));
    EXPECT_EQ(LayerRunSettings{}, (LayerRunSettings{LayerRunTransitionStyle::dissolve, 0.35, 0}));
}

TEST(CanvasLayerItemTest, ScoreCaptureAndCountdownBelongToNoGroup)
{
    ManualClock clock;
    ScoreLayer score(QUuid::createUuid(), {}, ScoreTemplate::titleBar, ScoreSportPreset::futsal, {},
                     {});
    WindowCaptureLayer capture(QUuid::createUuid(), {}, {}, {});
    CountdownLayer countdown(clock, QUuid::createUuid(), {}, {}, {});

    EXPECT_FALSE(presetGroupID(CanvasLayerItem(&score)));
    EXPECT_FALSE(presetGroupID(CanvasLayerItem(&capture)));
    EXPECT_FALSE(presetGroupID(CanvasLayerItem(&countdown)));
}

TEST(LayerPropertiesTest, APlaceAndASizeAreNumbersWhoeverWritesThem)
{
    const double endless = std::numeric_limits<double>::infinity();
    ShapeLayer shape(QUuid::createUuid(), "Shape", ShapeKind::rectangle, {notANumber, 20},
                     {endless, 30});
    EXPECT_EQ(shape.frame(), QRectF(0, 20, 0, 30));

    shape.setPosition({40, -endless});
    shape.setSize({50, notANumber});
    EXPECT_EQ(shape.frame(), QRectF(40, 0, 50, 0));

    TextLayer text(QUuid::createUuid(), "Text", "Title", {notANumber, notANumber});
    text.setTextBoxSize(QSizeF(endless, 60));
    EXPECT_EQ(text.position(), QPointF(0, 0));
    EXPECT_EQ(text.textBoxSize(), QSizeF(0, 60));
}

TEST(LayerPropertiesTest, AWriteIsToldOnceAndAnEqualOneNever)
{
    TextLayer layer(QUuid::createUuid(), {}, {});
    QSignalSpy notices(&layer, &TextLayer::positionChanged);

    layer.setPosition({1, 1});
    layer.setPosition({1, 1});
    layer.setPosition({1 + 1e-13, 1}); // a small step is a step

    EXPECT_EQ(notices.count(), 2);
}

} // namespace
} // namespace tessara
