#include "DeckLink/SharedFrameReader.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <thread>

#include "DeckLink/DeckLinkAPI.h"
#include "DeckLink/VirtualCardFixture.h"
#include "virtual-card/SharedFrames.h"

namespace tessara {
namespace {

class SharedFrameReaderTest : public VirtualCardFixture
{
protected:
    SharedFrameReaderTest()
    {
        // Frames that an earlier test left belong to its channel.
        EXPECT_TRUE(card.setChannel(testChannel() + "-cleared"));
        EXPECT_TRUE(card.setChannel(testChannel()));
    }
    void start(const QString &mode = "1080p50", bool enableExternalKeying = false)
    {
        ASSERT_TRUE(bridge.startOutputForDeviceAtIndex(keyingDevice, modeID(keyingDevice, mode),
                                                       enableExternalKeying));
    }
    void send(QColor colour, QSize size = {1920, 1080})
    {
        QImage image(size, QImage::Format_RGBA8888_Premultiplied);
        image.fill(colour);
        const auto frame = *DeckLinkFrameBuffer::make(image, size.width(), size.height());
        ASSERT_TRUE(bridge.sendFrameBGRA(frame.data, frame.width, frame.height, frame.rowBytes));
        ASSERT_GT(card.frames(keyingDevice)->sent, 0); // answers when the card has fetched it
    }

    DeckLinkBridge bridge;
    SharedFrameReader reader{keyingDevice, testChannel()};
};

TEST_F(SharedFrameReaderTest, BeforeAnyOutputThereIsNothing)
{
    EXPECT_EQ(reader.status(), std::nullopt);
    EXPECT_FALSE(reader.newestFrame());
}

TEST_F(SharedFrameReaderTest, AnOpenOutputIsDescribedBeforeItsFirstFrame)
{
    start("1080p59.94", true);

    const SharedFrameStatus status = *reader.status();
    EXPECT_TRUE(status.isOutputEnabled);
    EXPECT_TRUE(status.isKeying);
    EXPECT_EQ(status.modeName, "1080p59.94");
    EXPECT_EQ(status.width, 1920);
    EXPECT_EQ(status.height, 1080);
    EXPECT_DOUBLE_EQ(status.rate, 60000.0 / 1001);
    EXPECT_EQ(status.number, 0u);
    EXPECT_FALSE(reader.newestFrame());
}

TEST_F(SharedFrameReaderTest, TheNewestFrameIsShown)
{
    start();
    for (const QColor colour : {QColor(1, 2, 3), QColor(40, 50, 60), QColor(7, 8, 9),
                                QColor(100, 110, 120), QColor(13, 14, 15)}) {
        send(colour);
        EXPECT_EQ(reader.newestFrame()->fill.pixelColor(1919, 1079), colour);
    }

    const SharedFrame frame = *reader.newestFrame();
    EXPECT_EQ(frame.status.number, 5u);
    EXPECT_EQ(frame.status.pixelFormat, decklink::bmdFormat8BitBGRA);
    EXPECT_EQ(frame.fill.size(), QSize(1920, 1080));
    EXPECT_TRUE(frame.key.isNull());
}

TEST_F(SharedFrameReaderTest, AReaderThatComesLaterSeesTheNewestFrame)
{
    start();
    ASSERT_TRUE(bridge.sendFrameBGRA(frame1080().data, 1920, 1080, 7680));

    while (!reader.newestFrame())
        std::this_thread::yield();

    EXPECT_EQ(reader.newestFrame()->status.number, 1u);
}

TEST_F(SharedFrameReaderTest, AKeyingOutputHasAKeyAsWell)
{
    start("1080p50", true);

    send(QColor(200, 100, 50, 128));

    EXPECT_EQ(reader.newestFrame()->key.pixelColor(5, 5), QColor(128, 128, 128));
}

TEST_F(SharedFrameReaderTest, AStoppedOutputKeepsItsLastFrame)
{
    start();
    send(Qt::red);

    bridge.stopOutput();

    EXPECT_FALSE(reader.status()->isOutputEnabled);
    EXPECT_EQ(reader.newestFrame()->fill.pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(SharedFrameReaderTest, ItFollowsEveryRestart)
{
    start();
    send(Qt::red);
    EXPECT_EQ(reader.status()->modeName, "1080p50");

    start("720p50");
    send(Qt::blue, {1280, 720});

    EXPECT_EQ(reader.status()->modeName, "720p50");
    EXPECT_EQ(reader.newestFrame()->fill.size(), QSize(1280, 720));
    EXPECT_EQ(reader.newestFrame()->fill.pixelColor(0, 0), QColor(Qt::blue));
}

TEST_F(SharedFrameReaderTest, ACleanEndLeavesNothingBehind)
{
    start();
    send(Qt::red);
    EXPECT_TRUE(reader.newestFrame());
    bridge.stopOutput();

    EXPECT_TRUE(card.setChannel(testChannel() + "-elsewhere"));

    EXPECT_EQ(reader.status(), std::nullopt);
}

TEST_F(SharedFrameReaderTest, AnotherDeviceHasFramesOfItsOwn)
{
    start();
    send(Qt::red);

    EXPECT_EQ(SharedFrameReader(plainDevice, testChannel()).status(), std::nullopt);
}

/// A segment that no card has written.
class ForeignSegmentTest : public SharedFrameReaderTest
{
protected:
    using Header = virtualcard::SharedFramesHeader;

    ForeignSegmentTest()
    {
        const int file = shm_open(name.c_str(), O_CREAT | O_EXCL | O_RDWR, S_IRUSR | S_IWUSR);
        EXPECT_EQ(ftruncate(file, size), 0);
        header =
            static_cast<Header *>(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
        close(file);
        header->version = virtualcard::sharedFramesVersion;
        header->totalBytes = size;
        header->firstSlotOffset = 4096;
        header->slotBytes = 4096;
        header->writer = getpid();
        header->isEnabled = 1;
        header->magic = virtualcard::sharedFramesMagic;
    }
    ~ForeignSegmentTest() override
    {
        munmap(header, size);
        shm_unlink(name.c_str());
    }
    void claimFrame(qint32 width, qint32 height, qint32 rowBytes)
    {
        header->ring[1].number = 1;
        header->ring[1].pixelFormat = decklink::bmdFormat8BitBGRA;
        header->ring[1].width = width;
        header->ring[1].height = height;
        header->ring[1].rowBytes = rowBytes;
        header->newest = 1;
    }

    static constexpr qsizetype size = 4 * 4096;
    const std::string name =
        virtualcard::sharedFramesName((testChannel() + "-foreign").toStdString(), 0);
    Header *header = nullptr;
    SharedFrameReader foreign{0, testChannel() + "-foreign"};
};

TEST_F(ForeignSegmentTest, ASoundOneIsRead)
{
    claimFrame(4, 4, 16);

    EXPECT_TRUE(foreign.status()->isOutputEnabled);
    EXPECT_EQ(foreign.newestFrame()->fill.size(), QSize(4, 4));
}

TEST_F(ForeignSegmentTest, EveryLookAsksForTheNextFrames)
{
    foreign.status();
    EXPECT_EQ(header->requested, virtualcard::framesOfARequest);

    header->requested = 3;
    EXPECT_FALSE(foreign.newestFrame());
    EXPECT_EQ(header->requested, virtualcard::framesOfARequest);
}

TEST_F(ForeignSegmentTest, AnotherVersionIsNotRead)
{
    header->version = virtualcard::sharedFramesVersion + 1;

    EXPECT_EQ(foreign.status(), std::nullopt);
}

TEST_F(ForeignSegmentTest, OneThatClaimsMoreThanItHasIsNotRead)
{
    header->slotBytes = 8192;

    EXPECT_EQ(foreign.status(), std::nullopt);
}

TEST_F(ForeignSegmentTest, AFrameLargerThanItsSlotIsNotRead)
{
    claimFrame(64, 64, 256);

    EXPECT_FALSE(foreign.newestFrame());
}

TEST_F(ForeignSegmentTest, PixelsBeyondTheirRowsAreNotShown)
{
    claimFrame(64, 4, 16);

    EXPECT_TRUE(foreign.newestFrame()->fill.isNull());
}

TEST_F(ForeignSegmentTest, AFrameThatIsBeingWrittenIsNotRead)
{
    claimFrame(4, 4, 16);
    header->ring[1].lock = 1;

    EXPECT_FALSE(foreign.newestFrame());
}

TEST_F(ForeignSegmentTest, AWriterThatIsGoneHasNoOutput)
{
    header->writer = 0x7FFFFFFE;

    EXPECT_FALSE(foreign.status()->isOutputEnabled);
}

} // namespace
} // namespace tessara
