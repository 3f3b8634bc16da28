#include "DocumentFixture.h"

#include <gmock/gmock.h>

namespace tessara {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class CanvasCueTest : public DocumentFixture
{
protected:
    struct Takes : DocumentHooks
    {
        void takeRequested(const QUuid &, const QString &name, bool onAir) override
        {
            told.push_back((onAir ? "in " : "out ") + name.toStdString());
        }

        std::vector<std::string> told;
    };

    CanvasCueTest()
        : shown(document.addTextLayer()->id())
        , hidden(document.addTextLayer()->id())
        , first(document.addTemplateShapeLayer(ShapeKind::rectangle)->id())
        , second(document.addTemplateShapeLayer(ShapeKind::ellipse)->id())
    {
        document.groupLayers({first, second}, QStringLiteral("Group"));
        group = *document.presetGroupID(first);
        document.setLayerHidden(hidden, true);
        document.addHooks(&takes);
    }

    bool isHidden(const QUuid &id) const { return document.layer(id)->isHidden(); }
    QMap<QUuid, bool> cues() const { return document.cueTargets(); }

    Takes takes;
    QUuid shown;
    QUuid hidden;
    QUuid first;
    QUuid second;
    QUuid group;
};

TEST_F(CanvasCueTest, AHiddenLayerIsCuedInAndAShownOneOut)
{
    document.toggleCue(hidden);
    document.toggleCue(shown);

    EXPECT_EQ(cues(), (QMap<QUuid, bool>{{hidden, true}, {shown, false}}));
    EXPECT_TRUE(isHidden(hidden));
    EXPECT_FALSE(isHidden(shown));
}

TEST_F(CanvasCueTest, ASecondToggleEndsTheCueWhateverTheLayerDidMeanwhile)
{
    document.toggleCue(hidden);
    document.applyLayerHiddenState(hidden, false);

    document.toggleCue(hidden);

    EXPECT_TRUE(cues().isEmpty());
}

TEST_F(CanvasCueTest, AnUnknownIdIsNotCued)
{
    document.toggleCue(QUuid::createUuid());
    document.toggleCueForPresetGroup(QUuid::createUuid());

    EXPECT_TRUE(cues().isEmpty());
    EXPECT_FALSE(document.cueTargetForPresetGroup(QUuid::createUuid()));
}

TEST_F(CanvasCueTest, ATakeByHandRemovesTheCueSoThatTheTakeOfCuesLeavesTheLayerAlone)
{
    document.toggleCue(hidden);
    document.takeLayerInNow(hidden);
    clock.advance(1s);
    takes.told.clear();

    document.takeCues();

    EXPECT_THAT(takes.told, IsEmpty());
    EXPECT_FALSE(document.takes().isInTransition(hidden));
}

TEST_F(CanvasCueTest, EveryDirectOperationRemovesTheCue)
{
    const std::vector<std::function<void()>> operations{
        [&] { document.takeLayerInNow(shown); },        [&] { document.takeLayerOutNow(shown); },
        [&] { document.setLayerHidden(shown, false); }, [&] { document.toggleLayerHidden(shown); },
        [&] { document.toggleLayerInRunlist(shown); },  [&] { document.removeLayer(shown); },
    };
    for (const auto &operation : operations) {
        document.setCueTargets({{shown, true}});
        operation();
        EXPECT_TRUE(cues().isEmpty());
    }
}

TEST_F(CanvasCueTest, EveryDirectOperationOnAGroupRemovesTheCuesOfAllItsLayers)
{
    const std::vector<std::function<void()>> operations{
        [&] { document.takePresetGroupInNow(group); },
        [&] { document.takePresetGroupOutNow(group); },
        [&] { document.togglePresetGroupInRunlist(group); },
        [&] { document.takeLayerInNow(first); },
        [&] { document.clearCueForPresetGroup(group); },
        [&] { document.removePresetGroup(group); },
    };
    for (const auto &operation : operations) {
        document.setCueTargets({{first, true}, {second, false}});
        operation();
        EXPECT_TRUE(cues().isEmpty());
    }
}

TEST_F(CanvasCueTest, AnAutoOutLeavesTheCueAsItWas)
{
    document.setRunAutoOutDuration(2, hidden);
    document.takeLayerInNow(hidden);
    clock.advance(1s);
    document.toggleCue(hidden);
    ASSERT_EQ(cues().value(hidden, true), false);

    clock.advance(10s);

    EXPECT_TRUE(isHidden(hidden));
    EXPECT_EQ(cues(), (QMap<QUuid, bool>{{hidden, false}}));
}

TEST_F(CanvasCueTest, ACueInOnALayerOnAirRunsItsTakeAgainFromOneToOne)
{
    document.setCueTargets({{shown, true}});

    document.takeCues();

    EXPECT_TRUE(document.takes().isInTransition(shown));
    for (int step = 0; step < 30; ++step) {
        EXPECT_EQ(document.layerVisibility().value(shown), 1);
        clock.advance(Seconds{1.0 / 60});
    }
    EXPECT_FALSE(document.takes().isInTransition(shown));
}

TEST_F(CanvasCueTest, ALayerOfAGroupCuesTheWholeGroup)
{
    document.toggleCue(second);
    EXPECT_EQ(cues(), (QMap<QUuid, bool>{{first, false}, {second, false}}));
    EXPECT_EQ(document.cueTargetForPresetGroup(group), std::optional(false));

    document.toggleCue(first);
    EXPECT_TRUE(cues().isEmpty());
}

TEST_F(CanvasCueTest, APartlyCuedGroupHasNoTargetAndIsCuedAsAWholeNext)
{
    document.setCueTargets({{first, true}});
    EXPECT_FALSE(document.cueTargetForPresetGroup(group));

    document.toggleCueForPresetGroup(group);

    EXPECT_EQ(cues(), (QMap<QUuid, bool>{{first, false}, {second, false}}));
}

TEST_F(CanvasCueTest, AGroupCuedBothWaysHasNoTarget)
{
    document.setCueTargets({{first, true}, {second, false}});

    EXPECT_FALSE(document.cueTargetForPresetGroup(group));
}

TEST_F(CanvasCueTest, AGroupThatIsPartlyOnAirIsCuedIn)
{
    document.applyLayerHiddenState(second, true);

    document.toggleCueForPresetGroup(group);

    EXPECT_EQ(document.cueTargetForPresetGroup(group), std::optional(true));
}

TEST_F(CanvasCueTest, TheTakeGoesForAllCuesAtOnceAndEndsThem)
{
    document.toggleCue(hidden);
    document.toggleCue(shown);

    document.takeCues();

    EXPECT_TRUE(cues().isEmpty());
    EXPECT_FALSE(isHidden(hidden));
    EXPECT_TRUE(document.takes().isInTransition(shown));
    EXPECT_THAT(takes.told, testing::UnorderedElementsAre("in Text 2", "out Text 1"));
    clock.advance(1s);
    EXPECT_TRUE(isHidden(shown));
}

TEST_F(CanvasCueTest, ACuedGroupOfPresetRevealsIsTakenWithoutAStagger)
{
    document.setPresetGroupRunTransitionStyle(LayerRunTransitionStyle::presetReveal, group);
    document.setLayerHidden(first, true);
    document.setLayerHidden(second, true);
    document.toggleCueForPresetGroup(group);

    document.takeCues();

    EXPECT_FALSE(isHidden(first));
    EXPECT_FALSE(isHidden(second));
    EXPECT_EQ(document.layerVisibility().value(first), document.layerVisibility().value(second));
}

TEST_F(CanvasCueTest, TheCueOfALayerThatIsGoneIsDroppedWithTheRest)
{
    document.setCueTargets({{QUuid::createUuid(), true}, {hidden, true}});

    document.takeCues();

    EXPECT_TRUE(cues().isEmpty());
    EXPECT_THAT(takes.told, ElementsAre("in Text 2"));
}

TEST_F(CanvasCueTest, TheTakeOfNoCuesDoesNothing)
{
    int notices = 0;
    QObject::connect(&document, &CanvasDocument::changed, &document, [&] { ++notices; });

    document.takeCues();

    EXPECT_TRUE(cues().isEmpty());
    EXPECT_EQ(notices, 0);
}

TEST_F(CanvasCueTest, ALayerOnItsWayOutIsTakenOutAgainByAClickUntilItHasGone)
{
    document.toggleLayerInRunlist(shown);
    clock.advance(170ms);
    const double reached = document.layerVisibility().value(shown);
    document.toggleLayerInRunlist(shown);
    clock.advance(1ms);
    EXPECT_LE(document.layerVisibility().value(shown), reached);

    document.takes().setVisibility(shown, 0.001);
    document.toggleLayerInRunlist(shown);
    clock.advance(1s);
    EXPECT_EQ(document.layerVisibility().value(shown), 1);
    EXPECT_FALSE(isHidden(shown));
}

} // namespace
} // namespace tessara
