#include "Models/Presets/PresetFixture.h"

#include "Base/RawString.h"

#include <cmath>
#include <limits>

namespace tessara {
namespace {

const QJsonValue absent(QJsonValue::Undefined);

/// A preset with only what must be there.
const QByteArray least = R"({"id": "a", "name": "b"})";
const QByteArray leastText = R"({"name": "", "text": "", "fontSize": 1, "position": [0, 0],)"
                             R"( "color": {"red": 1, "green": 1, "blue": 1, "alpha": 1}})";
const QByteArray leastRect =
    R"({"name": "", "position": [0, 0], "size": [1, 1], "cornerRadius": 0, "opacity": 1,)"
    R"( "color": {"red": 1, "green": 1, "blue": 1, "alpha": 1}})";
const QByteArray leastImage = R"({"name": "", "position": [0, 0], "size": [1, 1], "opacity": 1,)"
                              R"( "isAspectRatioLocked": true, "pngBase64": ""})";

TextPreset presetWith(const QByteArray &list, const QByteArray &item)
{
    const auto preset =
        decodePreset(R"({"id": "a", "name": "b", ")" + list + "\": [" + item + "]}");
    EXPECT_TRUE(preset) << qPrintable(preset ? QString() : preset.error());
    return preset.value_or(TextPreset());
}

TEST(PresetFormatTest, WhatIsWrittenReadsBackEqual)
{
    const auto read = decodePreset(encodePreset(fullPreset()).value());

    ASSERT_TRUE(read) << qPrintable(read.error());
    EXPECT_EQ(*read, fullPreset());
    EXPECT_EQ(encodePreset(*read), encodePreset(fullPreset()));
}

TEST(PresetFormatTest, IsIndentedWithSortedKeys)
{
    const TextPreset preset{.id = "a", .name = "b", .hasLogoPlaceholder = false};

    EXPECT_EQ(encodePreset(preset).value(), "{\n"
                                            "    \"entries\": [\n    ],\n"
                                            "    \"hasLogoPlaceholder\": false,\n"
                                            "    \"id\": \"a\",\n"
                                            "    \"images\": [\n    ],\n"
                                            "    \"name\": \"b\",\n"
                                            "    \"rects\": [\n    ],\n"
                                            "    \"styleKeywords\": [\n    ],\n"
                                            "    \"templateTags\": [\n    ]\n"
                                            "}\n");
    EXPECT_EQ(preset.exportData(), encodePreset(preset));
}

TEST(PresetFormatTest, WritesEveryKeyOfTheFormat)
{
    const QJsonObject json = jsonOf(fullPreset());

    EXPECT_EQ(json.keys(),
              QStringList({"entries", "hasLogoPlaceholder", "id", "images", "language", "name",
                           "preferredRunDuration", "preferredRunTransitionStyle", "rects",
                           "styleKeywords", "templateCategory", "templateTags", "templateType"}));
    EXPECT_EQ(
        json["rects"][0].toObject().keys(),
        QStringList({"color", "cornerRadius", "kind", "name", "opacity", "position", "size"}));
    EXPECT_EQ(json["images"][0].toObject().keys(),
              QStringList({"contentMode", "cropRectNormalized", "isAspectRatioLocked",
                           "maskPadding", "maskShape", "name", "opacity", "placeholderKey",
                           "pngBase64", "position", "size"}));
    EXPECT_EQ(json["entries"][0].toObject().keys(),
              QStringList({"color", "fieldKey", "fieldKind", "fontFamily", "fontSize", "fontWeight",
                           "horizontalAlignment", "name", "outlineColor", "outlineWidth",
                           "position", "text", "textBoxSize"}));
}

TEST(PresetFormatTest, WritesGeometryAsArrays)
{
    const QJsonObject json = jsonOf(fullPreset());

    EXPECT_EQ(json["rects"][0]["position"], (QJsonArray{10, 20}));
    EXPECT_EQ(json["images"][0]["size"], (QJsonArray{64, 32}));
    EXPECT_EQ(json["images"][0]["cropRectNormalized"],
              (QJsonArray{QJsonArray{0.1, 0.2}, QJsonArray{0.3, 0.4}}));
    EXPECT_EQ(json["entries"][0]["textBoxSize"], (QJsonArray{640, 120.5}));
}

TEST(PresetFormatTest, LeavesOutWhatIsAbsent)
{
    const TextPreset preset{.rects = {PresetRectEntry()},
                            .images = {PresetImageEntry()},
                            .entries = {TextPresetEntry()}};

    const QJsonObject json = jsonOf(preset);

    EXPECT_EQ(json.keys(), QStringList({"entries", "id", "images", "name", "rects", "styleKeywords",
                                        "templateTags"}));
    EXPECT_EQ(
        json["images"][0].toObject().keys(),
        QStringList({"isAspectRatioLocked", "name", "opacity", "pngBase64", "position", "size"}));
    EXPECT_EQ(json["entries"][0].toObject().keys(),
              QStringList({"color", "fontSize", "horizontalAlignment", "name", "outlineColor",
                           "outlineWidth", "position", "text"}));
}

TEST(PresetFormatTest, IdAndNameAreEnough)
{
    const auto preset = decodePreset(least);

    ASSERT_TRUE(preset) << qPrintable(preset.error());
    EXPECT_EQ(*preset, (TextPreset{.id = "a", .name = "b"}));
}

TEST(PresetFormatTest, ValuesStandForMissingKeys)
{
    const TextPresetEntry text = presetWith("entries", leastText).entries.at(0);
    const PresetRectEntry rect = presetWith("rects", leastRect).rects.at(0);
    const PresetImageEntry image = presetWith("images", leastImage).images.at(0);

    EXPECT_EQ(text.outlineColor, (RGBAColor{0, 0, 0, 1}));
    EXPECT_EQ(text.outlineWidth, 0);
    EXPECT_EQ(text.horizontalAlignment, TextLayerHorizontalAlignment::leading);
    EXPECT_FALSE(text.fontFamily || text.fontWeight || text.textBoxSize);
    EXPECT_FALSE(text.fieldKey || text.fieldKind);
    EXPECT_EQ(rect.kind, ShapeKind::rectangle);
    EXPECT_FALSE(image.cropRectNormalized || image.placeholderKey || image.contentMode);
    EXPECT_FALSE(image.maskShape || image.maskPadding);
}

// Which keys must be there, key by key: null counts as missing.
TEST(PresetFormatTest, OnlyRequiredKeysMustBeThere)
{
    const QMap<QString, QStringList> required{
        {"", {"id", "name"}},
        {"rects", {"name", "position", "size", "color", "cornerRadius", "opacity"}},
        {"images", {"name", "position", "size", "opacity", "isAspectRatioLocked", "pngBase64"}},
        {"entries", {"name", "text", "fontSize", "color", "position"}}};

    for (const QString &list : required.keys()) {
        const QJsonObject json = jsonOf(fullPreset());
        const QJsonObject object = list.isEmpty() ? json : json[list][0].toObject();
        const QString place = list.isEmpty() ? QString() : list + "[0].";
        for (const QString &key : object.keys()) {
            const QString wanted =
                required[list].contains(key) ? place + key + ": missing" : QString();
            EXPECT_EQ(errorOf(list, key, absent), wanted);
            EXPECT_EQ(errorOf(list, key, QJsonValue::Null), wanted);
        }
    }
}

TEST(PresetFormatTest, AValueOfTheWrongTypeFailsThePresetUnderEveryKey)
{
    const QJsonValue strange(QJsonArray{QJsonValue(QJsonArray{QJsonValue::Null})});

    for (const QString &list : QStringList{""} + listKeys) {
        const QJsonObject json = jsonOf(fullPreset());
        const QJsonObject object = list.isEmpty() ? json : json[list][0].toObject();
        for (const QString &key : object.keys()) {
            EXPECT_NE(errorOf(list, key, strange), QString()) << qPrintable(list + "." + key);
            EXPECT_NE(errorOf(list, key,
                              key == "hasLogoPlaceholder" || key == "isAspectRatioLocked"
                                  ? QJsonValue(1)
                                  : QJsonValue(true)),
                      QString())
                << qPrintable(list + "." + key);
        }
    }
}

TEST(PresetFormatTest, ErrorsSayWhereAndWhat)
{
    EXPECT_EQ(errorOf("", "name", 1), "name: wanted a text");
    EXPECT_EQ(errorOf("", "templateTags", QJsonArray{"a", 2}), "templateTags[1]: wanted a text");
    EXPECT_EQ(errorOf("", "rects", QJsonArray{1}), "rects[0]: wanted an object");
    EXPECT_EQ(errorOf("", "rects", QJsonObject()), "rects: wanted an array");
    EXPECT_EQ(errorOf("rects", "opacity", "1"), "rects[0].opacity: wanted a number");
    EXPECT_EQ(errorOf("entries", "position", 1),
              "entries[0].position: a point needs the numbers 'x' and 'y'");
    EXPECT_EQ(errorOf("images", "contentMode", "fill"),
              "images[0].contentMode: wanted one of fillCrop, fitInside");
}

TEST(PresetFormatTest, AColourNeedsAllItsParts)
{
    for (const QString part : {"red", "green", "blue", "alpha"}) {
        QJsonObject color{{"red", 0}, {"green", 0}, {"blue", 0}, {"alpha", 1}};
        color.remove(part);

        EXPECT_EQ(errorOf("rects", "color", color), "rects[0].color." + part + ": missing");
        EXPECT_EQ(errorOf("entries", "outlineColor", color),
                  "entries[0].outlineColor." + part + ": missing");
    }
}

template <typename Enum>
void expectCases(const QString &list, const QString &key, const QStringList &names)
{
    for (const QString &name : names)
        EXPECT_EQ(errorOf(list, key, name), QString());
    EXPECT_EQ(names.size(), qsizetype(allCases<Enum>().size()));
    for (const QString name : {"", "Cut", " rectangle", "tessara::rectangle", "0"})
        EXPECT_NE(errorOf(list, key, name), QString()) << qPrintable(name);
}

TEST(PresetFormatTest, AStringThatNamesNoCaseFailsThePreset)
{
    expectCases<LayerRunTransitionStyle>("", "preferredRunTransitionStyle",
                                         {"cut", "dissolve", "presetReveal"});
    expectCases<TextLayerHorizontalAlignment>("entries", "horizontalAlignment",
                                              {"leading", "center", "trailing"});
    expectCases<TemplateFieldKind>("entries", "fieldKind", {"text", "score", "timer", "image"});
    expectCases<ShapeKind>(
        "rects", "kind", {"rectangle", "ellipse", "triangle", "diamond", "star", "line", "custom"});
    expectCases<ImageLayerContentMode>("images", "contentMode", {"fillCrop", "fitInside"});
    expectCases<ImageLayerMaskShape>(
        "images", "maskShape",
        {"rectangle", "roundedRectangle", "circle", "hexagon", "shield", "customPolygon"});
    EXPECT_NE(errorOf("rects", "kind", "hexagon"), QString()); // a mask, not a shape
}

TEST(PresetFormatTest, NumbersSurviveToTheLastBit)
{
    for (const double number :
         {0.1 + 0.2, 1.0 / 3, 1e-300, -1e300, 5e-324, 1e22, std::nextafter(1.0, 2.0),
          9007199254740993.0, std::numeric_limits<double>::max(), 98.0, -0.5}) {
        TextPreset preset = fullPreset();
        preset.preferredRunDuration = number;
        preset.entries[0].position = {number, -number};
        preset.images[0].cropRectNormalized = QRectF(number, number, -number, number);
        preset.rects[0].color.red = number;

        const auto read = decodePreset(encodePreset(preset).value());

        ASSERT_TRUE(read) << number << qPrintable(read.error());
        EXPECT_EQ(*read, preset) << number;
    }
}

TEST(PresetFormatTest, ANumberThatIsNotFiniteCannotBeWritten)
{
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        TextPreset preset = fullPreset();
        preset.images[0].cropRectNormalized = QRectF(0, 0, number, 1);
        EXPECT_EQ(encodePreset(preset).error(), "images[0].cropRectNormalized: "
                                                "a number that isn't finite can't be written");

        preset = fullPreset();
        preset.entries[0].color.alpha = number;
        EXPECT_EQ(preset.exportData().error(),
                  "entries[0].color.alpha: a number that isn't finite can't be written");
    }
}

TEST(PresetFormatTest, UnknownKeysArePassedOver)
{
    EXPECT_EQ(errorOf("", "version", 3), QString());
    EXPECT_EQ(errorOf("entries", "rotation", QJsonArray()), QString());
}

TEST(PresetFormatTest, AListIsReadWholeOrNotAtAll)
{
    const auto two = decodePresets("[" + least + "," + least + "]");
    const auto broken = decodePresets("[" + least + R"(, {"id": "c"}])");

    ASSERT_TRUE(two);
    EXPECT_EQ(two->size(), 2);
    EXPECT_EQ(decodePresets("[]").value(), QList<TextPreset>());
    EXPECT_EQ(broken.error(), "[1].name: missing");
    EXPECT_EQ(decodePresets(least).error(), "wanted an array");
    EXPECT_EQ(decodePreset("[" + least + "]").error(), "wanted an object");
}

} // namespace
} // namespace tessara
