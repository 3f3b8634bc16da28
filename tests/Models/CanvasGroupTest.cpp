#include "DocumentFixture.h"

#include <QMetaProperty>
#include <QSignalSpy>

namespace tessara {
namespace {

class CanvasGroupTest : public DocumentFixture
{
protected:
    QUuid text = document.addTextLayer()->id();
    QUuid shape = document.addTemplateShapeLayer(ShapeKind::star)->id();
};

TEST_F(CanvasGroupTest, OnlyKindsThatCanBeGroupedByHandAre)
{
    const QUuid score =
        document.addScoreLayer(ScoreTemplate::titleBar, ScoreSportPreset::futsal)->id();
    const QUuid model = document.addModel3DLayer({})->id();

    document.groupLayers({score, text, model}, QStringLiteral("Lower third"));

    const QUuid group = *document.presetGroupID(text);
    EXPECT_EQ(document.layerIDsInPresetGroup(group), QList<QUuid>{text});
    EXPECT_FALSE(document.presetGroupID(score) || document.presetGroupID(model));
    EXPECT_EQ(document.presetGroupNames().value(group), QStringLiteral("Lower third"));
    EXPECT_EQ(document.selectedLayerIDs(), QSet<QUuid>{text});
}

TEST_F(CanvasGroupTest, ANamelessGroupIsCalledGroupAndNothingMakesNone)
{
    document.groupLayers({text}, QStringLiteral("  "));
    EXPECT_EQ(document.presetGroupNames().values(), QStringList{QStringLiteral("Group")});

    document.groupLayers({}, QStringLiteral("Empty"));
    EXPECT_EQ(document.presetGroupNames().size(), 1);
}

TEST_F(CanvasGroupTest, MovingOneLayerLeavesTheOthersWhereTheyAre)
{
    document.groupLayers({text, shape}, {});
    const QPointF before = document.layer(shape)->position();

    document.moveLayer(text, {7, 8});

    EXPECT_EQ(document.layer(text)->position(), QPointF(7, 8));
    EXPECT_EQ(document.layer(shape)->position(), before);
}

TEST_F(CanvasGroupTest, UngroupingKeepsLayersAndSelection)
{
    document.groupLayers({text, shape}, {});
    const QUuid group = *document.presetGroupID(text);
    QSignalSpy changes(&document, &CanvasDocument::changed);

    document.ungroupPreset(group);

    EXPECT_FALSE(document.presetGroupID(text) || document.presetGroupID(shape));
    EXPECT_TRUE(document.presetGroupNames().isEmpty());
    EXPECT_EQ(document.selectedLayerIDs(), (QSet<QUuid>{text, shape}));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(CanvasGroupTest, ASelectionIsAGroupWhenAllOfItIs)
{
    const QUuid other = document.addTextLayer()->id();
    document.setSelectedLayerIDs({text, shape});
    EXPECT_TRUE(document.canGroupSelection());
    EXPECT_FALSE(document.selectedPresetGroupID());

    document.groupLayers({text, shape}, {});
    EXPECT_EQ(document.selectedPresetGroupID(), document.presetGroupID(text));
    EXPECT_FALSE(document.canGroupSelection());

    document.setSelectedLayerIDs({text, other});
    EXPECT_FALSE(document.selectedPresetGroupID());
    EXPECT_FALSE(document.canGroupSelection());
    document.setSelectedLayerIDs({other});
    EXPECT_FALSE(document.canGroupSelection());
}

TEST_F(CanvasGroupTest, WhatCanBeGroupedIsToldWithEveryChangeOfAGroup)
{
    const auto noticeOf = [&](const char *property) {
        const QMetaObject *kind = document.metaObject();
        return kind->property(kind->indexOfProperty(property)).notifySignal();
    };
    document.setSelectedLayerIDs({text, shape});
    QSignalSpy grouping(&document, noticeOf("canGroupSelection"));
    QSignalSpy selection(&document, noticeOf("selectedPresetGroupID"));
    const auto isTold = [&](const std::function<void()> &change) {
        grouping.clear();
        selection.clear();
        change();
        return grouping.count() > 0 && selection.count() > 0;
    };

    EXPECT_TRUE(isTold([&] { document.groupLayers({text, shape}, {}); })); // and selected already
    EXPECT_TRUE(isTold([&] { document.ungroupPreset(*document.presetGroupID(text)); }));
    EXPECT_TRUE(isTold([&] { document.groupLayers({text}, {}); }));
    EXPECT_TRUE(isTold([&] { document.removePresetGroup(*document.presetGroupID(text)); }));
    EXPECT_FALSE(isTold([&] { document.layer(shape)->setName(QStringLiteral("Star")); }));
}

TEST_F(CanvasGroupTest, RemovingAGroupRemovesItsLayersAndItsName)
{
    const QUuid other = document.addTextLayer()->id();
    document.groupLayers({text, shape}, {});

    document.removePresetGroup(*document.presetGroupID(text));

    EXPECT_EQ(document.layerOrder(), QList<QUuid>{other});
    EXPECT_TRUE(document.presetGroupNames().isEmpty());
}

} // namespace
} // namespace tessara
