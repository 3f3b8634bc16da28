#include "DeckLink/DeckLinkFrameBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace tessara {
namespace {

QImage flat(int width, int height, QColor colour)
{
    QImage image(width, height, QImage::Format_RGBA8888_Premultiplied);
    image.fill(colour);
    return image;
}

QByteArray pixel(const DeckLinkFrameBuffer &frame, int x, int y)
{
    const quint8 *bytes = frame.data.data() + qsizetype(y) * frame.rowBytes + qsizetype(x) * 4;
    return QByteArray(reinterpret_cast<const char *>(bytes), 4);
}

QByteArray bgra(int blue, int green, int red, int alpha)
{
    return QByteArray::fromRawData("", 0) + char(blue) + char(green) + char(red) + char(alpha);
}

/// Every row has a colour and an alpha of its own.
QImage rows(int width, int height)
{
    QImage image(width, height, QImage::Format_RGBA8888_Premultiplied);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const quint8 bytes[4] = {quint8(y + 1), quint8(y + 2), quint8(y + 3),
                                     quint8(10 * y + 50)};
            std::memcpy(image.scanLine(y) + 4 * x, bytes, 4);
        }
    }
    return image;
}

TEST(DeckLinkFrameBufferTest, AFillIsThePictureInTheDevicesOrder)
{
    const auto frame = *DeckLinkFrameBuffer::make(rows(3, 2), 3, 2);

    EXPECT_EQ(frame.width, 3);
    EXPECT_EQ(frame.height, 2);
    EXPECT_EQ(frame.rowBytes, 12);
    EXPECT_EQ(frame.data.size(), 24);
    EXPECT_EQ(pixel(frame, 0, 0), bgra(3, 2, 1, 50));
    EXPECT_EQ(pixel(frame, 2, 1), bgra(4, 3, 2, 60));
}

TEST(DeckLinkFrameBufferTest, PremultipliedColourStaysAsItIs)
{
    const auto frame = *DeckLinkFrameBuffer::make(flat(4, 4, QColor(255, 0, 0, 128)), 4, 4);

    EXPECT_EQ(pixel(frame, 1, 1), bgra(0, 0, 128, 128));
}

TEST(DeckLinkFrameBufferTest, AnotherFormatIsPremultipliedFirst)
{
    const QImage straight =
        flat(4, 4, QColor(255, 0, 0, 128)).convertToFormat(QImage::Format_ARGB32);

    EXPECT_EQ(pixel(*DeckLinkFrameBuffer::make(straight, 4, 4), 1, 1), bgra(0, 0, 128, 128));
}

TEST(DeckLinkFrameBufferTest, APictureOfAnotherSizeIsStretched)
{
    QImage image = flat(8, 8, QColor(Qt::red));
    for (int y = 0; y < 8; ++y) {
        for (int x = 4; x < 8; ++x)
            image.setPixelColor(x, y, Qt::blue);
    }

    const auto frame = *DeckLinkFrameBuffer::make(image, 64, 4);

    EXPECT_EQ(frame.rowBytes, 256);
    EXPECT_EQ(pixel(frame, 0, 0), bgra(0, 0, 255, 255));
    EXPECT_EQ(pixel(frame, 63, 3), bgra(255, 0, 0, 255));
}

TEST(DeckLinkFrameBufferTest, TheKeyOfATransparentPictureIsOpaqueBlack)
{
    const auto key = *DeckLinkFrameBuffer::makeAlphaKey(flat(4, 4, Qt::transparent), 4, 4);

    EXPECT_EQ(pixel(key, 3, 3), bgra(0, 0, 0, 255));
}

TEST(DeckLinkFrameBufferTest, TheKeyOfAnOpaquePictureIsWhite)
{
    const auto key = *DeckLinkFrameBuffer::makeAlphaKey(flat(4, 4, Qt::darkGreen), 4, 4);

    EXPECT_EQ(pixel(key, 0, 0), bgra(255, 255, 255, 255));
}

TEST(DeckLinkFrameBufferTest, TheKeyOfHalfOpacityIsMidGrey)
{
    const auto key = *DeckLinkFrameBuffer::makeAlphaKey(flat(4, 4, QColor(9, 8, 7, 128)), 4, 4);
    EXPECT_EQ(pixel(key, 2, 1), bgra(128, 128, 128, 255));

    const auto scaled = *DeckLinkFrameBuffer::makeAlphaKey(flat(4, 4, QColor(9, 8, 7, 128)), 9, 3);
    EXPECT_EQ(pixel(scaled, 8, 2), bgra(128, 128, 128, 255));
}

TEST(DeckLinkFrameBufferTest, AnExternalKeyFillHasItsAlphaUpsideDown)
{
    const auto frame = *DeckLinkFrameBuffer::makeExternalKeyFill(rows(2, 4), 2, 4);

    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(pixel(frame, 1, y), bgra(y + 3, y + 2, y + 1, 10 * (3 - y) + 50));
}

TEST(DeckLinkFrameBufferTest, AnOddHeightKeepsTheMiddleRowsAlpha)
{
    const auto frame = *DeckLinkFrameBuffer::makeExternalKeyFill(rows(2, 5), 2, 5);

    EXPECT_EQ(pixel(frame, 0, 2), bgra(5, 4, 3, 70));
    EXPECT_EQ(pixel(frame, 0, 0), bgra(3, 2, 1, 90));
    EXPECT_EQ(pixel(frame, 0, 4), bgra(7, 6, 5, 50));
}

TEST(DeckLinkFrameBufferTest, OneRowHasNothingToTurn)
{
    EXPECT_EQ(DeckLinkFrameBuffer::makeExternalKeyFill(rows(5, 1), 5, 1),
              DeckLinkFrameBuffer::make(rows(5, 1), 5, 1));
}

TEST(DeckLinkFrameBufferTest, ThePictureIsLeftAsItWas)
{
    const QImage image = rows(6, 4);
    const QImage before = image.copy();

    EXPECT_TRUE(DeckLinkFrameBuffer::makeExternalKeyFill(image, 6, 4));

    EXPECT_EQ(image, before);
}

TEST(DeckLinkFrameBufferTest, AnEmptyPictureIsATransparentFrame)
{
    const auto frame = *DeckLinkFrameBuffer::make(QImage(), 4, 4);

    EXPECT_EQ(frame.data, FrameBytes::zeroed(64));
}

TEST(DeckLinkFrameBufferTest, ASizeBelowOneHasNoContext)
{
    const QImage image = flat(4, 4, Qt::red);
    for (const QSize size : {QSize(0, 4), QSize(4, 0), QSize(-1, 4), QSize(4, -1)}) {
        const auto frame = DeckLinkFrameBuffer::make(image, size.width(), size.height());
        ASSERT_FALSE(frame);
        EXPECT_EQ(text(frame.error()), "Could not create DeckLink frame buffer context.");
        EXPECT_FALSE(DeckLinkFrameBuffer::makeAlphaKey(image, size.width(), size.height()));
        EXPECT_FALSE(DeckLinkFrameBuffer::makeExternalKeyFill(image, size.width(), size.height()));
    }
}

TEST(DeckLinkFrameBufferTest, ASizeThatMemoryCannotHoldHasNoContext)
{
    EXPECT_FALSE(DeckLinkFrameBuffer::make(flat(4, 4, Qt::red), 100000, 100000));
}

TEST(DeckLinkFrameBufferDeathTest, ASizeThatCannotBeCountedStopsTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        (void)DeckLinkFrameBuffer::make(flat(4, 4, Qt::red), std::numeric_limits<int>::max(), 4),
        "can't exist");
}

TEST(DeckLinkFrameBufferTest, CopiesShareTheirBytes)
{
    const auto frame = *DeckLinkFrameBuffer::make(flat(4, 4, Qt::red), 4, 4);

    const DeckLinkFrameBuffer copy = frame;

    EXPECT_EQ(copy.data.data(), frame.data.data());
    EXPECT_EQ(quintptr(frame.data.data()) % FrameBytes::alignment, 0u);
}

TEST(DeckLinkFrameBufferTest, BytesThatAreStillHeldAreNotUsedAgain)
{
    const auto first = *DeckLinkFrameBuffer::make(flat(4, 4, Qt::red), 4, 4);
    const auto second = *DeckLinkFrameBuffer::make(flat(4, 4, Qt::blue), 4, 4);

    EXPECT_EQ(pixel(first, 0, 0), bgra(0, 0, 255, 255));
    EXPECT_EQ(pixel(second, 0, 0), bgra(255, 0, 0, 255));
}

} // namespace
} // namespace tessara
