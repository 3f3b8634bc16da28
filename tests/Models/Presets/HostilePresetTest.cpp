#include "Models/Presets/PresetFixture.h"

namespace tessara {
namespace {

QByteArray named(const QByteArray &name)
{
    return R"({"id": "a", "name": ")" + name + "\"}";
}

QByteArray lasting(const QByteArray &seconds)
{
    return R"({"id": "a", "name": "b", "preferredRunDuration": )" + seconds + "}";
}

TEST(HostilePresetTest, NoPrefixOfAFileIsAPreset)
{
    const QByteArray whole = encodePreset(fullPreset()).value().trimmed();

    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(decodePreset(whole.left(length))) << length;
    EXPECT_TRUE(decodePreset(whole));
}

TEST(HostilePresetTest, WhatIsNoJsonSaysSo)
{
    EXPECT_EQ(decodePreset("{\"id\"").error().section(':', 0, 0), "no JSON");
    EXPECT_FALSE(decodePreset(""));
    EXPECT_FALSE(decodePreset(QByteArray(1000, '\0')));
    EXPECT_FALSE(decodePreset(named("b") + "x"));
    EXPECT_FALSE(decodePreset(named("\xff\xfe")));
    EXPECT_EQ(decodePreset("{}").error(), "id: missing");
}

TEST(HostilePresetTest, DeepNestingIsRefused)
{
    for (const int depth : {500, 5000, 2'000'000}) {
        const QByteArray open(depth, '[');
        const QByteArray close(depth, ']');
        EXPECT_FALSE(decodePreset(open));
        EXPECT_FALSE(decodePreset(open + close));
        EXPECT_FALSE(decodePreset(R"({"id": "a", "name": "b", "rects": )" + open + close + "}"));
    }
}

TEST(HostilePresetTest, NumbersBeyondADoubleAreRefused)
{
    for (const char *number : {"NaN", "Infinity", "-Infinity", "1e999", "-1e999", "0x10", "+1"})
        EXPECT_FALSE(decodePreset(lasting(number))) << number;
    EXPECT_EQ(decodePreset(lasting("1e308"))->preferredRunDuration, 1e308);
    EXPECT_EQ(decodePreset(lasting("-12345678901234567890123"))->preferredRunDuration,
              -12345678901234567890123.0);
}

TEST(HostilePresetTest, HalfCharactersAndZerosAreKeptAsTheyStand)
{
    for (const char *name :
         {R"(\ud800)", R"(\udc00\ud800)", R"(a\ud83d)", R"(\u0000)", "line\nbreak"}) {
        const auto preset = decodePreset(named(name));
        ASSERT_TRUE(preset) << name;
        EXPECT_FALSE(preset->name.isEmpty());

        EXPECT_EQ(decodePreset(encodePreset(*preset).value()), preset) << name;
    }
}

TEST(HostilePresetTest, ALongTextIsReadWhole)
{
    const QByteArray tenMegabytes(10 << 20, 'x');

    const auto preset = decodePreset(named(tenMegabytes));

    ASSERT_TRUE(preset);
    EXPECT_EQ(preset->name.size(), tenMegabytes.size());
}

TEST(HostilePresetTest, AFileOfAHundredMegabytesIsReadWhole)
{
    TextPreset preset = fullPreset();
    preset.images[0].pngBase64 = QString(100 << 20, 'A');
    const QByteArray file = encodePreset(preset).value();

    EXPECT_EQ(decodePreset(file), preset);
    EXPECT_FALSE(decodePreset(file.left(file.size() - 10)));
}

TEST(HostilePresetTest, ManyEntriesAreReadAndOneBrokenEndsIt)
{
    TextPreset preset = fullPreset();
    preset.rects = QList<PresetRectEntry>(20'000, fullRect());
    QJsonObject json = jsonOf(preset);
    EXPECT_EQ(decodePreset(bytesOf(json)), preset);

    QJsonArray rects = json["rects"].toArray();
    rects.append(QJsonValue::Null);
    json["rects"] = rects;

    EXPECT_EQ(presetFromJson(json).error(), "rects[20000]: wanted an object");
}

TEST(HostilePresetTest, ATextThatIsNoPictureIsNoErrorOfTheFormat)
{
    for (const char *text : {"", "!", "not base64", "iVBO\nRw0K", "AAA", "AAAA=", "=AAA", "AA=A"}) {
        const auto preset = presetFromJson(changed("images", "pngBase64", text));

        ASSERT_TRUE(preset) << text;
        EXPECT_EQ(preset->images[0].pngBase64, text);
        EXPECT_EQ(preset->images[0].pngData().has_value(), *text == '\0') << text;
    }
}

TEST(HostilePresetTest, APicturesBytesAreThoseOfItsText)
{
    const QByteArray bytes("\x89PNG\r\n\x1a\n\0", 9);

    const PresetImageEntry whole{.pngBase64 = QString::fromLatin1(bytes.toBase64())};
    const PresetImageEntry padded{.pngBase64 = "AA=="};

    EXPECT_EQ(whole.pngData(), bytes);
    EXPECT_EQ(padded.pngData(), QByteArray(1, '\0'));
}

} // namespace
} // namespace tessara
