#include <QPainter>

#include "Rendering/ApplicationFonts.h"
#include "Rendering/CoverageMask.h"
#include "Rendering/TextBlock.h"

#include <gtest/gtest.h>

#include <thread>

namespace tessara {
namespace {

constexpr QRect canvas{0, 0, 900, 500};

// What a painter makes of the whole path at once.
QImage painted(const QPainterPath &path, const QTransform &toPixels)
{
    QImage picture(canvas.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toPixels);
    painter.fillPath(path, Qt::white);
    return picture;
}

int differingPixels(const CoverageMask &mask, const QImage &picture, const QRect &clip)
{
    int differing = 0;
    for (int y = clip.top(); y <= clip.bottom(); ++y) {
        for (int x = clip.left(); x <= clip.right(); ++x) {
            const int covered =
                mask.bounds.contains(x, y) ? mask.row(y)[x - mask.bounds.left()] : 0;
            differing += covered != qAlpha(picture.pixel(x, y));
        }
    }
    return differing;
}

int differingPixels(const QPainterPath &path, const QTransform &toPixels)
{
    return differingPixels(rasterizedPath(path, toPixels, canvas), painted(path, toPixels), canvas);
}

bool hasInk(const CoverageMask &mask, const QRect &line)
{
    for (int y = line.top(); y <= line.bottom(); ++y) {
        for (int x = line.left(); x <= line.right(); ++x) {
            if (mask.row(y)[x - mask.bounds.left()] != 0)
                return true;
        }
    }
    return false;
}

QTransform placed(double left, double top, double scale = 1)
{
    return QTransform::fromTranslate(left, top).scale(scale, scale);
}

class CoverageMaskTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { loadApplicationFonts(); }

    const TextBlock title{QStringLiteral("Severe weather: AVATAR fjord\nปี้กู้ ที่นี่ น้ำ\nالسلام عليكم "
                                         "ورحمة الله\n漢字かな交じり文"),
                          systemFont(60, QFont::DemiBold)};
};

TEST_F(CoverageMaskTest, TheCoverageOfATextIsThatOfAPainter)
{
    for (const double scale : {1.0, 0.73, 1.5}) {
        const QTransform toPixels = placed(20.3, 31.7, scale);

        EXPECT_EQ(differingPixels(title.fill().path, toPixels), 0);
        EXPECT_EQ(differingPixels(title.stroke(3).path, toPixels), 0);
        EXPECT_EQ(differingPixels(title.stroke(16).path, toPixels), 0);
    }
}

TEST_F(CoverageMaskTest, SoIsThatOfAShape)
{
    QPainterPath rectangle;
    rectangle.addRect(20.3, 30.6, 300.2, 200.1);
    QPainterPath ring;
    ring.addEllipse(20.3, 30.6, 700, 400);
    ring.addEllipse(120.3, 130.6, 300, 200);
    QPainterPath wound = ring;
    wound.setFillRule(Qt::WindingFill);
    QPainterPath unclosed({10, 10});
    unclosed.lineTo(400.5, 30);
    unclosed.lineTo(200, 333.3);

    for (const QPainterPath &path : {rectangle, ring, wound, unclosed}) {
        EXPECT_EQ(differingPixels(path, QTransform()), 0);
        EXPECT_EQ(differingPixels(path, placed(-130.2, 200.9)), 0);
        EXPECT_EQ(differingPixels(path, QTransform().rotate(17).translate(60, -40)), 0);
    }
}

// Overlapping in and out of step, and from one tile into all others.
TEST_F(CoverageMaskTest, ManyShapesAcrossEachOtherCountAsOne)
{
    for (const Qt::FillRule rule : {Qt::WindingFill, Qt::OddEvenFill}) {
        QPainterPath path;
        path.setFillRule(rule);
        for (int index = 0; index < 120; ++index) {
            const QPointF corner(index * 37 % 611 + 0.37 * index, index * 53 % 307 + 0.21 * index);
            path.addEllipse(QRectF(corner, QSizeF(20 + index * 3, 15 + index * 2)));
        }

        EXPECT_EQ(differingPixels(path, placed(-30.5, -20.25)), 0);
    }
}

TEST_F(CoverageMaskTest, AClipCutsAndChangesNothingElse)
{
    const QTransform toPixels = placed(20.3, 31.7);
    const QImage whole = painted(title.stroke(8).path, toPixels);

    for (const QRect clip : {QRect(101, 77, 313, 94), QRect(0, 0, 30, 500), QRect(450, 60, 1, 1)}) {
        const CoverageMask mask = rasterizedPath(title.stroke(8).path, toPixels, clip);

        EXPECT_TRUE(mask.bounds.isEmpty() || clip.contains(mask.bounds));
        EXPECT_EQ(differingPixels(mask, whole, clip), 0);
    }
}

TEST_F(CoverageMaskTest, PartsBesideTheClipAreLeftOutUnseen)
{
    const Outline outline = title.stroke(8);
    for (const QTransform &toPixels :
         {placed(20.3, 31.7), QTransform(1.5, 0, 0, -0.75, 11.2, 330.9)}) {
        for (int top = -40; top < 500; top += 7) {
            const QRect clip(0, top, 900, 11);

            const CoverageMask all = rasterizedPath(outline.path, toPixels, clip);
            const CoverageMask few = rasterizedPath(outline.path, toPixels, clip, outline.parts);

            ASSERT_EQ(few.bounds, all.bounds) << top;
            ASSERT_EQ(few.alpha, all.alpha) << top;
        }
    }
}

// A painter rounds halves of a 64th away from its zero, and a path that begins beside the clip has
// its zero where the frame has it.
TEST_F(CoverageMaskTest, WhatBeginsBesideTheClipIsRoundedAsInTheFrame)
{
    const QTransform halves = placed(20.0078125, 31.0234375); // 1/128 and 3/128
    QPainterPath slanted;
    slanted.addPolygon(QPolygonF({{-15, 3}, {60, 0}, {41, 77}, {-22, 50}, {-15, 3}}));
    QPainterPath round;
    round.addEllipse(QRectF(-40, -40, 100, 100));

    for (const QPainterPath &path : {slanted, round}) {
        const QImage whole = painted(path, halves);
        for (const QRect clip : {QRect(25, 40, 40, 40), QRect(0, 0, 900, 500), QRect(20, 0, 9, 99)})
            EXPECT_EQ(differingPixels(rasterizedPath(path, halves, clip), whole, clip), 0)
                << clip.x() << ' ' << clip.y();
    }
}

TEST_F(CoverageMaskTest, TheBoundsHoldNoBlankEdge)
{
    const CoverageMask mask = rasterizedPath(title.fill().path, placed(20.3, 31.7), canvas);
    const QRect box = mask.bounds;

    ASSERT_FALSE(box.isEmpty());
    EXPECT_EQ(mask.alpha.size(), size_t(box.width()) * size_t(box.height()));
    EXPECT_TRUE(hasInk(mask, {box.left(), box.top(), box.width(), 1}));
    EXPECT_TRUE(hasInk(mask, {box.left(), box.bottom(), box.width(), 1}));
    EXPECT_TRUE(hasInk(mask, {box.left(), box.top(), 1, box.height()}));
    EXPECT_TRUE(hasInk(mask, {box.right(), box.top(), 1, box.height()}));
}

TEST_F(CoverageMaskTest, WhatCoversNothingHasNoBounds)
{
    const auto isEmpty = [](const CoverageMask &mask) {
        return mask.bounds.isEmpty() && mask.alpha.empty();
    };
    QPainterPath line({10, 10});
    line.lineTo(50, 60);

    EXPECT_TRUE(isEmpty(rasterizedPath({}, {}, canvas)));
    EXPECT_TRUE(isEmpty(rasterizedPath(line, {}, canvas)));
    EXPECT_TRUE(isEmpty(rasterizedPath(title.fill().path, placed(5000, 0), canvas)));
    EXPECT_TRUE(isEmpty(rasterizedPath(title.fill().path, {}, {})));
    EXPECT_TRUE(isEmpty(rasterizedPath(title.fill().path, placed(1e12, 1e300), canvas)));
}

TEST_F(CoverageMaskTest, SeveralThreadsMayDrawOnePath)
{
    const QPainterPath path = title.stroke(8).path;
    const CoverageMask alone = rasterizedPath(path, placed(20.3, 31.7), canvas);
    std::vector<CoverageMask> masks(4);

    std::vector<std::jthread> threads;
    for (CoverageMask &mask : masks)
        threads.emplace_back([&] { mask = rasterizedPath(path, placed(20.3, 31.7), canvas); });
    threads.clear();

    for (const CoverageMask &mask : masks) {
        EXPECT_EQ(mask.bounds, alone.bounds);
        EXPECT_EQ(mask.alpha, alone.alpha);
    }
}

} // namespace
} // namespace tessara
