#include "DocumentFixture.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <functional>

namespace tessara {
namespace {

/// Keeps the document's notices as words.
class Listener : public DocumentHooks
{
public:
    void startMacroObserving(const CanvasLayerItem &) override { heard << QStringLiteral("macro"); }
    void startUndoObserving(const CanvasLayerItem &) override { heard << QStringLiteral("undo"); }
    void takeRequested(const QUuid &, const QString &name, bool onAir) override
    {
        heard << name + (onAir ? QStringLiteral(" in") : QStringLiteral(" out"));
    }
    void layerAdded(const CanvasLayerItem &) override { heard << QStringLiteral("added"); }
    void layerWillBeRemoved(const CanvasLayerItem &, qsizetype index) override
    {
        heard << QStringLiteral("will go from %1").arg(index);
    }
    void layerRemoved(const QUuid &) override { heard << QStringLiteral("gone"); }
    void layerRenamed(const QUuid &, const QString &from, const QString &to) override
    {
        heard << from + QStringLiteral(" to ") + to;
    }
    void layersReordered(const QList<QUuid> &, const QList<QUuid> &) override
    {
        heard << QStringLiteral("reordered");
    }

    QStringList heard;
};

/// A value that a property doesn't hold, of the types that can be made up here.
QVariant anotherValue(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Bool:
        return !value.toBool();
    case QMetaType::Double:
        return value.toDouble() + 0.25;
    case QMetaType::LongLong:
        return value.toLongLong() + 1;
    case QMetaType::QString:
        return value.toString() + QStringLiteral(" more");
    case QMetaType::QPointF:
        return value.toPointF() + QPointF(1, 2);
    case QMetaType::QSizeF:
        return value.toSizeF() + QSizeF(1, 2);
    default:
        return {};
    }
}

class CanvasDocumentTest : public DocumentFixture
{
protected:
    QUuid addText() { return document.addTextLayer()->id(); }
};

TEST_F(CanvasDocumentTest, ANumberIsTheCountPlusOneEvenIfItStandsAlready)
{
    addText();
    const QUuid second = addText();
    addText();

    document.removeLayer(second);

    EXPECT_EQ(document.addTextLayer()->name(), QStringLiteral("Text 3"));
    EXPECT_EQ(document.layersOf<TextLayer>()[1]->name(), QStringLiteral("Text 3"));
}

TEST_F(CanvasDocumentTest, ANewLayerStandsFrontMostAndIsSelectedAlone)
{
    addText();
    const QUuid second = addText();

    EXPECT_EQ(document.layerOrder().last(), second);
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{second});
    EXPECT_EQ(document.layerVisibility().value(second), 1);
}

TEST_F(CanvasDocumentTest, DeletingTheLastSelectedSelectsTheNewFrontMost)
{
    addText();
    const QUuid second = addText();
    const QUuid third = addText();

    document.removeLayer(third);
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{second});
}

TEST_F(CanvasDocumentTest, DeletingOneOfSeveralSelectedKeepsTheOthers)
{
    const QUuid first = addText();
    const QUuid second = addText();
    const QUuid third = addText();
    document.setSelectedLayerIDs({first, second});

    document.removeLayer(second);
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{first});

    document.removeSelectedLayers();
    EXPECT_EQ(document.layerOrder(), QList<QUuid>{third});
}

TEST_F(CanvasDocumentTest, TheSelectedLayerIsTheBackMostOfThem)
{
    const QUuid first = addText();
    const QUuid second = addText();
    const QUuid third = document.addCountdownLayer()->id();

    document.setSelectedLayerIDs({third, second});

    EXPECT_EQ(document.selectedLayerID(), second);
    EXPECT_EQ(document.selectedLayer<TextLayer>()->id(), second);
    EXPECT_FALSE(document.selectedLayer<CountdownLayer>());
    document.toggleLayerSelection(first);
    EXPECT_EQ(document.selectedLayerID(), first);
    document.setSelectedLayerIDs({});
    EXPECT_FALSE(document.selectedLayerID());
}

TEST_F(CanvasDocumentTest, ThePanelsFirstRowBecomesFrontMost)
{
    const QUuid first = addText();
    const QUuid second = addText();
    const QUuid third = addText();

    document.reorderLayers({first, third, second});

    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{second, third, first}));
}

TEST_F(CanvasDocumentTest, AnOrderThatLacksALayerIsRefused)
{
    const QUuid first = addText();
    const QUuid second = addText();

    document.reorderLayers({first});
    document.reorderLayers({first, first});
    document.reorderLayers({first, second, QUuid::createUuid()});

    EXPECT_EQ(document.layerOrder(), (QList<QUuid>{first, second}));
}

TEST_F(CanvasDocumentTest, FewerThanThreePointsDrawNothing)
{
    document.setIsDrawingCustomShape(true);

    document.commitCustomShapeDraw({{0, 0}, {10, 10}});

    EXPECT_FALSE(document.isDrawingCustomShape());
    EXPECT_TRUE(document.layerOrder().isEmpty());
}

TEST_F(CanvasDocumentTest, ADrawnLineHasAHeightOfOne)
{
    document.commitCustomShapeDraw({{100, 50}, {200, 50}, {300, 50}});

    const ShapeLayer *shape = document.layersOf<ShapeLayer>().first();
    EXPECT_EQ(shape->frame(), QRectF(100, 50, 200, 1));
    EXPECT_EQ(shape->customPoints(), (QList<QPointF>{{0, 0}, {0.5, 0}, {1, 0}}));
    EXPECT_EQ(shape->kind(), ShapeKind::custom);
}

TEST_F(CanvasDocumentTest, ANameIsTrimmedAndAnEmptyOneChangesNothing)
{
    const QUuid id = addText();

    document.renameLayer(id, QStringLiteral(" \n "));
    EXPECT_EQ(document.layer(id)->name(), QStringLiteral("Text 1"));

    document.renameLayer(id, QStringLiteral("  Headline "));
    EXPECT_EQ(document.layer(id)->name(), QStringLiteral("Headline"));
}

TEST_F(CanvasDocumentTest, ATextsFrameIsRoughAndOthersAreTheirBox)
{
    TextLayer *text = document.addTextLayer();
    text->setFontSize(100);
    EXPECT_EQ(document.layerFrame(text->id()), QRectF(555, 123, 320, 120));
    text->setFontSize(10);
    EXPECT_EQ(document.layerFrame(text->id()).height(), 44);

    const CountdownLayer *countdown = document.addCountdownLayer();
    EXPECT_EQ(document.layerFrame(countdown->id()), countdown->frame());
}

TEST_F(CanvasDocumentTest, RemovalForgetsAllThatBelongsToALayer)
{
    const QUuid id = addText();
    document.setCueTargets({{id, true}});

    document.removeLayer(id);

    EXPECT_FALSE(document.layer(id));
    EXPECT_FALSE(document.cueTargets().contains(id));
    EXPECT_FALSE(document.layerVisibility().contains(id));
    EXPECT_FALSE(document.layerRunSettings().contains(id));
    EXPECT_TRUE(document.selectedLayerIDs().isEmpty());
    EXPECT_TRUE(document.layersOf<TextLayer>().isEmpty());
}

TEST_F(CanvasDocumentTest, ARemovedCountdownNoLongerTicks)
{
    CountdownLayer *countdown = document.addCountdownLayer();
    countdown->start();
    QSignalSpy ticks(countdown, &CountdownLayer::remainingSecondsChanged);

    document.removeLayer(countdown->id());
    clock.advance(Seconds{1});

    EXPECT_EQ(ticks.count(), 0);
}

TEST_F(CanvasDocumentTest, AnUnknownIdChangesNothing)
{
    addText();
    const QUuid unknown = QUuid::createUuid();
    QSignalSpy changes(&document, &CanvasDocument::changed);

    document.removeLayer(unknown);
    document.moveLayer(unknown, {1, 1});
    document.setLayerLocked(unknown, true);
    document.toggleLayerLocked(unknown);
    document.renameLayer(unknown, QStringLiteral("Name"));
    document.removePresetGroup(unknown);
    document.selectPresetGroup(unknown);

    EXPECT_FALSE(document.duplicateLayer(unknown));
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(CanvasDocumentTest, EveryPropertyOfEveryKindIsToldOnceAndAnEqualWriteNever)
{
    document.addTextLayer();
    addPicture({10, 10});
    document.addTemplateShapeLayer(ShapeKind::star);
    document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::futsal);
    document.addWebLayer();
    document.addModel3DLayer({});
    document.addWindowCaptureLayer();
    document.addCountdownLayer();
    int written = 0;

    for (const CanvasLayerItem &item : document.orderedLayers()) {
        Layer *layer = layerOf(item);
        for (int index = 1; index < layer->metaObject()->propertyCount(); ++index) {
            const QMetaProperty property = layer->metaObject()->property(index);
            const QVariant other = anotherValue(property.read(layer));
            if (!other.isValid() || !property.isWritable() || !property.hasNotifySignal())
                continue;
            QSignalSpy changes(&document, &CanvasDocument::changed);
            property.write(layer, other);
            EXPECT_EQ(changes.count(), 1) << property.name();
            property.write(layer, other);
            EXPECT_EQ(changes.count(), 1) << property.name();
            ++written;
        }
    }

    EXPECT_GT(written, 70);
}

TEST_F(CanvasDocumentTest, ThoseAboveHearWhatHappensInItsOrder)
{
    Listener listener;
    document.addHooks(&listener);

    const QUuid id = addText();
    EXPECT_EQ(listener.heard, (QStringList{QStringLiteral("macro"), QStringLiteral("undo"),
                                           QStringLiteral("added")}));

    listener.heard.clear();
    document.takeLayerOutNow(id);
    document.setLayerHidden(id, true);
    document.toggleLayerHidden(id);
    document.renameLayer(id, QStringLiteral("Headline"));
    document.renameLayer(id, QStringLiteral("Headline"));
    document.removeLayer(id);
    EXPECT_EQ(listener.heard,
              (QStringList{QStringLiteral("Text 1 out"), QStringLiteral("Text 1 out"),
                           QStringLiteral("Text 1 in"), QStringLiteral("Text 1 to Headline"),
                           QStringLiteral("will go from 0"), QStringLiteral("gone")}));
    document.removeHooks(&listener);
}

TEST_F(CanvasDocumentTest, ADirectTakeRemovesTheCue)
{
    const QUuid id = addText();
    const std::function<void()> takes[] = {
        [&] { document.takeLayerInNow(id); }, [&] { document.takeLayerOutNow(id); },
        [&] { document.setLayerHidden(id, false); }, [&] { document.toggleLayerHidden(id); },
        [&] { document.toggleLayerInRunlist(id); }};
    for (const auto &take : takes) {
        document.setCueTargets({{id, true}});
        take();
        EXPECT_TRUE(document.cueTargets().isEmpty());
    }
}

TEST_F(CanvasDocumentTest, OnlyClocksThatShowAnotherTimeAreWritten)
{
    TextLayer *clockLayer = document.addTextLayer();
    clockLayer->setFieldKind(TemplateFieldKind::timer);
    TextLayer *title = document.addTextLayer();
    document.setRealtimeTimerText(QStringLiteral("20:15:00"));
    QSignalSpy writes(clockLayer, &TextLayer::textChanged);

    document.setRealtimeTimerText(QStringLiteral("20:15:00"));

    EXPECT_EQ(writes.count(), 0);
    EXPECT_EQ(clockLayer->text(), QStringLiteral("20:15:00"));
    EXPECT_EQ(title->text(), QStringLiteral("Text 2"));
}

} // namespace
} // namespace tessara
