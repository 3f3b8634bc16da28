#include "DeckLink/DeckLinkBridge.h"

#include "DeckLink/VirtualCardFixture.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tessara {
namespace {

constexpr int width = 1920;
constexpr int height = 1080;
constexpr int rowBytes = width * 4;

class DeckLinkBridgeSendTest : public VirtualCardFixture
{
protected:
    void start(const VirtualCardLimits &limits = {}, bool enableExternalKeying = false)
    {
        ASSERT_TRUE(card.limit(keyingDevice, limits));
        ASSERT_TRUE(bridge.startOutputForDeviceAtIndex(keyingDevice, house, enableExternalKeying));
    }
    QString send(const FrameBytes &data, int w = width, int h = height, int stride = rowBytes)
    {
        const DeckLinkBridge::Result result = bridge.sendFrameBGRA(data, w, h, stride);
        return result ? QString() : result.error();
    }
    QByteArray sentBytes() const { return card.newestFrame(keyingDevice)->bytes; }

    /// Bytes that are only claimed: whoever touched them would crash.
    static FrameBytes untouchable(qsizetype size)
    {
        const auto address = reinterpret_cast<const quint8 *>(quintptr(64));
        return FrameBytes(std::shared_ptr<const quint8>(address, [](const quint8 *) {}), size);
    }

    const qint64 house = modeID(keyingDevice, "1080p50");
    const FrameBytes picture = frame1080().data;
    DeckLinkBridge bridge;
};

TEST_F(DeckLinkBridgeSendTest, AClosedOutputNeverTouchesTheData)
{
    EXPECT_EQ(send(untouchable(rowBytes * height)), "DeckLink output is not active.");
}

TEST_F(DeckLinkBridgeSendTest, DimensionsBelowOneAreInvalid)
{
    start();

    EXPECT_EQ(send(picture, 0, height, rowBytes), "Invalid frame dimensions.");
    EXPECT_EQ(send(picture, width, 0, rowBytes), "Invalid frame dimensions.");
    EXPECT_EQ(send(picture, width, height, 0), "Invalid frame dimensions.");
    EXPECT_EQ(send(picture, -width, height, rowBytes), "Invalid frame dimensions.");
}

TEST_F(DeckLinkBridgeSendTest, DataThatIsShortByOneByteIsTooSmall)
{
    start();

    EXPECT_EQ(send(untouchable(qsizetype(rowBytes) * height - 1)), "Frame buffer is too small.");
    EXPECT_EQ(send(FrameBytes()), "Frame buffer is too small.");
}

TEST_F(DeckLinkBridgeSendTest, BGRAReachesTheCardByteForByte)
{
    start();

    EXPECT_EQ(send(picture), QString());

    const VirtualCardFrames frames = *card.frames(keyingDevice);
    EXPECT_EQ(frames.format, "BGRA");
    EXPECT_EQ(frames.width, width);
    EXPECT_EQ(frames.height, height);
    EXPECT_EQ(frames.rowBytes, rowBytes);
    EXPECT_EQ(frames.sent, 1);
    ASSERT_EQ(sentBytes().size(), picture.size());
    EXPECT_EQ(std::memcmp(sentBytes().constData(), picture.data(), size_t(picture.size())), 0);
}

TEST_F(DeckLinkBridgeSendTest, ARGBTurnsEveryPixelRound)
{
    start({.formats = QStringList{"ARGB", "2vuy"}});

    EXPECT_EQ(send(picture), QString());

    EXPECT_EQ(card.frames(keyingDevice)->format, "ARGB");
    const QByteArray bytes = sentBytes();
    ASSERT_EQ(bytes.size(), picture.size());
    for (qsizetype index = 0; index < picture.size(); ++index)
        ASSERT_EQ(quint8(bytes[index]), picture.data()[index / 4 * 4 + 3 - index % 4]) << index;
}

/// The four bytes of one pair, by the arithmetic as it is written down: 32 bits, wrapping round.
std::array<quint8, 4> yuvPair(const quint8 *one, const quint8 *two)
{
    const auto y = [](const quint8 *p) {
        return ((66u * p[2] + 129u * p[1] + 25u * p[0] + 128u) >> 8) + 16u;
    };
    const auto u = [](const quint8 *p) {
        return (112u * p[0] - 74u * p[1] - 38u * p[2] + 128u) >> 8;
    };
    const auto v = [](const quint8 *p) {
        return (112u * p[2] - 94u * p[1] - 18u * p[0] + 128u) >> 8;
    };
    return {quint8(((u(one) + u(two)) >> 1) ^ 128u), quint8(y(one)),
            quint8(((v(one) + v(two)) >> 1) ^ 128u), quint8(y(two))};
}

TEST_F(DeckLinkBridgeSendTest, YUVHasThePairsOfEveryRow)
{
    start({.formats = QStringList{"2vuy"}});

    EXPECT_EQ(send(picture), QString());

    const QByteArray bytes = sentBytes();
    ASSERT_EQ(bytes.size(), qsizetype(width) * 2 * height);
    for (qsizetype pair = 0; pair < qsizetype(width) / 2 * height; ++pair) {
        const quint8 *source = picture.data() + pair * 8;
        const auto expected = yuvPair(source, source + 4);
        ASSERT_TRUE(std::ranges::equal(expected, bytes.mid(pair * 4, 4), {}, {}, [](char byte) {
            return quint8(byte);
        })) << pair;
    }
}

TEST_F(DeckLinkBridgeSendTest, AnOddWidthInYUVIsPaddedWithZerosToTheDevicesRows)
{
    constexpr int oddWidth = 1921;
    constexpr int stride = oddWidth * 4;
    const FrameBytes odd = patternOfBytes(qsizetype(stride) * height);
    start({.formats = QStringList{"2vuy"}, .rowBytes = 3848, .acceptsAnySize = true});

    EXPECT_EQ(send(odd, oddWidth, height, stride), QString());

    const VirtualCardFrame frame = *card.newestFrame(keyingDevice);
    EXPECT_EQ(frame.rowBytes, 3848);
    for (const int y : {0, 1, height - 1}) {
        const QByteArray row = frame.bytes.mid(qsizetype(y) * 3848, 3848);
        const quint8 *last = odd.data() + qsizetype(y) * stride + qsizetype(oddWidth - 1) * 4;
        const auto expected = yuvPair(last, last);
        const QByteArray pair(reinterpret_cast<const char *>(expected.data()), 4);
        EXPECT_EQ(row.mid(3840), pair + QByteArray(4, '\0'));
    }
}

TEST_F(DeckLinkBridgeSendTest, LongerDeviceRowsEndInZeros)
{
    start({.rowBytes = 7744});

    EXPECT_EQ(send(picture), QString());

    const VirtualCardFrame frame = *card.newestFrame(keyingDevice);
    ASSERT_EQ(frame.rowBytes, 7744);
    for (const qsizetype y : {0, 537, height - 1}) {
        const auto *row = reinterpret_cast<const char *>(picture.data()) + y * rowBytes;
        EXPECT_EQ(frame.bytes.mid(y * 7744, 7744),
                  QByteArray(row, rowBytes) + QByteArray(64, '\0'));
    }
}

TEST_F(DeckLinkBridgeSendTest, ShorterDeviceRowsCutTheRest)
{
    const FrameBytes wide = patternOfBytes(qsizetype(7744) * height);
    start();

    EXPECT_EQ(send(wide, width, height, 7744), QString());

    const VirtualCardFrame frame = *card.newestFrame(keyingDevice);
    ASSERT_EQ(frame.rowBytes, rowBytes);
    EXPECT_EQ(std::memcmp(frame.bytes.constData() + rowBytes, wide.data() + 7744, rowBytes), 0);
}

TEST_F(DeckLinkBridgeSendTest, AnExternalKeyFillArrivesWithItsAlphaUpsideDown)
{
    QImage image(width, height, QImage::Format_RGBA8888_Premultiplied);
    image.fill(Qt::transparent);
    image.setPixelColor(0, 0, QColor(200, 100, 50, 255));
    start({}, true);

    const auto fill = *DeckLinkFrameBuffer::makeExternalKeyFill(image, width, height);
    EXPECT_EQ(send(fill.data), QString());

    EXPECT_EQ(sentBytes().left(4), QByteArray("\x32\x64\xC8\x00", 4));
    EXPECT_EQ(sentBytes().mid(qsizetype(height - 1) * rowBytes, 4),
              QByteArray("\x00\x00\x00\xFF", 4));
}

TEST_F(DeckLinkBridgeSendTest, AKeyArrivesAsOpaqueGrey)
{
    QImage image(width, height, QImage::Format_RGBA8888_Premultiplied);
    image.fill(QColor(10, 20, 30, 0x80));
    start();

    const auto key = *DeckLinkFrameBuffer::makeAlphaKey(image, width, height);
    EXPECT_EQ(send(key.data), QString());

    EXPECT_EQ(sentBytes().left(4), QByteArray("\x80\x80\x80\xFF", 4));
}

TEST_F(DeckLinkBridgeSendTest, RowsTooShortForTheirPixelsAreInvalidWhereTheyAreConverted)
{
    for (const QString format : {"ARGB", "2vuy"}) {
        start({.formats = QStringList{format}});
        EXPECT_EQ(send(picture, width, height, rowBytes - 1), "Invalid frame dimensions.");
    }
}

TEST_F(DeckLinkBridgeSendTest, WhatIsTooLargeForTheMemoryIsTold)
{
    constexpr int longRow = 65536;
    constexpr int manyRows = 32768;
    const FrameBytes claimed = untouchable(qsizetype(longRow) * manyRows);

    start({.formats = QStringList{"ARGB"}});
    EXPECT_EQ(send(claimed, width, manyRows, longRow), "Could not allocate ARGB frame buffer.");

    start({.formats = QStringList{"2vuy"}});
    EXPECT_EQ(send(untouchable(qsizetype(4) * longRow * manyRows), longRow, manyRows, longRow * 4),
              "Could not allocate YUV frame buffer.");

    start({.rowBytes = longRow});
    EXPECT_EQ(send(claimed, width, manyRows, rowBytes), "Could not allocate frame buffer.");

    EXPECT_EQ(send(picture), QString());
}

TEST_F(DeckLinkBridgeSendTest, EveryFailingCallHasItsTextAndTheNextFrameGoesOut)
{
    start();
    for (const QString call :
         {"RowBytesForPixelFormat", "CreateVideoFrameWithBuffer", "DisplayVideoFrameSync"}) {
        ASSERT_TRUE(card.fail(keyingDevice, call, 2));
        EXPECT_EQ(send(picture), call + " failed.");
        EXPECT_EQ(send(picture), call + " failed.");
        EXPECT_EQ(send(picture), QString());
    }
    EXPECT_EQ(card.frames(keyingDevice)->sent, 3);
}

TEST_F(DeckLinkBridgeSendTest, AFrameOfAnotherSizeIsRefusedByTheCard)
{
    start();

    EXPECT_EQ(send(picture, 1280, 720, 1280 * 4), "DisplayVideoFrameSync failed.");
}

TEST_F(DeckLinkBridgeSendTest, NothingOfAFrameIsHeldOnceItIsFetched)
{
    start();
    const qint64 objects = card.liveObjects();
    const FrameBytes frame = patternOfBytes(qsizetype(rowBytes) * height);
    std::weak_ptr<const quint8> watched;
    {
        const std::shared_ptr<const quint8> owner(frame.data(), [](const quint8 *) {});
        watched = owner;
        EXPECT_EQ(send(FrameBytes(owner, frame.size())), QString());
    }

    EXPECT_EQ(card.liveObjects(), objects);
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace tessara
