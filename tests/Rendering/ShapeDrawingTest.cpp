#include "Rendering/FrameFixture.h"
#include "Rendering/LayerDrawing.h"

#include <QPainter>

namespace tessara {
namespace {

class ShapeDrawingTest : public FrameTest
{
protected:
    /// The operator's canvas draws the same layer upright.
    QImage canvasPicture(ShapeLayer *shape) const
    {
        QImage picture(200, 100, QImage::Format_RGBA8888_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        TextBlockCache texts;
        drawLayer(painter, document, shape, 1, DrawingStyle::canvas, texts);
        return picture;
    }

    static bool isWiderAtTheTop(const QImage &picture)
    {
        const auto widthOf = [&](int y) {
            int width = 0;
            for (int x = 0; x < picture.width(); ++x)
                width += alphaAt(picture, x, y) > 127;
            return width;
        };
        return widthOf(15) > widthOf(85);
    }

    const QRectF box{50, 10, 100, 80};
};

TEST_F(ShapeDrawingTest, ATrianglePointsDownInTheFrameAndUpOnTheCanvas)
{
    ShapeLayer *triangle = addShape(ShapeKind::triangle, box);

    const QImage frame = render();

    EXPECT_TRUE(isWiderAtTheTop(frame));
    EXPECT_FALSE(isWiderAtTheTop(canvasPicture(triangle)));
    EXPECT_GT(alphaAt(frame, 100, 88), 0);
    EXPECT_GT(alphaAt(canvasPicture(triangle), 100, 11), 0);
}

TEST_F(ShapeDrawingTest, AStarsTipPointsDownInTheFrame)
{
    ShapeLayer *star = addShape(ShapeKind::star, box);

    EXPECT_GT(alphaAt(render(), 100, 85), 127);
    EXPECT_EQ(alphaAt(render(), 100, 13), 0);
    EXPECT_GT(alphaAt(canvasPicture(star), 100, 14), 127);
}

TEST_F(ShapeDrawingTest, ACustomPolygonIsMirroredTopToBottomWithinItsBox)
{
    ShapeLayer *shape = addShape(ShapeKind::custom, box);
    shape->setCustomPoints({{0, 0}, {1, 0}, {0, 1}});

    const QImage frame = render();

    EXPECT_EQ(bytesAt(frame, 60, 80), (PixelBytes{255, 0, 0, 255}));
    EXPECT_EQ(alphaAt(frame, 140, 15), 0);
    EXPECT_EQ(alphaAt(frame, 140, 85), 255);
    EXPECT_EQ(alphaAt(canvasPicture(shape), 140, 15), 255);
}

TEST_F(ShapeDrawingTest, ACustomShapeWithoutPointsIsItsWholeBoxWithSquareCorners)
{
    addShape(ShapeKind::custom, box)->setCornerRadius(30);

    const QImage frame = render();

    EXPECT_EQ(inkOf(frame), QRect(50, 10, 100, 80));
    EXPECT_EQ(alphaAt(frame, 50, 10), 255);
    EXPECT_EQ(alphaAt(frame, 149, 89), 255);
}

TEST_F(ShapeDrawingTest, APolygonThatCrossesItselfIsFilledThroughout)
{
    addShape(ShapeKind::custom, box)
        ->setCustomPoints({{0.5, 0}, {0.81, 1}, {0, 0.38}, {1, 0.38}, {0.19, 1}});

    EXPECT_EQ(alphaAt(render(), 100, 50), 255);
}

TEST_F(ShapeDrawingTest, RectangleAndLineAreTheSameRoundedBox)
{
    ShapeLayer *shape = addShape(ShapeKind::rectangle, box);
    shape->setCornerRadius(20);
    const QImage rectangle = render();

    shape->setKind(ShapeKind::line);

    EXPECT_EQ(render(), rectangle);
    EXPECT_EQ(alphaAt(rectangle, 51, 11), 0);
    EXPECT_EQ(alphaAt(rectangle, 100, 10), 255);
    EXPECT_EQ(alphaAt(rectangle, 50, 50), 255);
}

TEST_F(ShapeDrawingTest, AnEllipseAndADiamondTouchTheMiddlesOfTheirSides)
{
    for (const ShapeKind kind : {ShapeKind::ellipse, ShapeKind::diamond}) {
        document.removeSelectedLayers();
        addShape(kind, box);
        const QImage frame = render();
        EXPECT_EQ(inkOf(frame), QRect(50, 10, 100, 80));
        EXPECT_EQ(alphaAt(frame, 52, 12), 0);
        EXPECT_EQ(alphaAt(frame, 100, 50), 255);
    }
    EXPECT_LT(alphaAt(render(), 65, 25), 127); // the diamond's edge runs straight
}

TEST_F(ShapeDrawingTest, ColourOpacityAndRunMultiply)
{
    ShapeLayer *shape = addShape(ShapeKind::rectangle, box, {1, 1, 1, 0.8});
    shape->setOpacity(0.5);
    setVisibility(shape, 0.5);

    EXPECT_NEAR(alphaAt(render(), 100, 50), 51, 1);
}

TEST_F(ShapeDrawingTest, ARadiusBeyondTheBoxRoundsAsFarAsItGoes)
{
    ShapeLayer *shape = addShape(ShapeKind::rectangle, box);
    for (const double radius : {-10.0, 1e300}) {
        shape->setCornerRadius(radius);
        EXPECT_EQ(alphaAt(render(), 100, 50), 255);
    }
}

// A box no raster can reach shows what of it lies on the canvas, and takes no longer for it.
TEST_F(ShapeDrawingTest, AShapeOfAnySizeAndPlaceEndsNoFrame)
{
    ShapeLayer *shape = addShape(ShapeKind::ellipse, box);
    for (const double huge : {1e6, 1e12, 1e300, std::numeric_limits<double>::infinity()}) {
        for (const ShapeKind kind : {ShapeKind::rectangle, ShapeKind::ellipse, ShapeKind::star,
                                     ShapeKind::triangle, ShapeKind::diamond}) {
            shape->setKind(kind);
            shape->setSize({huge, huge});
            shape->setPosition({-huge / 2, -huge / 2});
            EXPECT_EQ(render().size(), QSize(200, 100));
        }
    }
}

TEST_F(ShapeDrawingTest, APresetRevealSlidesAShape)
{
    ShapeLayer *shape = addShape(ShapeKind::rectangle, box);
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, shape->id());
    setVisibility(shape, 0.5);
    const QSizeF offset = document.effectiveTransitionOffset(shape->id(), false);
    ASSERT_NE(offset.height(), 0);

    const QRect ink = inkOf(render());

    EXPECT_NEAR(ink.top(), 10 + offset.height(), 1);
    EXPECT_NEAR(ink.left(), 50 + offset.width(), 1);
}

} // namespace
} // namespace tessara
