// A preset that comes alive.
#include <QBuffer>
#include <QtEndian>

#include "Models/DocumentFixture.h"
#include "Models/Presets/PresetFixture.h"

namespace tessara {
namespace {

QString pngOf(QSize size, Qt::GlobalColor color = Qt::red)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return QString::fromLatin1(bytes.toBase64());
}

/// A picture whose file claims that size, and is no larger than a small one.
PresetImageEntry claiming(int width, int height)
{
    QByteArray png = QByteArray::fromBase64(pngOf({1, 1}).toLatin1());
    qToBigEndian<qint32>(width, png.data() + 16);
    qToBigEndian<qint32>(height, png.data() + 20);
    return {.name = "Huge", .size = {1, 1}, .pngBase64 = QString::fromLatin1(png.toBase64())};
}

PresetImageEntry picture(const char *name, std::optional<QString> placeholderKey = {})
{
    return {.name = QLatin1String(name),
            .position = {1, 2},
            .size = {100, 50},
            .placeholderKey = std::move(placeholderKey),
            .pngBase64 = pngOf({40, 10})};
}

class PresetApplicationTest : public DocumentFixture
{
protected:
    /// The layers that it made, back to front.
    QList<CanvasLayerItem> apply(const TextPreset &preset)
    {
        const qsizetype before = document.layerOrder().size();
        document.addTextPreset(preset);
        return document.orderedLayers().sliced(before);
    }

    TextLayer *applied(const TextPresetEntry &entry)
    {
        return std::get<TextLayer *>(apply({.id = "a", .name = "A", .entries = {entry}}).first());
    }

    ShapeLayer *applied(const PresetRectEntry &entry)
    {
        return std::get<ShapeLayer *>(apply({.id = "a", .name = "A", .rects = {entry}}).first());
    }

    ImageLayer *applied(const PresetImageEntry &entry)
    {
        return std::get<ImageLayer *>(apply({.id = "a", .name = "A", .images = {entry}}).first());
    }

    LayerRunSettings settingsWith(std::optional<LayerRunTransitionStyle> style,
                                  std::optional<double> duration)
    {
        const auto layers = apply({.id = "a",
                                   .name = "A",
                                   .preferredRunTransitionStyle = style,
                                   .preferredRunDuration = duration,
                                   .rects = {fullRect()}});
        return document.runSettings(layerOf(layers.first())->id());
    }
};

TEST_F(PresetApplicationTest, ItsLayersAreAGroupShownAndSelected)
{
    TextPreset preset = fullPreset();
    preset.images = {picture("Logo")};
    const QList<CanvasLayerItem> layers = apply(preset);

    ASSERT_EQ(layers.size(), 3);
    const std::optional<QUuid> group = presetGroupID(layers.first());
    ASSERT_TRUE(group.has_value());
    EXPECT_EQ(document.presetGroupNames().value(*group), QStringLiteral("News bar"));
    EXPECT_EQ(document.selectedPresetGroupID(), group);
    for (const CanvasLayerItem &item : layers) {
        EXPECT_EQ(presetGroupID(item), group);
        EXPECT_FALSE(layerOf(item)->isHidden() || layerOf(item)->isLocked());
        EXPECT_TRUE(document.takes().isOnAir(layerOf(item)->id()));
    }

    apply(preset);
    EXPECT_EQ(document.presetGroupNames().size(), 2);
}

TEST_F(PresetApplicationTest, AnEmptyPresetIsAGroupWithoutLayers)
{
    const QUuid title = document.addTextLayer()->id();

    document.addTextPreset({.id = "a", .name = "Empty"});

    EXPECT_EQ(document.presetGroupNames().values(), QList<QString>{QStringLiteral("Empty")});
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{title});
    EXPECT_EQ(document.layerRunSettings().size(), 1);
}

TEST_F(PresetApplicationTest, ATextIsTakenAsItStands)
{
    const TextPresetEntry entry = fullText();
    const TextLayer *text = applied(entry);

    EXPECT_EQ(text->name(), entry.name);
    EXPECT_EQ(text->text(), entry.text);
    EXPECT_EQ(text->fontSize(), entry.fontSize);
    EXPECT_EQ(text->fontFamily(), entry.fontFamily);
    EXPECT_EQ(text->fontWeight(), entry.fontWeight);
    EXPECT_EQ(text->color(), entry.color);
    EXPECT_EQ(text->outlineColor(), entry.outlineColor);
    EXPECT_EQ(text->outlineWidth(), entry.outlineWidth);
    EXPECT_EQ(text->position(), entry.position);
    EXPECT_EQ(text->textBoxSize(), entry.textBoxSize);
    EXPECT_EQ(text->horizontalAlignment(), entry.horizontalAlignment);
    EXPECT_EQ(text->fieldKey(), entry.fieldKey);
    EXPECT_EQ(text->fieldKind(), entry.fieldKind);
}

TEST_F(PresetApplicationTest, AShapeIsTakenAsItStands)
{
    const PresetRectEntry entry = fullRect();
    const ShapeLayer *shape = applied(entry);

    EXPECT_EQ(shape->name(), entry.name);
    EXPECT_EQ(shape->kind(), entry.kind);
    EXPECT_EQ(shape->position(), entry.position);
    EXPECT_EQ(shape->size(), entry.size);
    EXPECT_EQ(shape->color(), entry.color);
    EXPECT_EQ(shape->cornerRadius(), entry.cornerRadius);
    EXPECT_EQ(shape->opacity(), entry.opacity);
    EXPECT_TRUE(shape->isAspectRatioLocked());
    EXPECT_DOUBLE_EQ(shape->lockedAspectRatio(), entry.size.width() / entry.size.height());
}

TEST_F(PresetApplicationTest, AShapeWithoutWidthIsLockedToTheStandardRatio)
{
    PresetRectEntry entry = fullRect();
    entry.size.setWidth(0);

    EXPECT_EQ(applied(entry)->lockedAspectRatio(), 1.7777777777777777);
}

TEST_F(PresetApplicationTest, NothingIsScaledToTheCanvas)
{
    document.setSize({3840, 2160});

    EXPECT_EQ(applied(fullRect())->position(), QPointF(10, 20));
}

TEST_F(PresetApplicationTest, AnEntryWithoutANameIsNumbered)
{
    document.addTextLayer();
    document.addTextLayer();
    TextPresetEntry text = fullText();
    text.name.clear();
    PresetRectEntry rect = fullRect();
    rect.name.clear();

    EXPECT_EQ(applied(text)->name(), QStringLiteral("Text 3"));
    EXPECT_EQ(applied(rect)->name(), QStringLiteral("Shape 1"));
}

TEST_F(PresetApplicationTest, ReplaceablePicturesLieAboveFixedOnes)
{
    const auto layers = apply({.id = "a",
                               .name = "A",
                               .rects = {fullRect()},
                               .images = {picture("A", QStringLiteral("a")), picture("B"),
                                          picture("C", QStringLiteral("c")), picture("D")},
                               .entries = {fullText()}});
    QStringList names;
    for (const CanvasLayerItem &item : layers)
        names.append(layerOf(item)->name());

    EXPECT_EQ(names.join(QLatin1Char(' ')), QStringLiteral("Bar B D A C Headline"));
}

TEST_F(PresetApplicationTest, APictureIsNeverSmallerThanItsHandles)
{
    PresetImageEntry entry = picture("Logo");
    entry.size = {10, std::numeric_limits<double>::quiet_NaN()};
    entry.position = {std::numeric_limits<double>::infinity(), 7};
    entry.opacity = 1.5;
    entry.maskPadding = -3;
    const ImageLayer *image = applied(entry);

    EXPECT_EQ(image->size(), QSizeF(24, 24));
    EXPECT_EQ(image->position(), QPointF(0, 7));
    EXPECT_EQ(image->opacity(), 1);
    EXPECT_EQ(image->maskPadding(), 0);
    EXPECT_EQ(image->maskShape(), ImageLayerMaskShape::rectangle);
    EXPECT_DOUBLE_EQ(image->lockedAspectRatio(), 4); // the picture's own
    EXPECT_EQ(image->sourceURL().fileName(), QStringLiteral("Logo.png"));
    EXPECT_FALSE(image->cropRectNormalized().has_value());
    entry.opacity = -1;
    EXPECT_EQ(applied(entry)->opacity(), 0);
}

TEST_F(PresetApplicationTest, AReplaceablePictureIsShownWholeUnlessItSaysOtherwise)
{
    const ImageLayer *slot = applied(picture("Logo", QStringLiteral(" logo ")));
    EXPECT_EQ(slot->contentMode(), ImageLayerContentMode::fitInside);
    EXPECT_EQ(slot->placeholderKey(), QStringLiteral(" logo "));
    EXPECT_EQ(applied(picture("Logo"))->contentMode(), ImageLayerContentMode::fillCrop);
    EXPECT_EQ(applied(picture("Logo", QStringLiteral("  ")))->contentMode(),
              ImageLayerContentMode::fillCrop);
    PresetImageEntry filling = picture("Logo", QStringLiteral("logo"));
    filling.contentMode = ImageLayerContentMode::fillCrop;
    EXPECT_EQ(applied(filling)->contentMode(), ImageLayerContentMode::fillCrop);
}

TEST_F(PresetApplicationTest, ACropIsMended)
{
    PresetImageEntry entry = picture("Logo");
    entry.cropRectNormalized = QRectF(0.9, -1, 0.5, 0);

    EXPECT_EQ(applied(entry)->cropRectNormalized(), QRectF(0.5, 0, 0.5, 0.04));
}

TEST_F(PresetApplicationTest, APictureThatCannotBeReadIsLeftOut)
{
    PresetImageEntry noText = picture("Broken");
    noText.pngBase64 = QStringLiteral("*** no base64 ***");
    PresetImageEntry noPicture = picture("Broken");
    noPicture.pngBase64 = QStringLiteral("aGVsbG8=");
    const auto layers = apply(
        {.id = "a", .name = "A", .images = {noText, picture("Good"), noPicture}, .entries = {}});

    ASSERT_EQ(layers.size(), 1);
    EXPECT_EQ(layerOf(layers.first())->name(), QStringLiteral("Good"));
}

TEST_F(PresetApplicationTest, APictureBombIsLeftOut)
{
    // The header of a small file that claims sixty thousand pixels a side.
    QByteArray png = QByteArray::fromBase64(pngOf({1, 1}).toLatin1());
    png.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));
    PresetImageEntry bomb = picture("Bomb");
    bomb.pngBase64 = QString::fromLatin1(png.toBase64());

    EXPECT_TRUE(apply({.id = "a", .name = "A", .images = {bomb}}).isEmpty());
}

TEST_F(PresetApplicationTest, PicturesThatNoMachineHoldsAreRefusedBeforeTheyAreDecoded)
{
    const TextPreset huge{.id = "a",
                          .name = "A",
                          .rects = {fullRect()},
                          .images = {claiming(16384, 16384), claiming(16384, 16383)}};

    const auto added = document.addTextPreset(huge);

    ASSERT_FALSE(added);
    EXPECT_EQ(text(added.error()), "The pictures of this preset are too large to be shown.");
    EXPECT_TRUE(document.layerOrder().isEmpty());
    EXPECT_TRUE(document.presetGroupNames().isEmpty());
}

TEST_F(PresetApplicationTest, WhatHonestPicturesTakeIsWithinBounds)
{
    const PresetImageEntry largest = claiming(Picture::largestSide, Picture::largestSide);
    QList<PresetImageEntry> canvases;
    for (int number = 0; number < 36; ++number)
        canvases.append(claiming(3840, 2160 - number));

    EXPECT_TRUE(PresetPictures::areWithinBounds({largest, largest, largest})); // decoded once
    EXPECT_TRUE(PresetPictures::areWithinBounds(canvases));
    EXPECT_FALSE(PresetPictures::areWithinBounds(canvases + QList<PresetImageEntry>{largest}));
}

TEST_F(PresetApplicationTest, OtherFilesThanPngCountByTheirOwnSize)
{
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    ASSERT_TRUE(image.save(&buffer, "JPG"));
    const PresetImageEntry photo{
        .name = "Photo", .size = {1, 1}, .pngBase64 = QString::fromLatin1(bytes.toBase64())};

    EXPECT_EQ(decodedBytes(photo), 300 * 200 * 4 * 4 / 3);
    EXPECT_EQ(applied(photo)->image().size(), QSize(300, 200));
}

TEST_F(PresetApplicationTest, WhatNobodyHasAskedForIsDecodedOnlyWhereItIsSmall)
{
    PresetPictures pictures;

    pictures.prefetch({claiming(8000, 7000)}); // some 300 MB
    pictures.prefetch({picture("Small"), claiming(16384, 16384), claiming(16384, 16383)});
    EXPECT_EQ(pictures.keptBytes(), 0);

    pictures.prefetch({claiming(8000, 7000), picture("Small")});
    EXPECT_GT(pictures.keptBytes(), 0);
    EXPECT_LT(pictures.keptBytes(), 10'000);
}

TEST_F(PresetApplicationTest, ATornPictureIsLeftOut)
{
    PresetImageEntry torn = picture("Torn");
    const QByteArray png = QByteArray::fromBase64(torn.pngBase64.toLatin1());
    torn.pngBase64 = QString::fromLatin1(png.chopped(20).toBase64());

    EXPECT_EQ(apply({.id = "a", .name = "A", .images = {torn, picture("Whole")}}).size(), 1);
}

TEST_F(PresetApplicationTest, TheRunSettingsAreThePresetsOrItsStylesOwn)
{
    using Style = LayerRunTransitionStyle;

    EXPECT_EQ(settingsWith({}, {}), (LayerRunSettings{Style::dissolve, 0.35, 0}));
    EXPECT_EQ(settingsWith(Style::cut, {}), (LayerRunSettings{Style::cut, 0, 0}));
    EXPECT_EQ(settingsWith(Style::presetReveal, {}),
              (LayerRunSettings{Style::presetReveal, 0.48, 0}));
    EXPECT_EQ(settingsWith({}, 30).dissolveDuration, 8);
    EXPECT_EQ(settingsWith({}, -1).dissolveDuration, 0);
    EXPECT_EQ(settingsWith({}, std::numeric_limits<double>::quiet_NaN()).dissolveDuration, 0);
    EXPECT_EQ(settingsWith(Style::cut, 1.5), (LayerRunSettings{Style::cut, 1.5, 0}));
}

TEST_F(PresetApplicationTest, APictureIsDecodedOnceForItsContent)
{
    const PresetImageEntry entry = picture("Logo");
    document.prefetchPictures({.id = "a", .name = "A", .images = {entry}});
    const Picture first = applied(entry)->image();
    PresetImageEntry copy = entry;
    copy.pngBase64 = QString(copy.pngBase64.constData(), copy.pngBase64.size()); // elsewhere

    EXPECT_EQ(applied(copy)->image(), first);
    EXPECT_FALSE(applied({.name = "Other", .size = {1, 1}, .pngBase64 = pngOf({40, 11})})->image()
                 == first);
}

TEST_F(PresetApplicationTest, ManyPicturesComeInTheirOrderWhateverIsKept)
{
    PresetPictures small(4096); // room for hardly one
    QList<PresetImageEntry> entries;
    for (int side = 1; side <= 40; ++side)
        entries.append(PresetImageEntry{.name = "Picture", .pngBase64 = pngOf({side, 64})});
    entries.append(PresetImageEntry{.name = "Broken", .pngBase64 = "?"});
    small.prefetch(entries);

    const QList<Picture> pictures = small.pictures(entries).value();

    ASSERT_EQ(pictures.size(), 41);
    for (int side = 1; side <= 40; ++side)
        EXPECT_EQ(pictures[side - 1].size(), QSize(side, 64));
    EXPECT_TRUE(pictures.last().isNull());
}

TEST_F(PresetApplicationTest, AScoreTextStandsInTheMiddle)
{
    document.addTextLayer();
    const TextLayer *score = document.addScoreTextLayer();

    EXPECT_EQ(score->name(), QStringLiteral("Score 2"));
    EXPECT_EQ(score->text(), QStringLiteral("0"));
    EXPECT_EQ(score->fontSize(), 120);
    EXPECT_EQ(score->position(), QPointF(960, 540));
    EXPECT_EQ(score->horizontalAlignment(), TextLayerHorizontalAlignment::center);
    EXPECT_EQ(score->fieldKind(), TemplateFieldKind::score);
    EXPECT_FALSE(score->fieldKey().has_value());
    EXPECT_FALSE(document.presetGroupID(score->id()).has_value());
    EXPECT_EQ(document.dynamicTemplateFields().first().key, QStringLiteral("score_2"));
}

} // namespace
} // namespace tessara
