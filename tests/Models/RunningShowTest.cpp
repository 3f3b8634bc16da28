// A show of three groups, looked at sixty times a second and compared with a reckoning on paper.
#include "DocumentFixture.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tessara {
namespace {

using Style = LayerRunTransitionStyle;

/// What one layer has to look like, reckoned from the times of its commands alone.
class LayerOnPaper
{
public:
    explicit LayerOnPaper(const LayerRunSettings &settings)
        : m_settings(settings)
    {
    }

    void command(Nanoseconds now, bool onAir, Nanoseconds delay)
    {
        reach(now);
        m_ramp.reset();
        m_start.reset();
        m_autoOut.reset();
        if (delay > Nanoseconds{0})
            m_start = Start{now + delay, onAir};
        else
            begin(now, onAir);
    }

    void reach(Nanoseconds now)
    {
        for (;;) {
            if (m_start && m_start->at <= now) {
                const Start start = *m_start;
                m_start.reset();
                begin(start.at, start.onAir);
            } else if (m_ramp && m_ramp->end() <= now) {
                const Ramp ramp = *m_ramp;
                m_ramp.reset();
                arrive(ramp.end(), ramp.to > 0);
            } else if (m_autoOut && *m_autoOut <= now) {
                const Nanoseconds at = *m_autoOut;
                m_autoOut.reset();
                begin(at, false);
            } else {
                break;
            }
        }
        if (m_ramp)
            m_visibility = m_ramp->valueAt(now);
    }

    bool isHidden() const { return m_isHidden; }
    double visibility() const { return m_visibility; }
    bool isInTransition() const { return m_ramp || m_start; }
    bool isAutoOutPending() const { return m_autoOut.has_value(); }

private:
    struct Start
    {
        Nanoseconds at;
        bool onAir;
    };

    struct Ramp
    {
        Nanoseconds start;
        Nanoseconds pause;
        int steps;
        double from;
        double to;

        Nanoseconds end() const { return start + pause * (steps - 1); }
        double valueAt(Nanoseconds now) const
        {
            const auto step = std::min<long>((now - start) / pause + 1, steps);
            return from + (to - from) * (double(step) / steps);
        }
    };

    void begin(Nanoseconds now, bool onAir)
    {
        const bool isCut = m_settings.transitionStyle == Style::cut;
        const bool isGone = !onAir && (m_isHidden || m_visibility <= 0.001);
        if (isCut || isGone) {
            arrive(now, onAir);
            return;
        }
        if (onAir)
            m_isHidden = false;
        const int steps = int(std::lround(m_settings.dissolveDuration * 60));
        const Nanoseconds pause{std::int64_t(m_settings.dissolveDuration / steps * 1e9)};
        m_ramp = Ramp{now, pause, steps, m_visibility, onAir ? 1.0 : 0.0};
    }

    void arrive(Nanoseconds now, bool onAir)
    {
        m_visibility = onAir ? 1 : 0;
        m_isHidden = !onAir;
        if (onAir && m_settings.autoOutDuration > 0)
            m_autoOut = now + toNanoseconds(Seconds{m_settings.autoOutDuration});
    }

    LayerRunSettings m_settings;
    bool m_isHidden = true;
    double m_visibility = 0;
    std::optional<Start> m_start;
    std::optional<Ramp> m_ramp;
    std::optional<Nanoseconds> m_autoOut;
};

class RunningShowTest : public DocumentFixture
{
protected:
    RunningShowTest()
    {
        for (int number = 0; number < 3; ++number)
            addGroup(number == 2 ? 1.5 : 0);
    }

    void addGroup(double autoOut)
    {
        constexpr Style styles[] = {Style::presetReveal, Style::dissolve, Style::presetReveal,
                                    Style::cut};
        constexpr double durations[] = {0.35, 0.2, 0.5};
        QList<QUuid> ids;
        for (int index = 0; index < 10; ++index) {
            ShapeLayer *shape = document.addTemplateShapeLayer(ShapeKind::rectangle);
            shape->setSize({100, 100});
            shape->setPosition({910.0 + 80 * index, 300});
            document.setLayerHidden(shape->id(), true);
            const LayerRunSettings settings{styles[index % 4], durations[index % 3], autoOut};
            document.setRunTransitionStyle(settings.transitionStyle, shape->id());
            document.setRunDissolveDuration(settings.dissolveDuration, shape->id());
            document.setRunAutoOutDuration(settings.autoOutDuration, shape->id());
            paper.emplace(shape->id(), LayerOnPaper(settings));
            ids.append(shape->id()); // from the middle outward, the order in which they reveal
        }
        document.groupLayers(ids, QStringLiteral("Group"));
        groups.append({*document.presetGroupID(ids.first()), ids});
    }

    void takeGroup(int group, bool onAir)
    {
        onAir ? document.takePresetGroupInNow(groups[group].id)
              : document.takePresetGroupOutNow(groups[group].id);
        const QList<QUuid> &ids = groups[group].layers;
        for (qsizetype index = 0; index < ids.size(); ++index) {
            const bool isReveal =
                document.runSettings(ids[index]).transitionStyle == Style::presetReveal;
            const double place = double(onAir ? index : ids.size() - 1 - index);
            const Seconds delay{isReveal ? 0.055 * place : 0};
            paper.at(ids[index]).command(clock.now(), onAir, toNanoseconds(delay));
        }
    }

    void takeCues()
    {
        const QMap<QUuid, bool> targets = document.cueTargets();
        document.takeCues();
        for (auto cue = targets.begin(); cue != targets.end(); ++cue)
            paper.at(cue.key()).command(clock.now(), cue.value(), Nanoseconds{0});
    }

    /// Lets the show run, and compares it sixty times a second.
    void run(double seconds)
    {
        for (int sample = 0; sample < int(std::lround(seconds * 60)); ++sample) {
            clock.advance(Seconds{1.0 / 60});
            for (auto &[id, layer] : paper) {
                layer.reach(clock.now());
                ASSERT_EQ(document.layer(id)->isHidden(), layer.isHidden()) << where(id);
                ASSERT_NEAR(document.layerVisibility().value(id), layer.visibility(), 1e-12)
                    << where(id);
                ASSERT_EQ(document.takes().isInTransition(id), layer.isInTransition()) << where(id);
                ASSERT_EQ(document.takes().isAutoOutPending(id), layer.isAutoOutPending())
                    << where(id);
            }
        }
    }

    std::string where(const QUuid &id) const
    {
        for (qsizetype group = 0; group < groups.size(); ++group) {
            if (const qsizetype index = groups[group].layers.indexOf(id); index >= 0)
                return "layer " + std::to_string(index) + " of group " + std::to_string(group)
                       + " at " + std::to_string(double(clock.now().count()) / 1e9) + " s";
        }
        return {};
    }

    int hiddenLayersOf(int group) const
    {
        const QList<QUuid> &ids = groups[group].layers;
        return int(std::count_if(ids.begin(), ids.end(), [this](const QUuid &id) {
            return document.layer(id)->isHidden();
        }));
    }

    struct Group
    {
        QUuid id;
        QList<QUuid> layers;
    };

    QList<Group> groups;
    std::map<QUuid, LayerOnPaper> paper;
};

TEST_F(RunningShowTest, GroupsRevealStayAndLeaveInReverse)
{
    takeGroup(0, true);
    run(0.2);
    takeGroup(1, true);
    run(1.5);
    EXPECT_EQ(hiddenLayersOf(0) + hiddenLayersOf(1), 0);

    takeGroup(0, false);
    run(1.5);
    EXPECT_EQ(hiddenLayersOf(0), 10);
    EXPECT_EQ(hiddenLayersOf(1), 0);
}

TEST_F(RunningShowTest, OutWhileDelayedStartsArePendingTurnsEveryLayerWhereItStands)
{
    takeGroup(0, true);
    run(0.25);
    EXPECT_GT(hiddenLayersOf(0), 0);
    EXPECT_LT(hiddenLayersOf(0), 10);

    takeGroup(0, false);
    run(0.1);
    takeGroup(0, true);
    run(0.15);
    takeGroup(0, false);
    run(2);

    EXPECT_EQ(hiddenLayersOf(0), 10);
}

TEST_F(RunningShowTest, CuedGroupsGoTogetherWithoutAStagger)
{
    takeGroup(0, true);
    run(2);
    document.toggleCueForPresetGroup(groups[0].id);
    document.toggleCueForPresetGroup(groups[1].id);
    run(0.1);

    takeCues();
    run(0.1);
    EXPECT_EQ(hiddenLayersOf(1), 0);
    run(1);

    EXPECT_EQ(hiddenLayersOf(0), 10);
}

TEST_F(RunningShowTest, AnAutoOutLetsLayersLeaveInTheOrderInWhichTheyCame)
{
    takeGroup(2, true);
    run(1.2);
    EXPECT_EQ(hiddenLayersOf(2), 0);

    run(3);

    EXPECT_EQ(hiddenLayersOf(2), 10);
}

TEST_F(RunningShowTest, AllAtOnceWithCommandsInBetween)
{
    for (int round = 0; round < 12; ++round) {
        takeGroup(round % 3, round % 4 < 2);
        run(0.07 * (1 + round % 5));
        document.toggleCueForPresetGroup(groups[(round + 1) % 3].id);
        if (round % 3 == 2)
            takeCues();
        run(0.05);
    }
    run(5);
}

} // namespace
} // namespace tessara
