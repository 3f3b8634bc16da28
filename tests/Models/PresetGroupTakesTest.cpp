#include "DocumentFixture.h"

#include <algorithm>
#include <cmath>

namespace tessara {
namespace {

using namespace std::chrono_literals;

class PresetGroupTakesTest : public DocumentFixture
{
protected:
    /// A hidden shape whose centre stands so far from the middle of the canvas.
    QUuid addShape(double fromMiddle, LayerRunTransitionStyle style)
    {
        ShapeLayer *shape = document.addTemplateShapeLayer(ShapeKind::rectangle);
        shape->setSize({100, 100});
        shape->setPosition({910 + fromMiddle, 300});
        document.setRunTransitionStyle(style, shape->id());
        document.setLayerHidden(shape->id(), true);
        return shape->id();
    }

    QUuid group(const QList<QUuid> &ids)
    {
        document.groupLayers(ids, QStringLiteral("Group"));
        return *document.presetGroupID(ids.first());
    }

    bool hasStarted(const QUuid &id) const { return !document.layer(id)->isHidden(); }

    static constexpr auto reveal = LayerRunTransitionStyle::presetReveal;
    static constexpr auto dissolve = LayerRunTransitionStyle::dissolve;
};

TEST_F(PresetGroupTakesTest, RevealsFromTheMiddleOneLayerEvery55Milliseconds)
{
    const QUuid far = addShape(600, reveal);
    const QUuid near = addShape(0, reveal);
    const QUuid middle = addShape(300, reveal);
    const QUuid groupID = group({far, near, middle});

    document.takePresetGroupInNow(groupID);
    EXPECT_TRUE(hasStarted(near));
    clock.advance(54ms);
    EXPECT_FALSE(hasStarted(middle));
    clock.advance(1ms);
    EXPECT_TRUE(hasStarted(middle));
    EXPECT_FALSE(hasStarted(far));
    clock.advance(55ms);
    EXPECT_TRUE(hasStarted(far));

    clock.advance(350ms);
    EXPECT_EQ(document.layerVisibility().value(far), 1);
}

TEST_F(PresetGroupTakesTest, TheLastRevealedLeavesFirst)
{
    const QUuid near = addShape(0, reveal);
    const QUuid far = addShape(600, reveal);
    const QUuid groupID = group({near, far});
    document.takePresetGroupInNow(groupID);
    clock.advance(2s);

    document.takePresetGroupOutNow(groupID);
    clock.advance(40ms);

    EXPECT_LT(document.layerVisibility().value(far), 1);
    EXPECT_EQ(document.layerVisibility().value(near), 1);
    clock.advance(1s);
    EXPECT_FALSE(hasStarted(near) || hasStarted(far));
}

TEST_F(PresetGroupTakesTest, OnlyPresetRevealsWaitAndKeepTheirPlaceInTheWholeList)
{
    const QUuid first = addShape(0, dissolve);
    const QUuid second = addShape(200, reveal);
    const QUuid third = addShape(400, dissolve);
    const QUuid fourth = addShape(600, reveal);
    const QUuid groupID = group({first, second, third, fourth});

    document.takePresetGroupInNow(groupID);

    EXPECT_TRUE(hasStarted(first) && hasStarted(third));
    clock.advance(55ms);
    EXPECT_TRUE(hasStarted(second));
    clock.advance(109ms);
    EXPECT_FALSE(hasStarted(fourth));
    clock.advance(1ms);
    EXPECT_TRUE(hasStarted(fourth));
}

TEST_F(PresetGroupTakesTest, OutWhileDelayedStartsArePendingLeavesEveryLayerHidden)
{
    const QUuid near = addShape(0, reveal);
    const QUuid far = addShape(600, reveal);
    const QUuid groupID = group({near, far});
    document.takePresetGroupInNow(groupID);
    clock.advance(20ms);

    document.takePresetGroupOutNow(groupID);
    clock.advance(2s);

    EXPECT_FALSE(hasStarted(near) || hasStarted(far));
    EXPECT_EQ(document.layerVisibility().value(near), 0);
    EXPECT_EQ(document.layerVisibility().value(far), 0);
}

TEST_F(PresetGroupTakesTest, ALayerOfAGroupTakesTheWholeGroup)
{
    const QUuid one = addShape(0, dissolve);
    const QUuid other = addShape(300, dissolve);
    group({one, other});

    document.takeLayerInNow(one);
    EXPECT_TRUE(hasStarted(one) && hasStarted(other));
    clock.advance(1s);

    document.toggleLayerInRunlist(other);
    clock.advance(1s);
    EXPECT_FALSE(hasStarted(one) || hasStarted(other));
}

TEST_F(PresetGroupTakesTest, LayersOfOneFrameStartInTheOrderOfTheirIds)
{
    QList<QUuid> ids{addShape(0, reveal), addShape(0, reveal), addShape(0, reveal)};
    const QUuid groupID = group(ids);
    std::sort(ids.begin(), ids.end(), [](const QUuid &left, const QUuid &right) {
        return left.toString() < right.toString();
    });

    for (int take = 0; take < 2; ++take) {
        document.takePresetGroupInNow(groupID);
        clock.advance(60ms);
        EXPECT_TRUE(hasStarted(ids[0]) && hasStarted(ids[1]));
        EXPECT_FALSE(hasStarted(ids[2]));
        document.takePresetGroupOutNow(groupID);
        clock.advance(2s);
    }
}

TEST_F(PresetGroupTakesTest, AGroupOfOneLayerStartsWithoutADelay)
{
    const QUuid only = addShape(600, reveal);

    document.takePresetGroupInNow(group({only}));

    EXPECT_TRUE(hasStarted(only));
    clock.advance(Seconds{0.36});
    EXPECT_EQ(document.layerVisibility().value(only), 1);
}

TEST_F(PresetGroupTakesTest, WithoutTheRunTransitionEveryLayerJumpsAtOnce)
{
    const QUuid near = addShape(0, reveal);
    const QUuid far = addShape(600, dissolve);
    const QUuid groupID = group({near, far});
    PresetGroupTakes takes(document);

    takes.setGroupOnAir(groupID, true, false);

    for (const QUuid &id : {near, far}) {
        EXPECT_TRUE(hasStarted(id));
        EXPECT_EQ(document.layerVisibility().value(id), 1);
        EXPECT_FALSE(document.takes().isInTransition(id));
    }
}

TEST_F(PresetGroupTakesTest, TheMetricCountsDepthLessThanBreadth)
{
    const PresetGroupTakes takes(document);
    ShapeLayer *shape = document.addTemplateShapeLayer(ShapeKind::rectangle);
    shape->setSize({200, 100});
    shape->setPosition({100, 700});

    EXPECT_DOUBLE_EQ(takes.transitionOrderingMetric(shape->id()),
                     (960.0 - 200.0) + 0.35 * (750 - 0.32 * 1080));
    EXPECT_EQ(takes.transitionOrderingMetric(QUuid::createUuid()), 1.7976931348623157e308);
}

TEST_F(PresetGroupTakesTest, TheBackMostLayersSettingsStandForTheGroup)
{
    const QUuid back = addShape(0, dissolve);
    const QUuid front = addShape(0, reveal);
    const QUuid groupID = group({front, back});

    EXPECT_EQ(document.presetGroupRunSettings(groupID).transitionStyle, dissolve);
    EXPECT_EQ(document.presetGroupRunSettings(QUuid::createUuid()), LayerRunSettings{});
    document.setLayerRunSettings({});
    EXPECT_EQ(document.presetGroupRunSettings(groupID), LayerRunSettings{});
}

TEST_F(PresetGroupTakesTest, SettersReachEveryLayerWithinTheirLimits)
{
    const QUuid one = addShape(0, dissolve);
    const QUuid other = addShape(300, reveal);
    const QUuid stranger = addShape(0, dissolve);
    const QUuid groupID = group({one, other});

    document.setPresetGroupRunTransitionStyle(LayerRunTransitionStyle::cut, groupID);
    document.setPresetGroupRunDissolveDuration(9, groupID);
    document.setPresetGroupRunAutoOutDuration(-1, groupID);

    for (const QUuid &id : {one, other}) {
        EXPECT_EQ(document.runSettings(id), (LayerRunSettings{LayerRunTransitionStyle::cut, 8, 0}));
    }
    EXPECT_EQ(document.runSettings(stranger).transitionStyle, dissolve);
    EXPECT_EQ(document.runSettings(stranger).dissolveDuration, 0.35);
    document.setPresetGroupRunDissolveDuration(std::nan(""), groupID);
    EXPECT_EQ(document.runSettings(one).dissolveDuration, 0);
    document.setPresetGroupRunAutoOutDuration(1000, groupID);
    EXPECT_EQ(document.runSettings(other).autoOutDuration, 600);
}

TEST_F(PresetGroupTakesTest, AnAutoOutOfNoneEndsTheOnesThatWereCounting)
{
    const QUuid one = addShape(0, dissolve);
    const QUuid groupID = group({one, addShape(300, dissolve)});
    document.setPresetGroupRunAutoOutDuration(5, groupID);
    document.takePresetGroupInNow(groupID);
    clock.advance(1s);
    ASSERT_TRUE(document.takes().isAutoOutPending(one));

    document.setPresetGroupRunAutoOutDuration(0, groupID);

    EXPECT_FALSE(document.takes().isAutoOutPending(one));
    clock.advance(10s);
    EXPECT_TRUE(hasStarted(one));
}

} // namespace
} // namespace tessara
