#include "DeckLink/VirtualCard.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

#include "DeckLink/DeckLinkAPIDispatch.h"
#include "DeckLink/DeckLinkManager.h"
#include "DeckLink/VirtualCardFixture.h"
#include "DeckLink/WatchedBuffer.h"

namespace tessara {
namespace {

using namespace decklink;

class VirtualCardTest : public VirtualCardFixture
{
protected:
    bool start(int device, const QString &mode = "1080p50", bool enableExternalKeying = false)
    {
        return bridge
            .startOutputForDeviceAtIndex(device, modeID(device, mode), enableExternalKeying)
            .has_value();
    }
    bool send() { return bridge.sendFrameBGRA(frame1080().data, 1920, 1080, 7680).has_value(); }

    DeckLinkBridge bridge;
};

TEST_F(VirtualCardTest, ItHasTwoDevicesOfWhichTheFirstKeys)
{
    const QList<VirtualCardDevice> devices = card.devices();

    ASSERT_EQ(devices.size(), 2);
    EXPECT_EQ(devices.at(0).name, "Virtual Card 1");
    EXPECT_TRUE(devices.at(0).supportsExternalKeying);
    EXPECT_EQ(devices.at(1).name, "Virtual Card 2");
    EXPECT_FALSE(devices.at(1).supportsExternalKeying);
    EXPECT_FALSE(devices.at(0).supportsInternalKeying);
}

TEST_F(VirtualCardTest, ItKeepsWhatItWasSent)
{
    ASSERT_TRUE(start(plainDevice));
    EXPECT_EQ(card.newestFrame(plainDevice), std::nullopt);
    EXPECT_TRUE(card.newestImage(plainDevice).isNull());

    EXPECT_TRUE(send());
    EXPECT_TRUE(send());
    bridge.stopOutput();

    EXPECT_EQ(card.newestFrame(plainDevice)->number, 2);
    EXPECT_EQ(card.frames(plainDevice)->sent, 2);
    EXPECT_EQ(card.newestImage(plainDevice).size(), QSize(1920, 1080));
}

TEST_F(VirtualCardTest, CountsBeginAnewWithEveryStart)
{
    ASSERT_TRUE(start(plainDevice));
    EXPECT_TRUE(send());

    ASSERT_TRUE(start(plainDevice));

    EXPECT_EQ(card.frames(plainDevice)->sent, 0);
    EXPECT_EQ(card.frames(plainDevice)->format, QString());
}

TEST_F(VirtualCardTest, AMonitorShowsTheSamePictureInEveryFormat)
{
    QImage image(1920, 1080, QImage::Format_RGBA8888_Premultiplied);
    image.fill(QColor(200, 100, 50));
    const auto frame = *DeckLinkFrameBuffer::make(image, 1920, 1080);
    for (const QString format : {"BGRA", "ARGB", "2vuy"}) {
        ASSERT_TRUE(card.limit(plainDevice, {.formats = QStringList{format}}));
        ASSERT_TRUE(start(plainDevice));
        ASSERT_TRUE(bridge.sendFrameBGRA(frame.data, 1920, 1080, 7680));

        const QColor shown = card.newestImage(plainDevice).pixelColor(1919, 1079);
        EXPECT_NEAR(shown.red(), 200, 3);
        EXPECT_NEAR(shown.green(), 100, 3);
        EXPECT_NEAR(shown.blue(), 50, 3);
        EXPECT_EQ(shown.alpha(), 255);
    }
}

TEST_F(VirtualCardTest, AFreeRunningCardNeverHoldsACall)
{
    ASSERT_TRUE(start(plainDevice));
    for (int frame = 0; frame < 5; ++frame)
        EXPECT_TRUE(send());

    EXPECT_EQ(card.frames(plainDevice)->waited, 0);
}

TEST_F(VirtualCardTest, AHastyCallerIsHeld)
{
    card.setFreeRunning(false);
    ASSERT_TRUE(start(plainDevice, "1080p23.98"));

    for (int frame = 0; frame < 5; ++frame)
        EXPECT_TRUE(send());

    const VirtualCardFrames frames = *card.frames(plainDevice);
    EXPECT_GT(frames.waited, 0);
    EXPECT_GT(frames.intervals.p50, 0);
    EXPECT_LE(frames.intervals.p50, frames.intervals.p99);
    EXPECT_LE(frames.intervals.p99, frames.intervals.max);
}

TEST_F(VirtualCardTest, UnknownCallsAndDevicesAreRefused)
{
    EXPECT_FALSE(card.fail(0, "NoSuchCall", 1));
    EXPECT_FALSE(card.fail(7, "DisplayVideoFrameSync", 1));
    EXPECT_FALSE(card.fail(noDevice, "DisplayVideoFrameSync", 1));
    EXPECT_FALSE(card.fail(0, "Iterator.Next", 1));
    EXPECT_FALSE(card.fail(0, "DisplayVideoFrameSync", -1));
    EXPECT_FALSE(card.remove(2));
    EXPECT_FALSE(card.restore(-1));
    EXPECT_EQ(card.frames(2), std::nullopt);
    EXPECT_EQ(card.newestFrame(2), std::nullopt);
}

TEST_F(VirtualCardTest, UnknownLimitsAreRefused)
{
    EXPECT_FALSE(card.limit(0, {.modes = QStringList{"1080p51"}}));
    EXPECT_FALSE(card.limit(0, {.formats = QStringList{"r210"}}));
    EXPECT_FALSE(card.limit(0, {.rowBytes = -1}));
    EXPECT_FALSE(card.limit(2, {}));
}

TEST_F(VirtualCardTest, EveryNamedCallCanFail)
{
    for (const QString call : {"CreateVideoFrame",
                               "CreateVideoFrameWithBuffer",
                               "DisableVideoOutput",
                               "DisplayModeIterator.Next",
                               "DisplayVideoFrameSync",
                               "DoesSupportVideoMode",
                               "EnableVideoOutput",
                               "GetDisplayMode",
                               "GetDisplayModeIterator",
                               "GetDisplayName",
                               "GetFlag",
                               "GetFrameRate",
                               "GetInt",
                               "GetModelName",
                               "GetName",
                               "GetReferenceStatus",
                               "Keyer.Disable",
                               "Keyer.Enable",
                               "Keyer.RampDown",
                               "Keyer.RampUp",
                               "Keyer.SetLevel",
                               "QueryInterface.IDeckLinkKeyer",
                               "QueryInterface.IDeckLinkOutput",
                               "QueryInterface.IDeckLinkProfileAttributes",
                               "RowBytesForPixelFormat"})
        EXPECT_TRUE(card.fail(0, call, 1)) << call.toStdString();
}

TEST_F(VirtualCardTest, AFailureThatWasTakenBackDoesNotHappen)
{
    ASSERT_TRUE(card.fail(0, "EnableVideoOutput", 3));
    ASSERT_TRUE(card.fail(0, "EnableVideoOutput", 0));

    EXPECT_TRUE(start(0));
}

TEST_F(VirtualCardTest, LimitsWaitForTheNextStart)
{
    ASSERT_TRUE(start(plainDevice));
    ASSERT_TRUE(card.limit(plainDevice, {.formats = QStringList{"2vuy"}, .rowBytes = 3904}));

    EXPECT_TRUE(send());
    EXPECT_EQ(card.frames(plainDevice)->format, "BGRA");

    ASSERT_TRUE(start(plainDevice));
    EXPECT_TRUE(send());
    EXPECT_EQ(card.frames(plainDevice)->format, "2vuy");
    EXPECT_EQ(card.frames(plainDevice)->rowBytes, 3904);
}

TEST_F(VirtualCardTest, AnOutputThatAnotherProcessHoldsIsDenied)
{
    const QByteArray lock = ("/" + testChannel() + "-card-1-lock").toLatin1();
    const int file = shm_open(lock.constData(), O_CREAT | O_RDWR, S_IRUSR | S_IWUSR);
    ASSERT_EQ(flock(file, LOCK_EX | LOCK_NB), 0);

    EXPECT_FALSE(start(plainDevice));
    EXPECT_TRUE(start(keyingDevice));

    close(file);
    EXPECT_TRUE(start(plainDevice));
}

TEST_F(VirtualCardTest, FramesAreForTheUsersEyesOnly)
{
    ASSERT_TRUE(start(plainDevice));

    const QByteArray name = ("/" + testChannel() + "-card-1").toLatin1();
    const int file = shm_open(name.constData(), O_RDONLY, 0);
    struct stat status = {};
    ASSERT_EQ(fstat(file, &status), 0);
    close(file);

    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(VirtualCardTest, TheChannelStaysWhileAnOutputIsOpen)
{
    ASSERT_TRUE(start(plainDevice));
    EXPECT_FALSE(card.setChannel("another"));

    bridge.stopOutput();
    EXPECT_FALSE(card.setChannel("no/path"));
    EXPECT_FALSE(card.setChannel(""));
    EXPECT_TRUE(card.setChannel(testChannel() + "-another"));
    EXPECT_TRUE(card.setChannel(testChannel()));
}

TEST_F(VirtualCardTest, ItsObjectsAnswerForEveryInterfaceTheyHave)
{
    const DeckLinkReference<IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    DeckLinkReference<IDeckLink> device;
    ASSERT_EQ(iterator->Next(device.receive()), S_OK);

    const auto output = device.query<IDeckLinkOutput>();
    ASSERT_TRUE(output);
    EXPECT_TRUE(output.query<IDeckLink>());
    EXPECT_TRUE(output.query<IDeckLinkKeyer>());
    EXPECT_TRUE(output.query<IDeckLinkProfileAttributes>());
    EXPECT_FALSE(output.query<IDeckLinkVideoBuffer>());

    DeckLinkReference<IDeckLink> second;
    ASSERT_EQ(iterator->Next(second.receive()), S_OK);
    EXPECT_FALSE(second.query<IDeckLinkKeyer>());
    EXPECT_EQ(iterator->Next(second.receive()), S_FALSE);
}

TEST_F(VirtualCardTest, ItsOwnFramesHaveMemoryToFill)
{
    const DeckLinkReference<IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    DeckLinkReference<IDeckLink> device;
    ASSERT_EQ(iterator->Next(device.receive()), S_OK);
    const auto output = device.query<IDeckLinkOutput>();
    DeckLinkReference<IDeckLinkMutableVideoFrame> frame;
    ASSERT_EQ(output->CreateVideoFrame(16, 9, 64, bmdFormat8BitBGRA, 0, frame.receive()), S_OK);

    const auto buffer = frame.query<IDeckLinkVideoBuffer>();
    void *bytes = nullptr;
    EXPECT_EQ(buffer->GetBytes(&bytes), E_ACCESSDENIED);
    EXPECT_EQ(buffer->StartAccess(bmdBufferAccessWrite), S_OK);
    EXPECT_EQ(buffer->GetBytes(&bytes), S_OK);
    std::memset(bytes, 1, 64 * 9);
    EXPECT_EQ(buffer->EndAccess(bmdBufferAccessRead), E_INVALIDARG);
    EXPECT_EQ(buffer->EndAccess(bmdBufferAccessWrite), S_OK);
    EXPECT_EQ(output->DisplayVideoFrameSync(frame.get()), E_ACCESSDENIED);
}

TEST_F(VirtualCardTest, FetchesAFrameByItself)
{
    const DeckLinkReference<IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    DeckLinkReference<IDeckLink> device;
    ASSERT_EQ(iterator->Next(device.receive()), S_OK);
    const auto output = device.query<IDeckLinkOutput>();
    ASSERT_EQ(output->EnableVideoOutput(fourCharacters("Hp50"), 0), S_OK);
    WatchedBuffer buffer(std::size_t(1920) * 1080 * 4);
    DeckLinkReference<IDeckLinkMutableVideoFrame> frame;
    ASSERT_EQ(output->CreateVideoFrameWithBuffer(1920, 1080, 1920 * 4, bmdFormat8BitBGRA, 0,
                                                 &buffer, frame.receive()),
              S_OK);

    ASSERT_EQ(output->DisplayVideoFrameSync(frame.get()), S_OK);
    frame.reset();

    const std::optional<VirtualCardFrame> shown = card.newestFrame(keyingDevice);
    EXPECT_EQ(shown->bytes, QByteArray(buffer.bytes.data(), qsizetype(buffer.bytes.size())));
    EXPECT_NE(buffer.reader.load(), std::thread::id());
    EXPECT_NE(buffer.reader.load(), std::this_thread::get_id());
    EXPECT_EQ(buffer.references, 1u);
}

TEST_F(VirtualCardTest, AFrameIsFetchedWholeBeforeItsOutputCloses)
{
    ASSERT_TRUE(start(plainDevice));
    EXPECT_TRUE(send());
    bridge.stopOutput();

    const FrameBytes sent = frame1080().data;
    EXPECT_EQ(card.newestFrame(plainDevice)->bytes,
              QByteArray::fromRawData(reinterpret_cast<const char *>(sent.data()), sent.size()));
}

TEST_F(VirtualCardTest, AKeyingOutputTakesNoFormatWithoutAlpha)
{
    const DeckLinkReference<IDeckLinkIterator> iterator(CreateDeckLinkIteratorInstance());
    DeckLinkReference<IDeckLink> device;
    ASSERT_EQ(iterator->Next(device.receive()), S_OK);
    const auto output = device.query<IDeckLinkOutput>();
    const auto keyer = device.query<IDeckLinkKeyer>();
    ASSERT_EQ(output->EnableVideoOutput(fourCharacters("Hp50"), 0), S_OK);
    ASSERT_EQ(keyer->Enable(true), S_OK);
    DeckLinkReference<IDeckLinkMutableVideoFrame> frame;
    output->CreateVideoFrame(1920, 1080, 3840, bmdFormat8BitYUV, 0, frame.receive());

    EXPECT_EQ(output->DisplayVideoFrameSync(frame.get()), E_INVALIDARG);
    EXPECT_EQ(keyer->Enable(false), E_INVALIDARG);
}

} // namespace
} // namespace tessara
