// Rows between two pixels, against a mix of each pixel with its neighbour.
#include "Rendering/FramePath/SlidingRow.h"

#include "Rendering/FramePath/Dice.h"
#include "Rendering/FramePath/SpriteFixture.h"

#include <algorithm>

namespace tessara {
namespace {

constexpr QRect area(0, 0, 300, 120);

int mixed(int here, int before, int weight)
{
    return (here * (256 - weight) + before * weight + 128) >> 8;
}

QRgb mixed(QRgb here, QRgb before, int weight)
{
    return qRgba(
        mixed(qRed(here), qRed(before), weight), mixed(qGreen(here), qGreen(before), weight),
        mixed(qBlue(here), qBlue(before), weight), mixed(qAlpha(here), qAlpha(before), weight));
}

class SlidingRowTest : public testing::Test
{
protected:
    void prepare(const Primitive &primitive)
    {
        sprite = Sprite::make(primitive, QTransform(), area);
        pixels = unpacked(*sprite, sprite->bounds());
        sliding.reserve(*sprite);
    }

    QRgb at(int x, int y) const
    {
        // A picture's own words: they need not be those of a colour.
        return pixels.rect().contains(x, y)
                   ? reinterpret_cast<const QRgb *>(pixels.constScanLine(y))[x]
                   : 0;
    }

    void expectTheMix(int row, int slideX, int slideY, int from, int to)
    {
        const int weight = slideX + slideY;
        std::vector<QRgb> found(std::size_t(pixels.width()) + 3 * cellWidth);
        int end = 0;
        for (const SpriteRun &run : sliding.runs(*sprite, row, slideX, slideY, from, to)) {
            ASSERT_EQ(run.x % cellWidth, 0);
            ASSERT_EQ(run.pixels % cellWidth, 0);
            ASSERT_GE(run.x, end);
            ASSERT_FALSE(run.isRim);
            end = run.x + run.pixels;
            ASSERT_LE(std::size_t(end), found.size());
            for (int index = 0; index < run.pixels; ++index) {
                QRgb pixel = 0xffffffff;
                if (sprite->kind() == Sprite::Kind::picture)
                    std::memcpy(&pixel, run.data + 4 * index, sizeof pixel);
                else if (run.data)
                    pixel = run.data[index] * 0x01010101u;
                ASSERT_TRUE(!run.isFull || qAlpha(pixel) == 255) << run.x + index;
                found[std::size_t(run.x + index)] = pixel;
            }
        }
        for (int x = std::max(0, from); x <= std::min(to - 1, pixels.width()); ++x) {
            const QRgb before = slideX != 0 ? at(x - 1, row) : at(x, row - 1);
            ASSERT_EQ(found[std::size_t(x)], mixed(at(x, row), before, weight))
                << x << " of row " << row;
        }
    }

    void expectTheMixEverywhere(Dice &dice)
    {
        for (int row = 0; row <= pixels.height(); ++row) {
            const int weight = 1 + dice.below(255);
            expectTheMix(row, weight, 0, 0, pixels.width() + 1);
            expectTheMix(row, 0, weight, 0, pixels.width() + 1);
            const int from = dice.below(pixels.width()) - 20;
            const int to = from + 1 + dice.below(pixels.width());
            expectTheMix(row, weight, 0, from, to);
            expectTheMix(row, 0, weight, from, to);
        }
    }

    std::shared_ptr<const Sprite> sprite;
    QImage pixels;
    SlidingRow sliding;
};

TEST_F(SlidingRowTest, MixesMasks)
{
    Dice dice(1);
    for (int index = 0; index < 30; ++index) {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        for (int part = 0; part < 4; ++part) {
            const QRectF box(dice.between(-20, 250), dice.between(-20, 100), dice.between(1, 200),
                             dice.between(1, 80));
            if (dice.chance(0.5))
                path.addRect(dice.chance(0.5) ? box.toAlignedRect() : box);
            else
                path.addEllipse(box);
        }
        prepare(fillOf(path));
        if (!sprite->bounds().isEmpty())
            expectTheMixEverywhere(dice);
    }
}

TEST_F(SlidingRowTest, MixesPicturesWithTheirEdges)
{
    Dice dice(2);
    for (int index = 0; index < 30; ++index) {
        const QSize size(20 + dice.below(200), 10 + dice.below(80));
        QImage image = gradient(size, dice.chance(0.5) ? 255 : 130);
        for (int x = size.width() / 3; x < size.width() / 2; ++x) {
            for (int y = 0; y < size.height() / 2; ++y)
                image.setPixel(x, y, 0); // a hole
        }
        Primitive primitive = pictureOf(
            image, {dice.between(0, 60), dice.between(0, 30), dice.between(5, 260), 70.5});
        if (dice.chance(0.6))
            std::get<PlacedPicture>(primitive.what).mask =
                ellipse({dice.between(0, 60), dice.between(0, 30), 150, 60});
        prepare(primitive);
        if (!sprite->bounds().isEmpty())
            expectTheMixEverywhere(dice);
    }
}

// It is what makes a large plate that slides as cheap as one that fades.
TEST_F(SlidingRowTest, LeavesWhatIsCoveredWhollyAsItIs)
{
    prepare(fillOf(rectangle({0, 0, 240, 50})));

    for (const auto &[slideX, slideY] : {std::pair(77, 0), std::pair(0, 77)}) {
        const std::span<const SpriteRun> runs = sliding.runs(*sprite, 20, slideX, slideY, 0, 300);
        const auto full =
            std::find_if(runs.begin(), runs.end(), [](const SpriteRun &run) { return run.isFull; });
        ASSERT_NE(full, runs.end());
        EXPECT_EQ(full->data, nullptr);
        EXPECT_GE(full->pixels, 232);
    }
}

} // namespace
} // namespace tessara
