#include "Rendering/PresetDrawing.h"

#include <QBuffer>

#include "Models/Presets/TextPreset.h"
#include "Rendering/FrameFixture.h"

#include <thread>

namespace tessara {
namespace {

constexpr QSize cardSize{296, 167};

PresetRectEntry redRect()
{
    PresetRectEntry rect;
    rect.size = {960, 540};
    rect.color = {1, 0, 0, 1};
    return rect;
}

PresetImageEntry bluePicture()
{
    QImage blue(64, 36, QImage::Format_ARGB32_Premultiplied);
    blue.fill(Qt::blue);
    QByteArray bytes;
    QBuffer file(&bytes);
    blue.save(&file, "PNG");
    PresetImageEntry picture;
    picture.position = {960, 540};
    picture.size = {960, 540};
    picture.pngBase64 = QString::fromLatin1(bytes.toBase64());
    return picture;
}

TextPresetEntry title(const QString &text)
{
    TextPresetEntry entry;
    entry.text = text;
    entry.fontSize = 200;
    entry.position = {100, 600};
    return entry;
}

class PresetDrawingTest : public testing::Test
{
protected:
    PresetDrawingTest()
    {
        loadApplicationFonts();
        preset.rects = {redRect()};
        preset.images = {bluePicture()};
        preset.entries = {title(QStringLiteral("Live ก 🏆"))};
    }

    TextPreset preset;
};

TEST_F(PresetDrawingTest, ShowsShapesPicturesAndTextsOnADarkGround)
{
    const QImage picture = drawPreset(preset, {1920, 1080});

    EXPECT_EQ(picture.pixelColor(480, 270), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(1440, 810), QColor(Qt::blue));
    EXPECT_EQ(picture.pixelColor(1900, 20), QColor(15, 15, 18));
    const QImage bare = drawPreset({}, {1920, 1080});
    EXPECT_NE(picture.copy(100, 600, 600, 240), bare.copy(100, 600, 600, 240));
}

TEST_F(PresetDrawingTest, APictureTooLargeForACardIsLeftOut)
{
    QImage huge(16384, 4096, QImage::Format_Mono); // some 350 MB once decoded
    huge.fill(1);
    QByteArray bytes;
    QBuffer file(&bytes);
    ASSERT_TRUE(huge.save(&file, "PNG"));
    preset.images = {bluePicture(), bluePicture()};
    preset.images[0].pngBase64 = QString::fromLatin1(bytes.toBase64());
    preset.images[1].position = {960, 0};

    const QImage picture = drawPreset(preset, {1920, 1080});

    EXPECT_EQ(picture.pixelColor(1440, 810), QColor(15, 15, 18));
    EXPECT_EQ(picture.pixelColor(1440, 270), QColor(Qt::blue));
}

TEST_F(PresetDrawingTest, StandsUprightAsTheOperatorSeesIt)
{
    PresetRectEntry triangle = redRect();
    triangle.kind = ShapeKind::triangle;
    preset = {};
    preset.rects = {triangle};

    const QImage picture = drawPreset(preset, {1920, 1080});

    EXPECT_EQ(picture.pixelColor(60, 520), QColor(Qt::red));
    EXPECT_NE(picture.pixelColor(60, 20), QColor(Qt::red));
}

TEST_F(PresetDrawingTest, LeavesOutAPictureThatCannotBeRead)
{
    preset.images[0].pngBase64 = QStringLiteral("????");

    const QImage picture = drawPreset(preset, {1920, 1080});

    EXPECT_EQ(picture.pixelColor(480, 270), QColor(Qt::red));
    EXPECT_NE(picture.pixelColor(1440, 810), QColor(Qt::blue));
}

TEST_F(PresetDrawingTest, IsGivenUpBetweenTwoLayers)
{
    int asked = 0;

    const QImage picture = drawPreset(preset, cardSize, [&] { return ++asked < 2; });

    EXPECT_TRUE(picture.isNull());
    EXPECT_EQ(asked, 2);
}

TEST_F(PresetDrawingTest, IsTheSameOnAnyThreadWhileFramesAreDrawn)
{
    const QImage expected = drawPreset(preset, cardSize);
    ManualClock clock;
    CanvasDocument document(clock, QSizeF(640, 360));
    TextLayer *text = document.addTextLayer();
    RenderEngine engine;

    constexpr int rounds = 40;
    int matches = 0;
    std::thread worker([&] {
        for (int round = 0; round < rounds; ++round) {
            TextPreset other = preset; // texts and sizes that no thread has seen yet
            other.entries[0].fontSize = 40 + round;
            drawPreset(other, cardSize);
            matches += drawPreset(preset, cardSize) == expected ? 1 : 0;
        }
    });
    int frames = 0;
    for (int round = 0; round < rounds; ++round) {
        text->setText(QStringLiteral("Round %1 ก 🏆").arg(round));
        text->setFontSize(30 + round);
        frames += engine.render(document, std::nullopt).has_value() ? 1 : 0;
    }
    worker.join();

    EXPECT_EQ(matches, rounds);
    EXPECT_EQ(frames, rounds);
}

} // namespace
} // namespace tessara
