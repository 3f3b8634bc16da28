#include "Rendering/GlyphShapes.h"

#include "Rendering/ApplicationFonts.h"
#include "Rendering/CoverageMask.h"
#include "Rendering/TextBlock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {
namespace {

const QStringList scripts{"Hamburgefonstiv AVATAR", "ปี้กู้ ที่นี่ น้ำ", "السلام عليكم", "漢字かな",
                          "😀🏆 won"};

QRawFont rawFont(double size)
{
    return QRawFont::fromFont(systemFont(size, QFont::DemiBold).face);
}

CoverageMask maskOf(const QPainterPath &path)
{
    return rasterizedPath(path, QTransform::fromTranslate(40.3, 40.7), {0, 0, 1500, 200});
}

double lengthOf(QPointF vector)
{
    return std::hypot(vector.x(), vector.y());
}

double distance(QPointF point, const QPainterPath &polygons)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (int index = 1; index < polygons.elementCount(); ++index) {
        if (polygons.elementAt(index).isMoveTo())
            continue;
        const QPointF from = polygons.elementAt(index - 1);
        const QPointF along = QPointF(polygons.elementAt(index)) - from;
        const double square = QPointF::dotProduct(along, along);
        const double share =
            square > 0 ? std::clamp(QPointF::dotProduct(point - from, along) / square, 0.0, 1.0)
                       : 0;
        nearest = std::min(nearest, lengthOf(point - from - share * along));
    }
    return nearest;
}

QList<QPolygonF> finely(const QPainterPath &path)
{
    constexpr double times = 100;
    QList<QPolygonF> polygons = path.toSubpathPolygons(QTransform::fromScale(times, times));
    for (QPolygonF &polygon : polygons)
        polygon = QTransform::fromScale(1 / times, 1 / times).map(polygon);
    return polygons;
}

class GlyphShapesTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { loadApplicationFonts(); }

    TextBlock blockOf(const QString &text, std::shared_ptr<GlyphShapes> shapes) const
    {
        return TextBlock(text, systemFont(80, QFont::DemiBold),
                         TextLayerHorizontalAlignment::leading, {}, std::move(shapes));
    }
};

TEST_F(GlyphShapesTest, ATextLooksTheSameFromTheFirstTimeOn)
{
    for (const QString &text : scripts) {
        const auto kept = std::make_shared<GlyphShapes>();
        const TextBlock first = blockOf(text, kept);
        const TextBlock second = blockOf(text, kept);
        const TextBlock elsewhere = blockOf(text, std::make_shared<GlyphShapes>());
        EXPECT_EQ(second.fill().path, first.fill().path);
        EXPECT_EQ(elsewhere.fill().path, first.fill().path);

        for (const double width : {0.5, 16.0, 4.0, 16.0}) {
            const QPainterPath stroke = first.stroke(width).path;
            EXPECT_EQ(second.stroke(width).path, stroke);
            EXPECT_EQ(elsewhere.stroke(width).path, stroke);
            EXPECT_EQ(maskOf(elsewhere.stroke(width).path).alpha, maskOf(stroke).alpha);
            EXPECT_FALSE(maskOf(stroke).alpha.empty());
        }
    }
}

TEST_F(GlyphShapesTest, PicturesAreThereForColourGlyphsAlone)
{
    const auto kept = std::make_shared<GlyphShapes>();
    const TextBlock mixed = blockOf("😀 and 😀", kept);
    const TextBlock letters = blockOf("and", kept);

    EXPECT_EQ(mixed.pictures().size(), 2);
    EXPECT_EQ(mixed.pictures()[0].image, mixed.pictures()[1].image);
    EXPECT_LT(mixed.pictures()[0].box.left(), mixed.pictures()[1].box.left());
    EXPECT_TRUE(letters.pictures().empty());
    EXPECT_EQ(maskOf(mixed.fill().path).bounds.size(), maskOf(letters.fill().path).bounds.size());
    EXPECT_EQ(blockOf("😀", kept).pictures().size(), 1);
}

// The line's middle is the edge: half of it stands outside.
TEST_F(GlyphShapesTest, AStrokeReachesHalfItsWidthBeyondTheOutline)
{
    GlyphShapes shapes;
    for (const double size : {8.0, 40.0, 400.0}) {
        const QRawFont font = rawFont(size);
        const quint32 glyph = font.glyphIndexesForString("O").value(0);
        const QRectF outline = shapes.outline(font, glyph).path.boundingRect();
        for (const double width : {size * 0.01, size * 0.16}) {
            const QRectF stroke = shapes.stroke(font, glyph, width).path.boundingRect();

            EXPECT_NEAR(outline.left() - stroke.left(), width / 2, 0.07);
            EXPECT_NEAR(stroke.right() - outline.right(), width / 2, 0.07);
            EXPECT_NEAR(outline.top() - stroke.top(), width / 2, 0.07);
            EXPECT_NEAR(stroke.bottom() - outline.bottom(), width / 2, 0.07);
        }
    }
}

TEST_F(GlyphShapesTest, PolygonsStandForCurvesWithinAThirtySecondOfAPixel)
{
    GlyphShapes shapes;
    for (const double size : {8.0, 80.0, 800.0}) {
        const QRawFont font = rawFont(size);
        const quint32 glyph = font.glyphIndexesForString("O").value(0);
        const QPainterPath polygons = shapes.outline(font, glyph).path;
        for (int index = 0; index < polygons.elementCount(); ++index)
            EXPECT_FALSE(polygons.elementAt(index).isCurveTo());

        double farthest = 0;
        for (const QPolygonF &fine : finely(font.pathForGlyph(glyph))) {
            for (const QPointF point : fine)
                farthest = std::max(farthest, distance(point, polygons));
        }
        EXPECT_GT(farthest, 0);
        EXPECT_LE(farthest, 1.0 / 32 + 1e-3);
    }
}

TEST_F(GlyphShapesTest, ManyFontsAndWidthsStayWithinTheCapacity)
{
    constexpr qsizetype capacity = 5000; // path elements
    GlyphShapes shapes(capacity, 300'000);
    const QRawFont font = rawFont(40);
    const quint32 glyph = font.glyphIndexesForString("g").value(0);
    const QPainterPath outline = shapes.outline(font, glyph).path;
    const QPainterPath stroke = shapes.stroke(font, glyph, 3).path;

    for (int size = 10; size < 60; ++size) {
        for (const double width : {0.0, 1.0, 2.0})
            (void)shapes.stroke(rawFont(size), glyph, width);
        (void)shapes.picture(rawFont(size), glyph);
        EXPECT_LE(shapes.elementCount(), capacity);
        EXPECT_GT(shapes.elementCount(), 0);
    }

    EXPECT_EQ(shapes.outline(font, glyph).path, outline);
    EXPECT_EQ(shapes.stroke(font, glyph, 3).path, stroke);
}

TEST_F(GlyphShapesTest, PicturesOfManySizesStayWithinTheCapacity)
{
    constexpr qsizetype capacity = 300'000; // bytes
    const auto shapes = std::make_shared<GlyphShapes>(1000, capacity);

    for (int size = 20; size < 120; size += 10) {
        const TextBlock emoji("😀🏆", systemFont(size, QFont::DemiBold),
                              TextLayerHorizontalAlignment::leading, {}, shapes);
        EXPECT_EQ(emoji.pictures().size(), 2);
        EXPECT_LE(shapes->pictureBytes(), capacity);
    }
}

TEST_F(GlyphShapesTest, AWrappedTextKnowsHowHighItStandsUnwrapped)
{
    const SizedFont font = systemFont(33.3, QFont::DemiBold);
    const QStringList texts = scripts
                              + QStringList{"",
                                            "\n\n",
                                            "one two three four five six seven",
                                            "wide    spaces   at    the ends   ",
                                            "ab 😀 cd ปี้ ef سلام gh 漢字 ij",
                                            "supercalifragilistic😀expialidocious",
                                            "a\r\n😀 b c d\nก ข ค",
                                            " 😀",
                                            "x\t\ty"};
    for (const QString &text : texts) {
        const double height = TextBlock(text, font).size().height();
        for (const double width : {1.0, 30.0, 70.0, 150.0, 400.0, 5000.0}) {
            const TextBlock wrapped(text, font, TextLayerHorizontalAlignment::leading, width);

            EXPECT_DOUBLE_EQ(wrapped.unwrappedHeight(), height) << text.toStdString() << width;
        }
    }
}

} // namespace
} // namespace tessara
