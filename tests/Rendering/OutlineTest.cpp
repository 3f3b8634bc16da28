#include "Rendering/Outline.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

OutlineShape triangle(double width, double height)
{
    QPainterPath path;
    path.addPolygon(QPolygonF({{0, 0}, {width, 0}, {3, height}, {0, 0}}));
    return OutlineShape::of(path);
}

TEST(Outline, IsTheShapesOneAfterAnother)
{
    const OutlineShape small = triangle(10, 5);
    const OutlineShape large = triangle(-40, 70);
    const PlacedShape shapes[] = {{small, {1, 2}}, {large, {100, -50}}, {small, {0.25, 30}}};

    const Outline outline = outlineOf(shapes);

    QPainterPath expected;
    expected.setFillRule(Qt::WindingFill);
    for (const PlacedShape &placed : shapes)
        expected.addPath(placed.shape.path.translated(placed.position));
    EXPECT_EQ(outline.path, expected);
    EXPECT_EQ(outline.path.fillRule(), Qt::WindingFill);
}

TEST(Outline, EachPartTellsWhereItIs)
{
    const OutlineShape small = triangle(10, 5);
    const OutlineShape large = triangle(40, 70);
    const PlacedShape shapes[] = {{small, {1, 2}}, {large, {100, -50}}};

    const std::vector<OutlinePart> parts = *outlineOf(shapes).parts;

    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].end, 4);
    EXPECT_EQ(parts[1].end, 8);
    EXPECT_EQ(parts[0].box, QRectF(1, 2, 10, 5));
    EXPECT_EQ(parts[1].box, QRectF(100, -50, 40, 70));
}

TEST(Outline, ABlankIsNoPart)
{
    const PlacedShape shapes[] = {
        {OutlineShape::of({}), {500, 500}}, {triangle(10, 5), {1, 2}}, {OutlineShape::of({}), {}}};

    const Outline outline = outlineOf(shapes);

    EXPECT_EQ(outline.parts->size(), 1U);
    EXPECT_EQ(boxOf(outline.path, outline.parts), QRectF(1, 2, 10, 5));
}

TEST(Outline, PartsAreTheSameByShapeAndPlace)
{
    const OutlineShape shape = triangle(10, 5);
    const OutlineShape twin = triangle(10, 5);
    const auto part = [](const OutlineShape &of, QPointF position) {
        const PlacedShape placed[] = {{of, position}};
        return outlineOf(placed).parts->front();
    };

    EXPECT_TRUE(part(shape, {1, 2}).isSameAs(part(shape, {1, 2})));
    EXPECT_FALSE(part(shape, {1, 2}).isSameAs(part(twin, {1, 2})));
    // Closer than what the platform takes for equal.
    EXPECT_FALSE(part(shape, {1, 2}).isSameAs(part(shape, {1 + 1e-14, 2})));
}

TEST(Outline, TheBoxOfItsPartsIsThatOfItsPath)
{
    const PlacedShape shapes[] = {
        {triangle(10, 5), {1, 2}}, {triangle(-40, 70), {100, -50}}, {triangle(3, -9), {7, 7}}};
    const Outline outline = outlineOf(shapes);

    EXPECT_EQ(boxOf(outline.path, outline.parts), outline.path.controlPointRect());
    EXPECT_EQ(boxOf(outline.path, {}), outline.path.controlPointRect());
    EXPECT_EQ(boxOf({}, outlineOf({}).parts), QRectF());
}

} // namespace
} // namespace tessara
