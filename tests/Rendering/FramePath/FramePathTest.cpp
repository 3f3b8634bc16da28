#include "Rendering/FramePath/FramePathFixture.h"

#include <QCoreApplication>

#include <cstring>
#include <limits>
#include <new>

namespace tessara {
namespace {

using FramePathTest = FramePathFixture;

const QColor green(0, 255, 0);

TEST_F(FramePathTest, IsTransparentForAnEmptyDocument)
{
    EXPECT_EQ(copyOf(frame()), QByteArray(200 * 100 * 4, 0));
}

TEST_F(FramePathTest, ShowsTheBackgroundOfAnEmptyDocument)
{
    background = green;

    const FrameBytes shown = frame();

    for (qsizetype byte = 0; byte < shown.size(); byte += 4)
        ASSERT_EQ(std::memcmp(shown.data() + byte, "\0\xff\0\xff", 4), 0);
}

TEST_F(FramePathTest, TakesAnotherBackgroundAtOnce)
{
    addShape(ShapeKind::ellipse, {10, 10, 50, 50});
    for (const std::optional<QColor> &next :
         {std::optional<QColor>(), std::optional(green), std::optional(QColor(9, 8, 7, 90)),
          std::optional<QColor>()}) {
        background = next;
        EXPECT_EQ(frame(), reference());
    }
}

TEST_F(FramePathTest, ShowsEachChangeOfALayer)
{
    addPicture(noise({64, 64}), {20, 10, 100, 60});
    ShapeLayer *shape = addShape(ShapeKind::rectangle, {10, 10, 80, 50}, {1, 0, 0, 0.5});
    TextLayer *text = addText("Title", {30, 20});
    EXPECT_EQ(frame(), reference());

    shape->setColor({0, 0, 1, 0.7});
    EXPECT_EQ(frame(), reference());
    shape->setKind(ShapeKind::ellipse);
    EXPECT_EQ(frame(), reference());
    shape->setPosition({11.5, 20.25});
    EXPECT_EQ(frame(), reference());
    text->setText("Another");
    EXPECT_EQ(frame(), reference());
    text->setFontSize(22);
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePathTest, LeavesNothingOfAHiddenLayer)
{
    ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    frame();

    document.setLayerHidden(shape->id(), true);

    EXPECT_EQ(copyOf(frame()), QByteArray(200 * 100 * 4, 0));
}

TEST_F(FramePathTest, TakesAVisibilityThatIsNoNumberForNone)
{
    ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    frame();

    setVisibility(shape, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(copyOf(frame()), QByteArray(200 * 100 * 4, 0));

    setVisibility(shape, 1);
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePathTest, FadesEachLayerByItsVisibility)
{
    ShapeLayer *shape = addShape(ShapeKind::rectangle, {10, 10, 80, 80});
    ImageLayer *picture = addPicture(noise({50, 50}), {50, 20, 50, 50});
    for (int step = 0; step <= 21; ++step) {
        setVisibility(shape, step / 21.0);
        setVisibility(picture, 1 - step / 21.0);
        EXPECT_EQ(frame(), reference()) << step;
    }
}

TEST_F(FramePathTest, LeavesNothingOfARemovedLayer)
{
    const ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    addShape(ShapeKind::star, {60, 10, 80, 80}, {0, 1, 0, 0.5});
    frame();

    document.removeLayer(shape->id());

    EXPECT_EQ(frame(), reference());
}

// What an undo puts back has the id of what was removed, and may even get its memory.
TEST_F(FramePathTest, ShowsTheLayerThatTookThePlaceOfAnotherUnderItsId)
{
    const QUuid id = QUuid::createUuid();
    const auto add = [&](ShapeKind kind) {
        added(new ShapeLayer(id, "Shape", kind, {10, 10}, {80, 80}));
    };
    for (int round = 0; round < 20; ++round) {
        add(round % 2 == 0 ? ShapeKind::ellipse : ShapeKind::star);
        ASSERT_EQ(frame(), reference()) << round;
        document.removeLayerCore(id);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// A macro may name any id.
TEST_F(FramePathTest, ShowsNothingOfARemovedLayerInOneUnderTheNullId)
{
    const ShapeLayer *removed = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    frame();
    document.removeLayer(removed->id());

    added(new ShapeLayer(QUuid(), "Shape", ShapeKind::star, {100, 10}, {80, 80}));

    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePathTest, FollowsTheOrderOfLayers)
{
    addShape(ShapeKind::ellipse, {10, 10, 80, 80}, {1, 0, 0, 1});
    addShape(ShapeKind::ellipse, {50, 10, 80, 80}, {0, 1, 0, 0.6});
    addShape(ShapeKind::ellipse, {30, 30, 80, 60}, {0, 0, 1, 1});
    frame();
    QList<QUuid> order = document.layerOrder();
    std::sort(order.begin(), order.end());
    do {
        document.restoreLayerOrder(order);
        EXPECT_EQ(frame(), reference());
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(FramePathTest, MovesALayerByWholePixelsWithoutATrace)
{
    ShapeLayer *shape = addShape(ShapeKind::star, {10.3, 10.7, 60, 60});
    ImageLayer *picture = addPicture(noise({40, 30}), {100.5, 40.25, 60, 50});
    frame();
    for (const QPointF move : {QPointF(1, 0), QPointF(-40, 3), QPointF(60, -30), QPointF(7, 60)}) {
        shape->setPosition(shape->position() + move);
        picture->setPosition(picture->position() - move);
        EXPECT_EQ(frame(), reference());
    }
}

TEST_F(FramePathTest, GivesEveryContentInEveryFormatAndSize)
{
    addPicture(noise({64, 64}), {20, 10, 100, 60})->setMaskShape(ImageLayerMaskShape::circle);
    addText("Title", {30.25, 20});
    using enum FrameContent;
    using enum FrameFormat;
    for (const QSize size : {canvas, QSize(100, 50), QSize(77, 31), QSize(301, 155), QSize(1, 1)}) {
        for (const FrameContent content : {fill, fillWithMirroredAlpha, key}) {
            for (const FrameFormat format : {bgra, argb, yuv}) {
                const FrameTarget target = frameTarget(content, format, size);
                EXPECT_EQ(frame(target), reference(target)) << size.width() << ' ' << int(content);
            }
        }
    }
}

TEST_F(FramePathTest, GivesAFillAndItsKeyAtOnce)
{
    addShape(ShapeKind::star, {10, 10, 80, 80}, {1, 0.5, 0, 0.5});
    const std::array targets{plain, frameTarget(FrameContent::key, FrameFormat::argb, {90, 60})};

    const FramePath::Result frames = path.render(document, {}, targets);

    ASSERT_TRUE(frames);
    EXPECT_EQ((*frames)[0], reference(targets[0]));
    EXPECT_EQ((*frames)[1], reference(targets[1]));
}

// The frame that is scaled is kept as well.
TEST_F(FramePathTest, ScalesTheWholeFrameAfterTheTargetChanged)
{
    addPicture(noise({64, 64}), {20, 10, 100, 60});
    const FrameTarget small = frameTarget(FrameContent::fill, FrameFormat::bgra, {100, 50});
    const FrameTarget key = frameTarget(FrameContent::key, FrameFormat::argb, {90, 60});
    for (const FrameTarget &target : {plain, small, key, small, plain, key})
        EXPECT_EQ(frame(target), reference(target));
}

TEST_F(FramePathTest, FollowsTheCanvas)
{
    addShape(ShapeKind::star, {10, 10, 80, 80});
    for (const QSizeF size :
         {QSizeF(200, 100), QSizeF(160.7, 90.4), QSizeF(64, 300), QSizeF(1, 1)}) {
        document.setSize(size);
        const QSize pixels(int(size.width()), int(size.height()));
        const FrameTarget whole = frameTarget(FrameContent::fill, FrameFormat::bgra, pixels);
        EXPECT_EQ(frame(whole), reference(whole));
        EXPECT_EQ(frame(), reference());
    }
}

TEST_F(FramePathTest, RefusesACanvasThatCannotBeDrawnWithTheSameError)
{
    for (const QSizeF size : {QSizeF(0, 0), QSizeF(0.9, 100), QSizeF(40'000, 10), QSizeF(-5, 5)}) {
        document.setSize(size);
        const auto drawn = RenderEngine().render(document, {});
        const FramePath::Result frames = path.render(document, {}, {&plain, 1});

        ASSERT_FALSE(drawn);
        ASSERT_FALSE(frames);
        EXPECT_EQ(frames.error(), drawn.error());
    }
    document.setSize({200, 100});
    addShape(ShapeKind::star, {10, 10, 80, 80});
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePathTest, LetsTwoFollowOneDocument)
{
    FramePath other(1);
    ShapeLayer *shape = addShape(ShapeKind::star, {10, 10, 80, 80});
    for (int tick = 0; tick < 4; ++tick) {
        shape->setPosition({10.0 + tick * 7, 10});
        const FrameBytes expected = reference();
        EXPECT_EQ(frame(), expected);
        if (tick % 2 == 0) {
            EXPECT_EQ((*other.render(document, {}, {&plain, 1}))[0], expected);
        }
    }
}

TEST_F(FramePathTest, TellsDocumentsApartThatFollowEachOtherAtOneAddress)
{
    alignas(CanvasDocument) std::byte place[sizeof(CanvasDocument)];
    for (const ShapeKind kind : {ShapeKind::star, ShapeKind::ellipse, ShapeKind::diamond}) {
        auto *at = new (place) CanvasDocument(clock, {200, 100});
        at->addLayer(new ShapeLayer(QUuid::fromString(u"{00000000-0000-0000-0000-000000000001}"),
                                    "Shape", kind, {10, 10}, {80, 80}));

        const FramePath::Result frames = path.render(*at, {}, {&plain, 1});

        EXPECT_EQ((*frames)[0], referenceBytes(*RenderEngine().render(*at, {}), plain));
        at->~CanvasDocument();
    }
}

TEST_F(FramePathTest, GoesBetweenDocuments)
{
    CanvasDocument other(clock, {200, 100});
    other.addLayer(
        new ShapeLayer(QUuid::createUuid(), "Shape", ShapeKind::star, {40, 10}, {60, 60}));
    addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    const FrameBytes ofOther = referenceBytes(*RenderEngine().render(other, {}), plain);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(frame(), reference());
        EXPECT_EQ((*path.render(other, {}, {&plain, 1}))[0], ofOther);
    }
}

TEST_F(FramePathTest, SlidesAPictureThatIsNotStretchedBetweenPixelsLikeItsNeighbours)
{
    QImage white(60, 40, QImage::Format_ARGB32_Premultiplied);
    white.fill(Qt::white);
    const ImageLayer *layer = addPicture(white, {120, 20, 60, 40});
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, layer->id());
    setVisibility(layer, 1 - 10.25 / 32); // of a slide by 32 px from the right

    const FrameBytes shown = frame();
    const QImage drawn = render();

    const int whole = alphaAt(drawn, 150, 40);
    EXPECT_NEAR(alphaAt(drawn, 130, 40), 0.75 * whole, 2);
    EXPECT_NEAR(alphaAt(imageOf(shown, canvas), 130, 40), 0.75 * whole, 2);
    EXPECT_EQ(alphaAt(imageOf(shown, canvas), 150, 40), whole);
    EXPECT_EQ(alphaAt(imageOf(shown, canvas), 129, 40), 0);
}

TEST_F(FramePathTest, APictureSlidesToThePixelsOnWhichItRests)
{
    const ImageLayer *layer = addPicture(noise({61, 40}), {120.6, 20.5, 61, 40});
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, layer->id());
    QList<QByteArray> frames;
    for (int step = 1; step < 41; ++step) {
        setVisibility(layer, step / 41.0);
        const FrameBytes shown = frame();
        const Tolerance tolerance(document, canvas, false);
        const Difference found = difference(
            imageOf(shown, canvas).convertToFormat(QImage::Format_RGBA8888_Premultiplied), render(),
            tolerance);
        EXPECT_EQ(found.beyond, 0) << step;
        frames.append(copyOf(shown));
    }
    setVisibility(layer, 1);

    EXPECT_EQ(frame(), reference());
    EXPECT_EQ(QSet<QByteArray>(frames.begin(), frames.end()).size(), frames.size());
}

TEST_F(FramePathTest, ACanvasThatNoFrameCanHoldIsRefusedHoweverOftenItIsAskedFor)
{
    document.setSize({17000, 17000});
    for (int attempt = 0; attempt < 3; ++attempt) {
        const FramePath::Result frames = path.render(document, {}, {&plain, 1});
        ASSERT_FALSE(frames.has_value());
        EXPECT_EQ(frames.error(), RenderEngineError::bitmapCreationFailed);
    }
    document.setSize(canvas);
    addText("Title", {30, 20});

    EXPECT_EQ(frame(), reference());
}

// No painter's picture is to be had of it.
TEST_F(FramePathTest, GeometryBeyondAllMeasureIsSurvived)
{
    addShape(ShapeKind::ellipse, {-1e300, 1e300, 1e308, 1e308});
    addShape(ShapeKind::triangle, {10, 10, 1e300, 40})->setCornerRadius(1e300);
    addPicture(noise({64, 64}), {1e300, -1e300, 1e308, 3});
    addPicture(noise({64, 64}), {-1e300, 0, 1e300, 40});
    addText("Title", {1e300, -1e300});
    addCountdown({-1e300, 10, 1e308, 1e308});
    added(new ScoreLayer(QUuid::createUuid(), "Score", ScoreTemplate::wideBroadcast,
                         ScoreSportPreset::football, {-1e300, 10}, {1e308, 1e300}));
    for (const QUuid &id : document.layerOrder())
        document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, id);
    for (const double visibility : {1.0, 0.5}) {
        for (const QUuid &id : document.layerOrder())
            document.takes().setVisibility(id, visibility);
        EXPECT_FALSE(frame().isNull());
    }
    path.makeSprites(document);

    document.removeSelectedLayers();
    EXPECT_FALSE(frame().isNull());
}

// Half of the range at the most, and nothing away from the edges: see Tolerance.
TEST_F(FramePathTest, StaysNearWhileALayerSlides)
{
    ShapeLayer *shape = addShape(ShapeKind::rectangle, {120.25, 20, 61.5, 50});
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, shape->id());
    for (int step = 1; step < 21; ++step) {
        setVisibility(shape, step / 21.0);
        const QImage drawn = render();
        const FrameBytes shown = frame();
        const Tolerance tolerance(document, canvas, false);
        const Difference found = difference(
            imageOf(shown, canvas).convertToFormat(QImage::Format_RGBA8888_Premultiplied), drawn,
            tolerance);
        EXPECT_EQ(found.beyond, 0) << step;
        EXPECT_LE(found.largest, 128) << step;
        EXPECT_TRUE(tolerance.isSliding()) << step;
        const auto bytes = [&](int x) { return imageOf(shown, canvas).pixel(x, 45); };
        EXPECT_EQ(bytes(175), drawn.pixel(175, 45)) << step; // well inside
        EXPECT_EQ(bytes(20), 0u) << step;                    // well outside
    }
    setVisibility(shape, 1);
    EXPECT_EQ(frame(), reference());
}

} // namespace
} // namespace tessara
