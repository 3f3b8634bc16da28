#include "Models/Presets/PresetFixture.h"

#include "Base/Observable.h"
#include "Models/Presets/PresetGeometry.h"

namespace tessara {
namespace {

QJsonValue json(const QByteArray &text)
{
    return QJsonDocument::fromJson("[" + text + "]").array().at(0);
}

testing::AssertionResult isPoint(const QByteArray &text, QPointF wanted)
{
    const auto point = pointFromJson(json(text));
    return point && isSame(*point, wanted) ? testing::AssertionSuccess()
                                           : testing::AssertionFailure() << text.constData();
}

testing::AssertionResult isSize(const QByteArray &text, QSizeF wanted)
{
    const auto size = sizeFromJson(json(text));
    return size && isSame(*size, wanted) ? testing::AssertionSuccess()
                                         : testing::AssertionFailure() << text.constData();
}

testing::AssertionResult isRect(const QByteArray &text, QRectF wanted)
{
    const auto rect = rectFromJson(json(text));
    return rect && isSame(*rect, wanted) ? testing::AssertionSuccess()
                                         : testing::AssertionFailure() << text.constData();
}

TEST(PresetGeometryTest, ArraysAndObjectsGiveTheSame)
{
    EXPECT_TRUE(isPoint("[10, 20]", {10, 20}));
    EXPECT_TRUE(isPoint(R"({"x": 10, "y": 20})", {10, 20}));
    EXPECT_TRUE(isSize("[10.5, -20]", {10.5, -20}));
    EXPECT_TRUE(isSize(R"({"width": 10.5, "height": -20, "depth": "none"})", {10.5, -20}));
    EXPECT_TRUE(isRect("[[1, 2], [3, 4]]", {1, 2, 3, 4}));
    EXPECT_TRUE(isRect(R"({"x": 1, "y": 2, "width": 3, "height": 4})", {1, 2, 3, 4}));
    EXPECT_TRUE(
        isRect(R"({"origin": {"x": 1, "y": 2}, "size": {"width": 3, "height": 4}})", {1, 2, 3, 4}));
}

TEST(PresetGeometryTest, ObjectsAreWrittenAsArrays)
{
    const QJsonObject object{{"x", 10}, {"y", 20}};

    const auto preset = presetFromJson(changed("rects", "position", object));

    ASSERT_TRUE(preset);
    EXPECT_EQ(jsonOf(*preset)["rects"][0]["position"], (QJsonArray{10, 20}));
}

TEST(PresetGeometryTest, APointAndASizeNeedBothNumbers)
{
    for (const char *text : {"[10]", "[]", "{}", "[1, null]", R"(["1", "2"])", R"({"x": 1})",
                             R"({"x": 1, "y": null})", R"({"x": 1, "y": "2"})", "7", "null", "true",
                             R"("[1, 2]")", R"({"width": 10})", "[[1, 2]]"}) {
        EXPECT_FALSE(pointFromJson(json(text))) << text;
        EXPECT_FALSE(sizeFromJson(json(text))) << text;
    }
    EXPECT_FALSE(pointFromJson(json(R"({"width": 1, "height": 2})")));
    EXPECT_FALSE(sizeFromJson(json(R"({"x": 1, "y": 2})")));
}

TEST(PresetGeometryTest, MoreThanTwoElementsArePassedOver)
{
    EXPECT_TRUE(isPoint("[1, 2, 3]", {1, 2}));
    EXPECT_TRUE(isSize(R"([1, 2, "x"])", {1, 2}));
    EXPECT_TRUE(isRect("[[1, 2, 9], [3, 4], 5]", {1, 2, 3, 4}));
}

TEST(PresetGeometryTest, ARectanglesMissingMembersAreZero)
{
    EXPECT_TRUE(isRect(R"({"x": 0.1})", {0.1, 0, 0, 0}));
    EXPECT_TRUE(isRect(R"({"width": 0.5})", {0, 0, 0.5, 0}));
    EXPECT_TRUE(isRect("{}", {0, 0, 0, 0}));
    EXPECT_TRUE(isRect(R"({"x": null, "y": 2})", {0, 2, 0, 0}));
}

TEST(PresetGeometryTest, OriginAndSizeCountOnlyTogether)
{
    EXPECT_TRUE(isRect(R"({"origin": {"x": 1, "y": 2}})", {0, 0, 0, 0}));
    EXPECT_TRUE(isRect(R"({"origin": {"x": 1, "y": 2}, "x": 7})", {7, 0, 0, 0}));
    EXPECT_TRUE(isRect(R"({"size": {"width": 1, "height": 2}, "origin": null, "height": 7})",
                       {0, 0, 0, 7}));
    EXPECT_TRUE(isRect(R"({"origin": {"x": 1, "y": 2}, "size": {"width": 3, "height": 4}, "x": 7,)"
                       R"( "y": 7, "width": 7, "height": 7})",
                       {1, 2, 3, 4}));
}

TEST(PresetGeometryTest, AMemberOfTheWrongTypeFailsTheRectangle)
{
    for (const char *text :
         {"[[1, 2]]", "[1, 2, 3, 4]", "[]", "7", "null", R"("x")", R"({"x": "1"})",
          R"({"height": []})", R"({"origin": {"x": 1}})", R"({"origin": [1, 2]})",
          R"({"size": {"width": 1}, "x": 1})", R"([{"x": 1, "y": 2}, [3, 4]])",
          R"({"origin": {"x": 1, "y": 2}, "size": {"width": 3, "height": 4}, "y": true})"})
        EXPECT_FALSE(rectFromJson(json(text))) << text;
}

TEST(PresetGeometryTest, NullMeansAbsentWhereAValueMayBe)
{
    const auto noBox = presetFromJson(changed("entries", "textBoxSize", QJsonValue::Null));
    const auto noCrop = presetFromJson(changed("images", "cropRectNormalized", QJsonValue::Null));

    ASSERT_TRUE(noBox && noCrop);
    EXPECT_FALSE(noBox->entries[0].textBoxSize);
    EXPECT_FALSE(noCrop->images[0].cropRectNormalized);
}

TEST(PresetGeometryTest, APartOfASizeFailsThePresetAndAPartOfACropDoesNot)
{
    EXPECT_NE(errorOf("rects", "size", QJsonObject{{"width", 10}}), QString());
    EXPECT_NE(errorOf("entries", "textBoxSize", QJsonObject{{"width", 10}}), QString());

    const auto preset =
        presetFromJson(changed("images", "cropRectNormalized", QJsonObject{{"width", 0.5}}));

    ASSERT_TRUE(preset);
    EXPECT_TRUE(isSame(preset->images[0].cropRectNormalized.value(), QRectF(0, 0, 0.5, 0)));
}

} // namespace
} // namespace tessara
