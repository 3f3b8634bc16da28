#include "Rendering/FramePath/FramePathFixture.h"

#include <QCoreApplication>
#include <QEvent>

namespace tessara {
namespace {

class FramePreparationTest : public FramePathFixture
{
protected:
    TextLayer *addHidden(const QUuid &id, const QString &text)
    {
        auto *layer = new TextLayer(id, "Title", text, {30, 20});
        layer->setFontSize(40);
        added(layer);
        document.setLayerHidden(id, true);
        return layer;
    }
    void remove(const QUuid &id)
    {
        document.removeLayer(id);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// While sprites are made for the hidden one, another comes in its place and is taken.
    void replaceHidden(const QUuid &id, const QString &text)
    {
        frame();
        path.prepareHidden();
        remove(id);
        TextLayer *successor = addHidden(id, text);
        document.setLayerHidden(id, false);
        frame();
        setVisibility(successor, 0.5);
        prepare(); // until what was made ahead has come
    }
};

TEST_F(FramePreparationTest, IsPreparedWhenNoSpriteIsMissing)
{
    EXPECT_TRUE(path.prepare(document, atRest));
    addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    addText("Title", {30, 20});
    EXPECT_FALSE(path.prepare(document, atRest));

    prepare();

    EXPECT_TRUE(path.prepare(document, atRest));
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, HasTheSpritesOfHiddenLayersAfterMakingAllOfThem)
{
    ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    addText("Title", {30, 20});
    document.setLayerHidden(shape->id(), true);
    document.setRunTransitionStyle(LayerRunTransitionStyle::cut, shape->id());
    path.makeSprites(document);
    EXPECT_EQ(frame(), reference());

    document.setLayerHidden(shape->id(), false);
    EXPECT_TRUE(path.prepare(document, atRest));
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, MakesAllSpritesAnewForAnotherCanvas)
{
    ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    frame();
    document.setSize({300, 150});
    document.moveLayer(shape->id(), {150, 20});
    path.makeSprites(document);
    document.moveLayer(shape->id(), {170, 30});
    path.makeSprites(document);
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, MakesNoSpritesForACanvasThatCannotBeDrawn)
{
    addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    document.setSize({0, 100});
    path.makeSprites(document);
    document.setSize(canvas);
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, ShowsAllThatHasChangedSinceAndWhileItWasPrepared)
{
    ShapeLayer *first = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    ShapeLayer *second = addShape(ShapeKind::rectangle, {50, 30, 80, 60}, {0, 0, 1, 1});
    TextLayer *text = addText("Title", {30, 20});
    frame();

    text->setText("Another");
    document.removeLayer(first->id());
    EXPECT_FALSE(path.prepare(document, atRest));
    document.moveLayer(second->id(), {120, 40});
    prepare();

    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, IsPreparedForOneGeometryAndRendersAnother)
{
    addText("Title", {30, 20});
    addPicture(noise({64, 64}), {20, 10, 100, 60});
    frame();
    const FrameGeometry larger{canvas * 2, QTransform::fromScale(2, 2), DrawingStyle::canvas};

    EXPECT_FALSE(path.prepare(document, larger));

    EXPECT_EQ(frame(), reference());
    const FrameTarget target = frameTarget(FrameContent::fill, FrameFormat::bgra, larger.pixels);
    while (!path.prepare(document, larger))
        std::this_thread::yield();
    FramePath other(1);
    EXPECT_EQ((*path.render(document, larger, {}, {&target, 1}))[0],
              (*other.render(document, larger, {}, {&target, 1}))[0]);
}

TEST_F(FramePreparationTest, ALayerThatWentBeforeItWasSeenIsForgotten)
{
    const QUuid id = QUuid::createUuid();
    addHidden(id, "Hidden");
    addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    frame();

    remove(id);
    path.prepareHidden();

    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, WhatWasMadeForALayerIsNotShownByItsSuccessor)
{
    const QUuid id = QUuid::createUuid();
    addHidden(id, "OLD");

    replaceHidden(id, "NEW");

    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, WhatWasMadeForAnOutlineIsOfNoUseWhenItIsGone)
{
    const QUuid id = QUuid::createUuid();
    addHidden(id, "OLD")->setOutlineWidth(5);

    replaceHidden(id, "NEW");

    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, ATakeFindsTheSpritesOfALayerThatWasHidden)
{
    const QUuid id = QUuid::createUuid();
    TextLayer *title = addHidden(id, "Title");
    document.setRunTransitionStyle(LayerRunTransitionStyle::cut, id);
    ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    frame();
    path.prepareHidden();
    document.moveLayer(shape->id(), {20, 10}); // the same sprite
    prepare();                                 // until what was made ahead has come
    frame();

    setVisibility(title, 1);
    document.applyLayerHiddenState(id, false);

    EXPECT_TRUE(path.prepare(document, atRest));
    EXPECT_EQ(frame(), reference());
}

TEST_F(FramePreparationTest, ALayerThatWentWhileAnotherGeometryWasPreparedLeavesTheFrame)
{
    ShapeLayer *shape = addShape(ShapeKind::ellipse, {10, 10, 80, 80});
    addText("Title", {30, 20});
    frame();
    remove(shape->id());

    EXPECT_TRUE(path.prepare(document, atRest));

    EXPECT_EQ(frame(), reference());
}

} // namespace
} // namespace tessara
