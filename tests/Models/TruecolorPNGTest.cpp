#include "Models/TruecolorPNG.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QtEndian>

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include <libdeflate.h>

namespace tessara {
namespace {

enum Kind { grey = 0, colour = 2, indexed = 3, colourWithAlpha = 6 };
const QByteArray signature("\x89PNG\r\n\x1a\n", 8);

QByteArray bigEndian(quint32 value)
{
    const quint32 swapped = qToBigEndian(value);
    return {reinterpret_cast<const char *>(&swapped), sizeof swapped};
}

QByteArray chunk(const QByteArray &name, const QByteArray &data)
{
    const QByteArray named = name + data;
    const quint32 checkSum = libdeflate_crc32(0, named.constData(), std::size_t(named.size()));
    return bigEndian(quint32(data.size())) + named + bigEndian(checkSum);
}

QByteArray header(int width, int height, Kind kind, char depth = 8, char interlaced = 0)
{
    return chunk("IHDR", bigEndian(quint32(width)) + bigEndian(quint32(height)) + depth + char(kind)
                             + QByteArray(2, '\0') + interlaced);
}

/// As a file has them, without the length that the platform puts first.
QByteArray deflated(const QByteArray &raster)
{
    return qCompress(raster).mid(4);
}

QByteArray pixels(const QByteArray &raster)
{
    return chunk("IDAT", deflated(raster));
}

const QByteArray end = chunk("IEND", {});

QImage byPlatform(const QByteArray &file)
{
    QBuffer buffer;
    buffer.setData(file);
    return QImageReader(&buffer, "PNG").read();
}

void expectAsByPlatform(const QByteArray &file)
{
    const QImage expected = byPlatform(file);
    ASSERT_FALSE(expected.isNull());

    const QImage image = readTruecolorPNG(file);

    EXPECT_EQ(image.format(), expected.format());
    EXPECT_EQ(image, expected);
    EXPECT_EQ(image.dotsPerMeterX(), expected.dotsPerMeterX());
    EXPECT_EQ(image.dotsPerMeterY(), expected.dotsPerMeterY());
    EXPECT_EQ(image.colorSpace(), expected.colorSpace());
    EXPECT_EQ(image.textKeys(), expected.textKeys());
}

class TruecolorPNGTest : public testing::Test
{
protected:
    /// Bytes by chance behind filters by chance, or behind one of them.
    QByteArray raster(int width, int height, int pixelBytes, int filter = -1)
    {
        QByteArray rows;
        for (int y = 0; y < height; ++y) {
            rows += char(filter >= 0 ? filter : int(random() % 5));
            for (int index = 0; index < width * pixelBytes; ++index)
                rows += char(random() % 4 == 0 ? random() : random() % 3);
        }
        return rows;
    }

    std::mt19937 random{20};
};

TEST_F(TruecolorPNGTest, EachFilterIsUndoneAsByThePlatform)
{
    for (int filter = 0; filter < 5; ++filter) {
        SCOPED_TRACE(filter);
        expectAsByPlatform(signature + header(37, 23, colour) + pixels(raster(37, 23, 3, filter))
                           + end);
        expectAsByPlatform(signature + header(37, 23, colourWithAlpha)
                           + pixels(raster(37, 23, 4, filter)) + end);
    }
}

TEST_F(TruecolorPNGTest, AnySizeAndAnyMixtureOfFilters)
{
    for (int round = 0; round < 200; ++round) {
        const int width = 1 + int(random() % 40), height = 1 + int(random() % 40);
        const Kind kind = round % 2 == 0 ? colour : colourWithAlpha;
        expectAsByPlatform(signature + header(width, height, kind)
                           + pixels(raster(width, height, kind == colour ? 3 : 4)) + end);
    }
}

TEST_F(TruecolorPNGTest, PixelsMayComeInManyPieces)
{
    const QByteArray compressed = deflated(raster(50, 60, 4));
    QByteArray file = signature + header(50, 60, colourWithAlpha);
    for (qsizetype begin = 0; begin < compressed.size(); begin += 97)
        file += chunk("IDAT", compressed.mid(begin, 97));

    expectAsByPlatform(file + end);
}

TEST_F(TruecolorPNGTest, WhatThePlatformWritesIsReadWithItsResolution)
{
    QImage image(120, 90, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x * y % 256, x * 2, y * 2, (x + y) % 256));
    }
    image.setDotsPerMeterX(4711);
    image.setDotsPerMeterY(2345);
    for (const QImage &each : {image, image.convertToFormat(QImage::Format_RGB32)}) {
        QByteArray file;
        QBuffer buffer(&file);
        ASSERT_TRUE(each.save(&buffer, "PNG"));

        expectAsByPlatform(file);
        EXPECT_EQ(readTruecolorPNG(file), each);
    }
}

TEST_F(TruecolorPNGTest, WhatSaysMoreOfItselfIsThePlatforms)
{
    const QByteArray head = signature + header(5, 4, colour);
    const QByteArray body = pixels(raster(5, 4, 3)) + end;
    ASSERT_FALSE(readTruecolorPNG(head + body).isNull());

    for (const QByteArray &more :
         {chunk("gAMA", bigEndian(45455)), chunk("sRGB", QByteArray(1, '\0')),
          chunk("tRNS", QByteArray(6, '\0')), chunk("tEXt", QByteArray("Title\0x", 7)),
          chunk("pHYs", bigEndian(3) + bigEndian(4) + '\0')})
        EXPECT_TRUE(readTruecolorPNG(head + more + body).isNull());
}

TEST_F(TruecolorPNGTest, OtherKindsAreThePlatforms)
{
    const QByteArray body = pixels(raster(5, 4, 8, 0)) + end;
    for (const QByteArray &head :
         {header(5, 4, grey), header(5, 4, indexed), header(5, 4, colour, 16),
          header(5, 4, colour, 8, 1), header(0, 4, colour), header(5, 0, colour),
          header(0x7FFFFFFF, 0x7FFFFFFF, colourWithAlpha), header(40000, 40000, colour)})
        EXPECT_TRUE(readTruecolorPNG(signature + head + body).isNull());
    EXPECT_TRUE(readTruecolorPNG({}).isNull());
    EXPECT_TRUE(readTruecolorPNG("GIF89a").isNull());
    EXPECT_TRUE(readTruecolorPNG(signature).isNull());
}

// None is read otherwise than the platform reads it; what it mends or refuses is left to it.
TEST_F(TruecolorPNGTest, DamagedFilesAreThePlatforms)
{
    const QByteArray rows = raster(9, 7, 4);
    const QByteArray head = signature + header(9, 7, colourWithAlpha);
    const QByteArray file = head + pixels(rows) + end;
    for (qsizetype size = 0; size < file.size(); ++size)
        EXPECT_TRUE(readTruecolorPNG(file.left(size)).isNull()) << size;
    for (qsizetype place = 0; place < file.size(); ++place) {
        QByteArray damaged = file;
        damaged[place] = char(damaged[place] ^ 0x11);
        EXPECT_TRUE(readTruecolorPNG(damaged).isNull()) << place;
    }
    const QByteArray missing = rows.left(rows.size() - 1), tooMuch = rows + 'x';
    QByteArray strangeFilter = rows;
    strangeFilter[0] = 5;
    for (const QByteArray &other : {missing, tooMuch, strangeFilter, QByteArray()})
        EXPECT_TRUE(readTruecolorPNG(head + pixels(other) + end).isNull());
    EXPECT_TRUE(readTruecolorPNG(head + end).isNull());
    EXPECT_TRUE(readTruecolorPNG(head + chunk("IDAT", "") + end).isNull());
}

} // namespace
} // namespace tessara
