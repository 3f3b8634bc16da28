// Layers that undo and redo bring back: where they stand, and with what.
#include <QBuffer>
#include <QMetaProperty>

#include "Models/HistoryFixture.h"
#include "Models/Presets/PresetFixture.h"

namespace tessara {
namespace {

class ReturningLayersTest : public HistoryFixture
{
protected:
    /// A title with its name, on air as every new one.
    QUuid add(const char *name)
    {
        TextLayer *added = addTitle();
        added->setName(QLatin1String(name));
        settle();
        return added->id();
    }

    void undoSteps(int steps)
    {
        for (int step = 0; step < steps; ++step)
            undo().undo();
    }

    void redoSteps(int steps)
    {
        for (int step = 0; step < steps; ++step)
            undo().redo();
    }

    bool isOnAir(const QUuid &id) const { return document.takes().isOnAir(id); }

    /// Off air for good, as if it had been taken out.
    void expectOffAir(const QUuid &id)
    {
        ASSERT_NE(document.layer(id), nullptr);
        EXPECT_TRUE(document.layer(id)->isHidden());
        EXPECT_EQ(document.layerVisibility().value(id, -1), 0);
        clock.advance(seconds{10});
        EXPECT_FALSE(isOnAir(id));
    }

    /// All of a layer but what it does by itself, by property.
    QMap<QString, QVariant> valuesOf(const QUuid &id) const
    {
        QMap<QString, QVariant> values;
        const Layer *layer = document.layer(id);
        for (int index = 1; index < layer->metaObject()->propertyCount(); ++index) {
            const QMetaProperty property = layer->metaObject()->property(index);
            if (qstrcmp(property.name(), "isRunning") != 0)
                values.insert(QLatin1String(property.name()), property.read(layer));
        }
        return values;
    }

    /// A preset of a bar, a picture in a slot and a headline.
    static TextPreset newsBar()
    {
        QImage image(40, 20, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        image.save(&buffer, "PNG");
        TextPreset preset = fullPreset();
        preset.images.first().pngBase64 = QString::fromLatin1(png.toBase64());
        return preset;
    }
};

// After a delete

TEST_F(ReturningLayersTest, ALayerDeletedOffAirComesBackOffAir)
{
    const QUuid id = add("Title");
    document.setLayerHidden(id, true);

    document.removeLayer(id);
    undo().undo();

    expectOffAir(id);
}

TEST_F(ReturningLayersTest, ALayerDeletedOnAirComesBackOnAir)
{
    const QUuid id = add("Title");

    document.removeLayer(id);
    undo().undo();

    EXPECT_TRUE(isOnAir(id));
    EXPECT_EQ(document.layerVisibility().value(id), 1);
}

TEST_F(ReturningLayersTest, ALayerDeletedInTheMiddleOfATakeComesBackOffAir)
{
    const QUuid id = add("Title");
    for (const bool onAir : {false, true}) {
        document.setLayerHidden(id, onAir); // the other state
        onAir ? document.takeLayerInNow(id) : document.takeLayerOutNow(id);
        clock.advance(milliseconds{150});
        ASSERT_TRUE(isOnAir(id)) << onAir;
        document.removeLayer(id);

        undo().undo();

        expectOffAir(id);
    }
}

TEST_F(ReturningLayersTest, ALayerDeletedBeforeItsAutoOutDoesNotComeBackToStay)
{
    const QUuid id = add("Title");
    document.setRunAutoOutDuration(5, id);
    document.takeLayerInNow(id);
    clock.advance(seconds{1});
    ASSERT_TRUE(document.takes().isAutoOutPending(id));

    document.removeLayer(id);
    undo().undo();

    expectOffAir(id);
}

TEST_F(ReturningLayersTest, LayersDeletedTogetherComeBackEachAsItWas)
{
    const QUuid low = add("Low");
    const QUuid middle = add("Middle");
    const QUuid high = add("High");
    document.setLayerHidden(middle, true);
    document.setSelectedLayerIDs({low, middle, high});
    document.removeSelectedLayers();
    const auto expectAsBefore = [&] {
        EXPECT_EQ(document.layerOrder(), (QList<QUuid>{low, middle, high}));
        EXPECT_TRUE(isOnAir(low));
        EXPECT_FALSE(isOnAir(middle));
        EXPECT_TRUE(isOnAir(high));
    };

    undoSteps(3);
    expectAsBefore();
    redoSteps(3);
    EXPECT_TRUE(document.layerOrder().isEmpty());
    undoSteps(3);
    expectAsBefore();
}

TEST_F(ReturningLayersTest, AGroupDeletedOffAirComesBackOffAirLayerByLayer)
{
    const QUuid low = add("Low");
    const QUuid high = add("High");
    document.groupLayers({low, high}, QStringLiteral("Lower third"));
    document.takeLayerOutNow(low);
    clock.advance(seconds{1});
    document.removePresetGroup(*document.presetGroupID(low));

    for (int round = 0; round < 2; ++round) {
        undo().undo();
        EXPECT_EQ(document.layerOrder(), QList<QUuid>{high});
        undo().undo();
        EXPECT_EQ(document.layerOrder(), (QList<QUuid>{low, high}));
        EXPECT_FALSE(isOnAir(low) || isOnAir(high));
        redoSteps(2);
        EXPECT_TRUE(document.layerOrder().isEmpty());
    }
}

TEST_F(ReturningLayersTest, ARedoneDeleteKeepsWhereTheLayerStoodByThen)
{
    const QUuid id = add("Title");
    document.removeLayer(id);
    undo().undo();
    document.setLayerHidden(id, true);

    undo().redo();
    undo().undo();

    expectOffAir(id);
}

TEST_F(ReturningLayersTest, ALayerThatCameBackOffAirRisesWhenItIsTaken)
{
    const QUuid id = add("Title");
    document.takeLayerOutNow(id);
    clock.advance(milliseconds{100});
    document.removeLayer(id);
    undo().undo();

    document.takeLayerInNow(id);
    clock.advance(milliseconds{175});
    EXPECT_NEAR(document.layerVisibility().value(id), 0.5, 0.06);
    clock.advance(seconds{1});

    EXPECT_TRUE(isOnAir(id));
    EXPECT_FALSE(document.takes().isInTransition(id));
}

TEST_F(ReturningLayersTest, WhatWaitedInADeletedLayerDoesNotReachTheOneThatReturns)
{
    const QUuid id = add("Title");
    document.setRunDissolveDuration(2, id);
    document.takeLayerOutNow(id);
    title()->setText(QStringLiteral("Late"));
    document.removeLayer(id);
    undo().undo();
    const int before = undo().count();

    clock.advance(seconds{5});

    EXPECT_EQ(undo().count(), before);
    EXPECT_EQ(document.layerVisibility().value(id), 0);
    title()->setText(QStringLiteral("Anew"));
    settle();
    undo().undo();
    EXPECT_EQ(title()->text(), QStringLiteral("Late"));
}

// After an application

TEST_F(ReturningLayersTest, AnAppliedPresetComesBackAsTheGroupThatItWas)
{
    document.addTextPreset(newsBar());
    settle();
    const QList<QUuid> ids = document.layerOrder();
    const QUuid group = *document.presetGroupID(ids.first());
    QList<QMap<QString, QVariant>> before;
    for (const QUuid &id : ids)
        before.append(valuesOf(id));

    undoSteps(3);
    ASSERT_TRUE(document.layerOrder().isEmpty());
    redoSteps(3);

    ASSERT_EQ(document.layerOrder(), ids);
    EXPECT_EQ(document.layerIDsInPresetGroup(group), ids);
    EXPECT_EQ(document.presetGroupNames().value(group), QStringLiteral("News bar"));
    for (qsizetype index = 0; index < ids.size(); ++index) {
        EXPECT_EQ(valuesOf(ids[index]), before[index]) << index;
        EXPECT_TRUE(isOnAir(ids[index]));
        EXPECT_EQ(document.runSettings(ids[index]).transitionStyle,
                  LayerRunTransitionStyle::presetReveal);
    }
    EXPECT_EQ(document.textLayerCount(QStringLiteral("headline")), 1);
}

TEST_F(ReturningLayersTest, APresetThatWasTakenOutComesBackOffAir)
{
    document.addTextPreset(newsBar());
    const QList<QUuid> ids = document.layerOrder();
    document.takeLayerOutNow(ids.first());
    clock.advance(seconds{2});

    undoSteps(3);
    redoSteps(3);

    for (const QUuid &id : ids)
        expectOffAir(id);
}

TEST_F(ReturningLayersTest, APresetUndoneInTheMiddleOfItsTakeComesBackOffAir)
{
    document.addTextPreset(newsBar());
    const QList<QUuid> ids = document.layerOrder();
    const QUuid group = *document.presetGroupID(ids.first());
    document.takePresetGroupOutNow(group);
    clock.advance(seconds{2});
    document.takePresetGroupInNow(group);
    clock.advance(milliseconds{80}); // the first has begun, the last still waits

    undoSteps(3);
    clock.advance(seconds{1});
    EXPECT_TRUE(document.layerVisibility().isEmpty());
    redoSteps(3);

    for (const QUuid &id : ids)
        expectOffAir(id);
}

TEST_F(ReturningLayersTest, ALayerWhoseGroupHasBeenTakenApartComesBackAlone)
{
    document.addTextPreset(newsBar());
    const QList<QUuid> ids = document.layerOrder();
    const QUuid group = *document.presetGroupID(ids.first());
    undo().undo();
    document.ungroupPreset(group);

    undo().redo();

    ASSERT_EQ(document.layerOrder(), ids);
    EXPECT_TRUE(document.layerIDsInPresetGroup(group).isEmpty());
}

TEST_F(ReturningLayersTest, ARedoneAddOfAnyKindComesBackWithAllOfItsValues)
{
    TextLayer *time = document.addTextLayer();
    time->setFieldKey(QStringLiteral("time"));
    time->setFieldKind(TemplateFieldKind::timer);
    time->setPosition({0.125, 1.0 / 3});
    addPicture({40, 20})->setMaskShape(ImageLayerMaskShape::shield); // it never had a file
    document.commitCustomShapeDraw({{1, 2}, {300, 40}, {50, 200}});
    document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::futsal)
        ->setCropRectNormalized(QRectF(0.1, 0.1, 0.5, 0.5));
    document.addWebLayer()->setVolume(0.3);
    document.addModel3DLayer({})->setCameraYaw(12);
    document.addWindowCaptureLayer()->setCropRectNormalized({0.1, 0.1, 0.5, 0.5});
    CountdownLayer *countdown = document.addCountdownLayer();
    countdown->setWarningThreshold(99);
    countdown->setIsLocked(true);
    countdown->start();
    const QList<QUuid> ids = document.layerOrder();
    QList<QMap<QString, QVariant>> before;
    for (const QUuid &id : ids)
        before.append(valuesOf(id));

    undoSteps(int(ids.size()));
    ASSERT_TRUE(document.layerOrder().isEmpty());
    redoSteps(int(ids.size()));

    ASSERT_EQ(document.layerOrder(), ids);
    for (qsizetype index = 0; index < ids.size(); ++index)
        EXPECT_EQ(valuesOf(ids[index]), before[index]) << index;
    EXPECT_FALSE(document.layersOf<CountdownLayer>().first()->isRunning());
}

TEST_F(ReturningLayersTest, ARedoneAddLeavesALayerThatAMacroMadeMeanwhile)
{
    const QUuid id = add("Title");
    undoSteps(2); // its name, and itself
    playMacro([&] {
        document.createLayerFromMacro(id, QStringLiteral("text"),
                                      {{QStringLiteral("name"), QStringLiteral("Macro")}});
    });

    undo().redo();

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{id});
    EXPECT_EQ(document.layer(id)->name(), QStringLiteral("Macro"));
}

} // namespace
} // namespace tessara
