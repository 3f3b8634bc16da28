// Pictures with soft edges, blended from what is kept of them, against a painter.
#include "Rendering/FramePath/RowComposer.h"
#include "Rendering/FramePath/SpriteFixture.h"

#include "Rendering/FramePath/Dice.h"

#include <algorithm>

namespace tessara {
namespace {

constexpr QRect frame(0, 0, 240, 200);
constexpr QRgb backdrop = 0xff1efa05;

// Neighbours that differ as much as they can show each step of a sampler.
QImage noise(Dice &dice, QSize size, bool isOpaque)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y,
                           qPremultiply(qRgba(dice.below(256), dice.below(256), dice.below(256),
                                              isOpaque ? 255 : dice.below(256))));
    }
    return image;
}

QImage paintedAt(const Primitive &primitive, double opacity)
{
    QImage image(frame.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(backdrop);
    QPainter painter(&image);
    drawPrimitive(painter, primitive, opacity);
    return image;
}

QImage composedAt(const Primitive &primitive, double opacity)
{
    const auto sprite = Sprite::make(primitive, QTransform(), frame);
    const DrawItem item{
        sprite, sprite->bounds(), 0, 0, 0, blendedOpacity(primitive.fading, opacity)};
    const DrawItem *const items[] = {&item};
    RowComposer composer(frame.width());
    QImage image(frame.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < frame.height(); ++y) {
        composer.compose(items, y, 0, frame.width(), backdrop);
        std::copy_n(composer.row(), frame.width(), reinterpret_cast<quint32 *>(image.scanLine(y)));
    }
    return image;
}

QPainterPath roundedRectangle(const QRectF &box)
{
    QPainterPath path;
    path.addRoundedRect(box, 8, 8);
    return path;
}

/// Larger than the frame now and then, stretched, shrunk, or as large as it is.
Primitive anyPicture(Dice &dice)
{
    const QImage image = noise(dice, {1 + dice.below(120), 1 + dice.below(120)}, dice.chance(0.5));
    const QSizeF size = dice.chance(0.2) ? QSizeF(image.size())
                                         : QSizeF(dice.between(3, 300), dice.between(3, 260));
    const QRectF box(QPointF(dice.between(-40, 100), dice.between(-40, 100)), size);
    return pictureOf(image, box, {dice.between(0, 10), dice.between(0, 10)});
}

QRectF maskBox(Dice &dice, const QRectF &box)
{
    return box.adjusted(dice.between(-3, 5), dice.between(-3, 5), dice.between(-5, 3),
                        dice.between(-5, 3));
}

void expectThePaintersBytes(const Primitive &primitive, Dice &dice)
{
    for (const double opacity : {1.0, dice.between(0, 1), dice.between(0, 0.1)})
        ASSERT_EQ(composedAt(primitive, opacity), paintedAt(primitive, opacity)) << opacity;
}

TEST(PictureRaster, FadesTheEdgesOfABoxAsAPainterDoes)
{
    Dice dice(1);
    for (int index = 0; index < 100; ++index) {
        SCOPED_TRACE(index);
        expectThePaintersBytes(anyPicture(dice), dice);
    }
}

TEST(PictureRaster, FadesTheEdgesOfAMaskAsAPainterDoes)
{
    Dice dice(2);
    for (int index = 0; index < 100; ++index) {
        SCOPED_TRACE(index);
        Primitive primitive = anyPicture(dice);
        auto &picture = std::get<PlacedPicture>(primitive.what);
        const QRectF box = maskBox(dice, picture.box);
        picture.mask = dice.chance(0.5) ? ellipse(box) : roundedRectangle(box);
        expectThePaintersBytes(primitive, dice);
    }
}

TEST(PictureRaster, BeginsWhereItsClipDoes)
{
    Dice dice(3);
    for (int index = 0; index < 100; ++index) {
        SCOPED_TRACE(index);
        Primitive primitive = anyPicture(dice);
        primitive.clip = QRectF(dice.between(-20, 80), dice.between(-20, 80), 90, 80);
        expectThePaintersBytes(primitive, dice);
    }
}

// Fewer than eight pixels of coverage beside the picture, and much that is covered wholly.
TEST(PictureRaster, KeepsCoverageOnlyBesideAnEdge)
{
    const auto sprite =
        Sprite::make(pictureOf(gradient({150, 100}), {10.5, 10.5, 200, 150}), QTransform(), frame);

    const std::span<const SpriteRun> middle = sprite->row(80);
    ASSERT_EQ(middle.size(), 3u);
    EXPECT_TRUE(middle[0].isRim);
    EXPECT_TRUE(middle[1].isFull);
    EXPECT_FALSE(middle[1].isRim);
    EXPECT_TRUE(middle[2].isRim);
    EXPECT_EQ(middle[0].coverage()[1], 127);
    EXPECT_EQ(middle[0].coverage()[2], 255);
}

} // namespace
} // namespace tessara
