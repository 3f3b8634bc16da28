#include "Rendering/FrameFixture.h"

#include <QPainter>

namespace tessara {
namespace {

const PixelBytes red{255, 0, 0, 255};
const PixelBytes green{0, 255, 0, 255};
const PixelBytes blue{0, 0, 255, 255};
const PixelBytes white{255, 255, 255, 255};

// Red and green above, blue and white below.
QImage quarters(int width = 80, int height = 80)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    const int x = width / 2;
    const int y = height / 2;
    painter.fillRect(0, 0, x, y, Qt::red);
    painter.fillRect(x, 0, x, y, Qt::green);
    painter.fillRect(0, y, x, y, Qt::blue);
    painter.fillRect(x, y, x, y, Qt::white);
    return image;
}

QImage plain(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    return image;
}

class PictureDrawingTest : public FrameTest
{
};

TEST_F(PictureDrawingTest, APictureStandsUprightInItsFrame)
{
    addPicture(quarters(), {10, 10, 80, 80});

    const QImage frame = render();

    EXPECT_EQ(inkOf(frame), QRect(10, 10, 80, 80));
    EXPECT_EQ(bytesAt(frame, 20, 20), red);
    EXPECT_EQ(bytesAt(frame, 80, 20), green);
    EXPECT_EQ(bytesAt(frame, 20, 80), blue);
    EXPECT_EQ(bytesAt(frame, 80, 80), white);
}

TEST_F(PictureDrawingTest, WithoutACropThePictureFillsItsFrameAndLosesWhatIsBeyond)
{
    addPicture(quarters(), {0, 0, 200, 100});

    const QImage frame = render();

    EXPECT_EQ(inkOf(frame), QRect(0, 0, 200, 100));
    EXPECT_EQ(bytesAt(frame, 2, 2), red);
    EXPECT_EQ(bytesAt(frame, 197, 97), white);
    EXPECT_EQ(bytesAt(frame, 2, 46), red);
    EXPECT_EQ(bytesAt(frame, 2, 54), blue);
}

TEST_F(PictureDrawingTest, ACropRunsDownwardFromThePicturesTop)
{
    ImageLayerOptions options;
    options.cropRectNormalized = QRectF(0.5, 0, 0.5, 0.5);
    addPicture(quarters(), {10, 10, 40, 40}, options);
    EXPECT_EQ(bytesAt(render(), 30, 30), green);
    EXPECT_EQ(inkOf(render()), QRect(10, 10, 40, 40));

    document.removeSelectedLayers();
    options.cropRectNormalized = QRectF(0, 0.5, 0.5, 0.5);
    addPicture(quarters(), {10, 10, 40, 40}, options);

    EXPECT_EQ(bytesAt(render(), 30, 30), blue);
    EXPECT_EQ(inkOf(render()), QRect(10, 10, 40, 40));
}

TEST_F(PictureDrawingTest, ACropIsStretchedToTheFrame)
{
    ImageLayerOptions options;
    options.cropRectNormalized = QRectF(0.25, 0.25, 0.5, 0.5);
    addPicture(quarters(), {0, 0, 200, 100}, options);

    const QImage frame = render();

    EXPECT_EQ(bytesAt(frame, 90, 40), red);
    EXPECT_EQ(bytesAt(frame, 110, 40), green);
    EXPECT_EQ(bytesAt(frame, 90, 60), blue);
    EXPECT_EQ(bytesAt(frame, 110, 60), white);
}

TEST_F(PictureDrawingTest, ACropWithoutWidthIsASliver)
{
    ImageLayerOptions options;
    options.cropRectNormalized = QRectF(0.9, 0, 0, 1);
    ImageLayer *picture = addPicture(quarters(), {0, 0, 100, 100}, options);

    EXPECT_DOUBLE_EQ(picture->normalizedCropRect({100, 100}).width(), 0.04);
    EXPECT_EQ(bytesAt(render(), 50, 20), green);
    EXPECT_EQ(bytesAt(render(), 50, 80), white);
}

TEST_F(PictureDrawingTest, FittedInsideAPictureIsWholeAndCentred)
{
    ImageLayerOptions options;
    options.contentMode = ImageLayerContentMode::fitInside;
    addPicture(quarters(), {0, 0, 200, 100}, options);

    EXPECT_EQ(inkOf(render()), QRect(50, 0, 100, 100));
}

TEST_F(PictureDrawingTest, TheMasksPointDownwardAndNotUp)
{
    ImageLayerOptions options;
    options.maskShape = ImageLayerMaskShape::shield;
    addPicture(plain({100, 100}), {0, 0, 100, 100}, options);

    const QImage frame = render();

    EXPECT_EQ(bytesAt(frame, 30, 3), red); // the shoulders are broad
    EXPECT_EQ(alphaAt(frame, 30, 97), 0);  // and the foot is a point
    EXPECT_EQ(bytesAt(frame, 50, 97), red);
    EXPECT_EQ(alphaAt(frame, 5, 3), 0);
}

TEST_F(PictureDrawingTest, ACircleMaskIsSmoothAtItsEdge)
{
    ImageLayerOptions options;
    options.maskShape = ImageLayerMaskShape::circle;
    addPicture(plain({100, 100}), {0, 0, 100, 100}, options);

    const QImage frame = render();

    EXPECT_EQ(alphaAt(frame, 2, 2), 0);
    EXPECT_EQ(bytesAt(frame, 50, 1), red);
    int partial = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x)
            partial += alphaAt(frame, x, y) > 0 && alphaAt(frame, x, y) < 255;
    }
    EXPECT_GT(partial, 50);
}

TEST_F(PictureDrawingTest, HexagonAndRoundedRectangleCutTheirCorners)
{
    for (const ImageLayerMaskShape mask :
         {ImageLayerMaskShape::hexagon, ImageLayerMaskShape::roundedRectangle}) {
        ImageLayerOptions options;
        options.maskShape = mask;
        document.removeSelectedLayers();
        addPicture(plain({100, 100}), {0, 0, 100, 100}, options);
        const QImage frame = render();
        EXPECT_EQ(alphaAt(frame, 1, 1), 0);
        EXPECT_EQ(alphaAt(frame, 98, 98), 0);
        EXPECT_EQ(bytesAt(frame, 50, 1), red);
    }
}

TEST_F(PictureDrawingTest, ACustomPolygonMaskIsTheWholeRectangle)
{
    ImageLayerOptions options;
    options.maskShape = ImageLayerMaskShape::customPolygon;
    addPicture(plain({100, 100}), {0, 0, 100, 100}, options);

    EXPECT_EQ(bytesAt(render(), 0, 0), red);
    EXPECT_EQ(bytesAt(render(), 99, 99), red);
}

TEST_F(PictureDrawingTest, ThePaddingStopsAtAQuarterAndAtTheSmallestBox)
{
    ImageLayerOptions options;
    options.maskPadding = 1000;
    const ImageLayer *wide = addPicture(plain({10, 10}), {0, 0, 400, 200}, options);
    EXPECT_EQ(wide->contentRect({0, 0, 400, 200}), QRectF(48, 48, 304, 104));

    options.maskPadding = 8;
    const ImageLayer *small = addPicture(plain({10, 10}), {0, 0, 20, 20}, options);

    EXPECT_NEAR(small->contentRect({0, 0, 20, 20}).width(), 10.4, 1e-9);
    EXPECT_NEAR(small->contentRect({0, 0, 20, 20}).left(), 4.8, 1e-9);
    EXPECT_EQ(small->contentRect({0, 0, 9, 9}), QRectF(0, 0, 9, 9));
}

TEST_F(PictureDrawingTest, ThePaddingLeavesAMargin)
{
    ImageLayerOptions options;
    options.maskPadding = 10;
    addPicture(plain({100, 100}), {0, 0, 100, 100}, options);

    EXPECT_EQ(inkOf(render()), QRect(10, 10, 80, 80));
}

TEST_F(PictureDrawingTest, OwnOpacityAndRunMultiply)
{
    ImageLayer *picture = addPicture(plain({100, 100}), {0, 0, 100, 100});
    picture->setOpacity(0.5);
    setVisibility(picture, 0.5);
    EXPECT_NEAR(alphaAt(render(), 50, 50), 64, 1);

    picture->setOpacity(4); // not clamped before the run's share
    EXPECT_EQ(alphaAt(render(), 50, 50), 255);

    picture->setOpacity(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(isBlank(render()));
}

TEST_F(PictureDrawingTest, ALayerWithoutAPictureIsAbsentAndTheFrameGoesOn)
{
    addShape(ShapeKind::rectangle, {0, 0, 50, 50});
    const QImage before = render();
    addPicture({}, {0, 0, 100, 100});

    EXPECT_EQ(render(), before);
}

TEST_F(PictureDrawingTest, PicturesOfAnySizeAndPlaceEndNoFrame)
{
    ImageLayer *picture = addPicture(quarters(), {0, 0, 100, 100});
    for (const ImageLayerMaskShape mask :
         {ImageLayerMaskShape::rectangle, ImageLayerMaskShape::circle}) {
        picture->setMaskShape(mask);
        for (const double huge : {1e6, 1e12, 1e300, std::numeric_limits<double>::infinity()}) {
            picture->setSize({huge, huge});
            picture->setPosition({-huge / 2, -huge / 2});
            EXPECT_EQ(render().size(), QSize(200, 100));
        }
    }
}

TEST_F(PictureDrawingTest, APresetRevealSlidesAPicture)
{
    ImageLayer *picture = addPicture(plain({40, 40}), {50, 20, 40, 40});
    document.setRunTransitionStyle(LayerRunTransitionStyle::presetReveal, picture->id());
    setVisibility(picture, 0.5);
    const QSizeF offset = document.effectiveTransitionOffset(picture->id(), false);

    EXPECT_NEAR(inkOf(render()).top(), 20 + offset.height(), 1);
}

TEST_F(PictureDrawingTest, AHalfTransparentPictureStaysPremultiplied)
{
    QImage image(100, 100, QImage::Format_ARGB32);
    image.fill(QColor(200, 100, 50, 128));
    addPicture(image, {0, 0, 100, 100});

    const PixelBytes pixel = bytesAt(render(), 50, 50);

    EXPECT_NEAR(pixel[0], 100, 1);
    EXPECT_NEAR(pixel[1], 50, 1);
    EXPECT_NEAR(pixel[2], 25, 1);
    EXPECT_EQ(pixel[3], 128);
}

} // namespace
} // namespace tessara
