#include "DocumentFixture.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QtEndian>

#include <sys/stat.h>
#include <unistd.h>

namespace tessara {
namespace {

class PictureTest : public DocumentFixture
{
protected:
    QString path(const char *name) const { return directory.filePath(QLatin1String(name)); }

    QString write(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    /// 40 by 20, its left half red, its right half blue.
    static QImage sample()
    {
        QImage image(40, 20, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QPainter(&image).fillRect(0, 0, 20, 20, Qt::red);
        return image;
    }

    void expectRefused(const QString &file)
    {
        const auto added = document.addImageLayer(QUrl::fromLocalFile(file));
        ASSERT_FALSE(added) << qPrintable(file);
        EXPECT_EQ(text(added.error()), QStringLiteral("Could not load image file."));
        EXPECT_TRUE(document.layerOrder().isEmpty());
    }

    QTemporaryDir directory;
};

TEST_F(PictureTest, EveryFormatOfTheTradeLoads)
{
    for (const char *name : {"a.png", "a.jpg", "a.webp", "a.tiff", "a.bmp"}) {
        ASSERT_TRUE(sample().save(path(name))) << name;
        const auto picture = Picture::load(path(name));
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(picture->size(), QSize(40, 20)) << name;
        EXPECT_GT(picture->image().pixelColor(5, 10).red(), 200) << name;
        EXPECT_EQ(picture->image().pixelColor(5, 10).alpha(), 255) << name;
    }
}

TEST_F(PictureTest, AVectorPictureAndTheFirstFrameOfAnAnimationLoad)
{
    const QString svg =
        write("a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='30' "
                       "height='10'><rect width='30' height='10' fill='red'/></svg>");
    const QString gif = write("a.gif", QByteArray::fromHex("47494638396101000100800000ff0000"
                                                           "00000021f90400000000002c00000000"
                                                           "010001000002024401003b"));

    const auto vector = Picture::load(svg);
    ASSERT_TRUE(vector);
    EXPECT_EQ(vector->image().pixelColor(15, 5), QColor(Qt::red));
    ASSERT_TRUE(Picture::load(gif));
    EXPECT_EQ(Picture::load(gif)->image().pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(PictureTest, StandsUprightAsItsCameraSays)
{
    ASSERT_TRUE(sample().save(path("a.jpg"), nullptr, 95));
    QFile file(path("a.jpg"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes = file.readAll();
    // The camera lay on its side: orientation 6, to be turned a quarter to the right.
    const QByteArray exif = QByteArray::fromHex("ffe1002245786966000049492a0008000000"
                                                "010012010300010000000600000000000000");
    bytes.insert(2, exif);

    const auto picture = Picture::load(write("turned.jpg", bytes));

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(20, 40));
    EXPECT_GT(picture->image().pixelColor(10, 5).red(), 200);
    EXPECT_GT(picture->image().pixelColor(10, 35).blue(), 200);
}

TEST_F(PictureTest, WhatIsNoPictureIsRefusedAndAddsNothing)
{
    expectRefused(path("missing.png"));
    expectRefused(directory.path());
    expectRefused(write("empty.png", {}));
    expectRefused(write("text.png", "no picture at all"));
    ASSERT_TRUE(sample().save(path("whole.png")));
    QFile whole(path("whole.png"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    expectRefused(write("torn.png", whole.read(60)));
}

TEST_F(PictureTest, WhatNeverEndsIsRefused)
{
    ASSERT_EQ(mkfifo(qPrintable(path("pipe.png")), 0600), 0);
    ASSERT_EQ(symlink("pipe.png", qPrintable(path("link.png"))), 0);

    expectRefused(path("pipe.png"));
    expectRefused(path("link.png"));
    expectRefused(QStringLiteral("/dev/zero"));
    expectRefused(QStringLiteral("/dev/ptmx")); // a terminal that nobody types on
}

TEST_F(PictureTest, AVectorPictureThatNamesWhatNeverEndsIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo(qPrintable(path("pipe")), 0600), 0);
    const auto picturing = [](const QByteArray &address) {
        return "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='10' "
               "xmlns:xlink='http://www.w3.org/1999/xlink'><image width='9' height='9' xlink:href='"
               + address + "'/></svg>";
    };
    const QByteArray pipe = path("pipe").toUtf8();

    expectRefused(write("a.svg", picturing(pipe)));
    expectRefused(write("b.svg", picturing("pipe")));
    expectRefused(write("c.svg", picturing("data:image/png;base64," + picturing(pipe).toBase64())));
    expectRefused(write("d.svg", "<?xml version='1.0'?><?xml-stylesheet type='text/css' href='"
                                     + pipe
                                     + "'?><svg xmlns='http://www.w3.org/2000/svg' width='30' "
                                       "height='10'/>"));
}

TEST_F(PictureTest, AVectorPictureThatCarriesAPictureLoads)
{
    ASSERT_TRUE(sample().save(path("a.png")));
    QFile png(path("a.png"));
    ASSERT_TRUE(png.open(QIODevice::ReadOnly));

    const auto picture = Picture::load(
        write("a.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20' "
                       "xmlns:xlink='http://www.w3.org/1999/xlink'><image width='40' height='20' "
                       "xlink:href='data:image/png;base64,"
                           + png.readAll().toBase64() + "'/></svg>"));

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->image().pixelColor(5, 10), QColor(Qt::red));
}

TEST_F(PictureTest, AFileThatNoPictureFillsIsRefused)
{
    ASSERT_TRUE(sample().save(path("a.bmp")));
    ASSERT_TRUE(QFile::resize(path("a.bmp"), 1LL << 40)); // sparse

    expectRefused(path("a.bmp"));
}

TEST_F(PictureTest, ASideOverTheLimitIsRefusedBeforeItIsDecoded)
{
    ASSERT_TRUE(sample().save(path("a.png")));
    QFile file(path("a.png"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes = file.readAll();
    constexpr qsizetype widthInHeader = 16;
    qToBigEndian<quint32>(16385, bytes.data() + widthInHeader);

    expectRefused(write("claims.png", bytes));
    QImage line(16385, 1, QImage::Format_Grayscale8);
    line.fill(0);
    ASSERT_TRUE(line.save(path("long.png")));
    expectRefused(path("long.png"));
}

TEST_F(PictureTest, ASideAtTheLimitLoads)
{
    QImage line(16384, 1, QImage::Format_Grayscale8);
    line.fill(0);
    ASSERT_TRUE(line.save(path("long.png")));

    EXPECT_TRUE(Picture::load(path("long.png")));
}

TEST_F(PictureTest, APixelOfTheNextLevelIsTheMeanOfFour)
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    image.fill(qRgba(10, 20, 30, 40));
    image.setPixel(0, 0, qRgba(255, 255, 255, 255));
    image.setPixel(1, 0, qRgba(255, 0, 255, 255));
    image.setPixel(1, 1, qRgba(1, 2, 3, 255));
    const QImage level = Picture(image).levelFor({16, 16});
    ASSERT_EQ(level.size(), QSize(16, 16));
    EXPECT_EQ(level.pixel(0, 0), qRgba(130, 69, 136, 201)); // halves go up
    EXPECT_EQ(level.pixel(1, 0), qRgba(10, 20, 30, 40));
}

TEST_F(PictureTest, ALevelOfAnOddPictureStillReachesItsEdges)
{
    QImage image(65, 33, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    QPainter(&image).fillRect(60, 0, 5, 33, Qt::blue);
    const QImage level = Picture(image).levelFor({32, 16});
    ASSERT_EQ(level.size(), QSize(32, 16));
    EXPECT_EQ(level.pixelColor(31, 15), QColor(Qt::blue));
    EXPECT_EQ(level.pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(PictureTest, DrawnSmallItComesFromALevelThatIsNearInSize)
{
    QImage large(1024, 512, QImage::Format_RGB32);
    large.fill(Qt::red);
    const Picture picture(large);

    EXPECT_EQ(picture.levelFor({1024, 512}).size(), QSize(1024, 512));
    EXPECT_EQ(picture.levelFor({900, 450}).size(), QSize(1024, 512));
    EXPECT_EQ(picture.levelFor({512, 256}).size(), QSize(512, 256));
    EXPECT_EQ(picture.levelFor({100, 50}).size(), QSize(128, 64));
    EXPECT_EQ(picture.levelFor({4000, 2000}).size(), QSize(1024, 512));
}

TEST_F(PictureTest, ANewPictureLayerIsNamedFittedAndCentred)
{
    QImage wide(4000, 1000, QImage::Format_RGB32);
    wide.fill(Qt::green);
    ASSERT_TRUE(wide.save(path("Team logo.v2.png")));

    const auto added = document.addImageLayer(QUrl::fromLocalFile(path("Team logo.v2.png")));

    ASSERT_TRUE(added);
    EXPECT_EQ((*added)->name(), QStringLiteral("Team logo.v2"));
    EXPECT_EQ((*added)->size(), QSizeF(960, 240));
    EXPECT_EQ((*added)->position(), QPointF(480, 420));
    EXPECT_EQ((*added)->contentMode(), ImageLayerContentMode::fillCrop);
    EXPECT_EQ((*added)->lockedAspectRatio(), 4);
}

} // namespace
} // namespace tessara
