#include "DocumentFixture.h"

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace tessara {
namespace {

using namespace std::chrono_literals;

class LayerTakesTest : public DocumentFixture
{
protected:
    LayerTakesTest()
    {
        QObject::connect(&document, &CanvasDocument::visibilityChanged, &document, [this] {
            writes.push_back({clock.now(), document.layerVisibility().value(title)});
        });
    }

    void hide()
    {
        document.setLayerHidden(title, true);
        writes.clear();
    }

    void setSettings(LayerRunTransitionStyle style, double duration, double autoOut = 0)
    {
        document.setRunTransitionStyle(style, title);
        document.setRunDissolveDuration(duration, title);
        document.setRunAutoOutDuration(autoOut, title);
    }

    Layer *layer() const { return document.layer(title); }
    double visibility() const { return document.layerVisibility().value(title, -1); }

    struct Write
    {
        Nanoseconds time;
        double value;
    };
    QUuid title = document.addTextLayer()->id();
    std::vector<Write> writes;
};

TEST_F(LayerTakesTest, ATakeInIsTwentyOneStepsOfASixtiethFromTheNextTurnOn)
{
    hide();

    document.toggleLayerInRunlist(title);
    EXPECT_FALSE(layer()->isHidden());
    EXPECT_TRUE(writes.empty());
    clock.advance(0s);
    ASSERT_EQ(writes.size(), 1u);
    clock.advance(1s);

    ASSERT_EQ(writes.size(), 21u);
    for (std::size_t step = 0; step < writes.size(); ++step) {
        EXPECT_EQ(writes[step].time, Nanoseconds{16666666} * step);
        EXPECT_DOUBLE_EQ(writes[step].value, double(step + 1) / 21);
    }
    EXPECT_EQ(visibility(), 1);
    EXPECT_FALSE(document.takes().isInTransition(title));
}

TEST_F(LayerTakesTest, AutoOutCountsFromTheEndOfTheTakeIn)
{
    hide();
    setSettings(LayerRunTransitionStyle::dissolve, 0.35, 2);
    document.takeLayerInNow(title);
    clock.advance(340ms); // the ramp ends after 20 pauses, at 333 ms
    ASSERT_TRUE(document.takes().isAutoOutPending(title));

    clock.advance(Nanoseconds{16666666 * 20 - 340000000} + 2s - 1ns);
    EXPECT_EQ(visibility(), 1);
    clock.advance(1ns);
    EXPECT_LT(visibility(), 1);

    clock.advance(1s);
    EXPECT_TRUE(layer()->isHidden());
    EXPECT_EQ(visibility(), 0);
}

TEST_F(LayerTakesTest, ShorterThanTwoHundredthsIsACutAndAutoOutStartsAtOnce)
{
    for (const double duration : {0.0, 0.01}) {
        hide();
        setSettings(LayerRunTransitionStyle::dissolve, duration, 5);

        document.takeLayerInNow(title);

        EXPECT_EQ(visibility(), 1);
        EXPECT_FALSE(document.takes().isInTransition(title));
        EXPECT_TRUE(document.takes().isAutoOutPending(title));
    }
}

TEST_F(LayerTakesTest, TwoHundredthsAreOneStep)
{
    hide();
    setSettings(LayerRunTransitionStyle::dissolve, 0.02, 5);

    document.takeLayerInNow(title);
    clock.advance(0s);

    ASSERT_EQ(writes.size(), 1u);
    EXPECT_EQ(writes[0].value, 1);
    EXPECT_TRUE(document.takes().isAutoOutPending(title));
}

TEST_F(LayerTakesTest, DurationsAreHeldToTheirLimits)
{
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const auto settings = [this] { return document.runSettings(title); };

    document.setRunDissolveDuration(20, title);
    EXPECT_EQ(settings().dissolveDuration, 8);
    document.setRunDissolveDuration(notANumber, title);
    EXPECT_EQ(settings().dissolveDuration, 0);
    document.setRunAutoOutDuration(-1, title);
    EXPECT_EQ(settings().autoOutDuration, 0);
    document.setRunAutoOutDuration(900, title);
    EXPECT_EQ(settings().autoOutDuration, 600);
    document.setRunAutoOutDuration(std::numeric_limits<double>::infinity(), title);
    EXPECT_EQ(settings().autoOutDuration, 0);
}

TEST_F(LayerTakesTest, ATakeInOfALayerOnAirRunsFromOneToOneAndRestartsItsAutoOut)
{
    setSettings(LayerRunTransitionStyle::dissolve, 0.35, 2);
    document.takeLayerInNow(title);
    clock.advance(2s); // a third of a second of it is left
    ASSERT_EQ(visibility(), 1);

    document.takeLayerInNow(title);
    EXPECT_TRUE(document.takes().isInTransition(title));
    clock.advance(2s);

    EXPECT_EQ(visibility(), 1);
    EXPECT_FALSE(layer()->isHidden());
}

TEST_F(LayerTakesTest, ATakeOutOfAHiddenLayerFinishesAtOnce)
{
    hide();
    document.takes().setVisibility(title, 0.7);

    document.takeLayerOutNow(title);

    EXPECT_TRUE(layer()->isHidden());
    EXPECT_EQ(visibility(), 0);
    EXPECT_FALSE(document.takes().isInTransition(title));
}

TEST_F(LayerTakesTest, OutDuringInFallsFromWhereTheRiseStoppedOverTheFullDuration)
{
    hide();
    document.takeLayerInNow(title);
    clock.advance(Nanoseconds{16666666 * 10});
    const double reached = visibility();
    ASSERT_NEAR(reached, 0.5, 0.05);
    writes.clear();

    document.takeLayerOutNow(title);
    clock.advance(1s);

    EXPECT_EQ(writes.size(), 21u);
    EXPECT_NEAR(writes.front().value, reached * 20 / 21, 1e-12);
    EXPECT_EQ(visibility(), 0);
    EXPECT_TRUE(layer()->isHidden());
}

TEST_F(LayerTakesTest, ALayerStaysShownUntilItsTakeOutEnds)
{
    document.takeLayerOutNow(title);
    clock.advance(300ms);
    EXPECT_FALSE(layer()->isHidden());

    clock.advance(100ms);

    EXPECT_TRUE(layer()->isHidden());
}

TEST_F(LayerTakesTest, TheEyeCutsWhateverRuns)
{
    document.takeLayerOutNow(title);
    clock.advance(100ms);

    document.setLayerHidden(title, false);
    EXPECT_EQ(visibility(), 1);
    EXPECT_FALSE(document.takes().isInTransition(title));

    document.toggleLayerHidden(title);
    EXPECT_EQ(visibility(), 0);
    EXPECT_TRUE(layer()->isHidden());
}

TEST_F(LayerTakesTest, ADeletedLayersTaskEndsAndNothingReappears)
{
    document.takeLayerOutNow(title);
    clock.advance(100ms);

    document.removeLayer(title);
    clock.advance(1s);

    EXPECT_FALSE(document.layerVisibility().contains(title));
    EXPECT_FALSE(document.layerRunSettings().contains(title));
}

TEST_F(LayerTakesTest, ADestroyedDocumentEndsItsTasks)
{
    auto own = std::make_unique<CanvasDocument>(clock);
    const QUuid id = own->addTextLayer()->id();
    own->setRunAutoOutDuration(1, id);
    own->takeLayerInNow(id);
    clock.advance(100ms);

    own.reset();
    clock.advance(5s);

    EXPECT_EQ(clock.now(), 5100ms);
}

TEST_F(LayerTakesTest, AutoOutSetToNothingCallsOffTheOneThatWaits)
{
    setSettings(LayerRunTransitionStyle::cut, 0, 2);
    document.takeLayerInNow(title);

    document.setRunAutoOutDuration(5, title);
    EXPECT_TRUE(document.takes().isAutoOutPending(title));
    document.setRunAutoOutDuration(0, title);
    clock.advance(10s);

    EXPECT_EQ(visibility(), 1);
}

TEST_F(LayerTakesTest, ADelayLeavesTheStateAloneUntilItIsOver)
{
    hide();
    document.takes().setLayerOnAir(title, true, {.initialDelay = Seconds{0.5}});

    clock.advance(499ms);
    EXPECT_TRUE(layer()->isHidden());
    EXPECT_TRUE(document.takes().isInTransition(title));

    clock.advance(1ms);
    EXPECT_FALSE(layer()->isHidden());
    clock.advance(1s);
    EXPECT_EQ(visibility(), 1);
}

TEST_F(LayerTakesTest, AnUnknownLayerChangesNothing)
{
    const QUuid unknown = QUuid::createUuid();

    document.takeLayerInNow(unknown);
    document.setRunDissolveDuration(1, unknown);
    document.setRunTransitionStyle(LayerRunTransitionStyle::cut, unknown);
    clock.advance(1s);

    EXPECT_FALSE(document.layerVisibility().contains(unknown));
    EXPECT_FALSE(document.layerRunSettings().contains(unknown));
}

TEST_F(LayerTakesTest, EffectiveVisibilityIsMendedToItsRange)
{
    const QUuid unknown = QUuid::createUuid();
    EXPECT_EQ(document.effectiveVisibility(unknown, true), 0);
    EXPECT_EQ(document.effectiveVisibility(unknown, false), 1);

    document.takes().setVisibility(title, 1.7);
    EXPECT_EQ(document.effectiveVisibility(title, false), 1);
    document.takes().setVisibility(title, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(document.effectiveVisibility(title, false), 0);
}

class SlideTest : public DocumentFixture
{
protected:
    QSizeF slideOf(QRectF frame, LayerRunTransitionStyle style, double visibility = 0)
    {
        auto *shape = document.addTemplateShapeLayer(ShapeKind::rectangle);
        shape->setPosition(frame.topLeft());
        shape->setSize(frame.size());
        document.setRunTransitionStyle(style, shape->id());
        document.takes().setVisibility(shape->id(), visibility);
        return document.effectiveTransitionOffset(shape->id(), false);
    }

    static constexpr auto reveal = LayerRunTransitionStyle::presetReveal;
};

TEST_F(SlideTest, OnlyAPresetRevealSlides)
{
    EXPECT_EQ(slideOf({0, 0, 100, 100}, LayerRunTransitionStyle::dissolve), QSizeF(0, 0));
    EXPECT_EQ(slideOf({0, 0, 100, 100}, LayerRunTransitionStyle::cut), QSizeF(0, 0));
    EXPECT_NE(slideOf({0, 0, 100, 100}, reveal), QSizeF(0, 0));
}

TEST_F(SlideTest, ComesFromTheSideThatIsNear)
{
    EXPECT_EQ(slideOf({0, 500, 200, 100}, reveal), QSizeF(-52, 0));
    EXPECT_EQ(slideOf({1600, 500, 200, 100}, reveal), QSizeF(52, 0));
    EXPECT_EQ(slideOf({860, 900, 200, 100}, reveal), QSizeF(0, 24));
    EXPECT_EQ(slideOf({860, 100, 200, 100}, reveal), QSizeF(0, -24));
}

TEST_F(SlideTest, TheMiddleOfTheCanvasSlidesFromAbove)
{
    EXPECT_LT(slideOf({860, 490, 200, 100}, reveal).height(), 0);
}

TEST_F(SlideTest, HasALeastAndALargestWay)
{
    EXPECT_EQ(slideOf({-600, 0, 1000, 100}, reveal).width(), -140);
    EXPECT_EQ(slideOf({0, 0, 50, 100}, reveal).width(), -32);
    EXPECT_EQ(slideOf({860, 0, 200, 10}, reveal).height(), -18);
    EXPECT_EQ(slideOf({860, 0, 200, 1000}, reveal).height(), -90);
}

TEST_F(SlideTest, ShrinksAsTheLayerComesIn)
{
    EXPECT_EQ(slideOf({0, 500, 200, 100}, reveal, 0.75), QSizeF(-13, 0));
    EXPECT_EQ(slideOf({0, 500, 200, 100}, reveal, 1), QSizeF(0, 0));
}

} // namespace
} // namespace tessara
