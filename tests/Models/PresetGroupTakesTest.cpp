#include "DocumentFixture.h"

#include <algorithm>

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

} // namespace
} // namespace tessara
