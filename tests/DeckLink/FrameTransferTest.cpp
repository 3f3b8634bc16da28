#include "virtual-card/FrameTransfer.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstring>
#include <string>

#include <unistd.h>

#include "DeckLink/WatchedBuffer.h"
#include "virtual-card/SharedFrameWriter.h"

namespace tessara::virtualcard {
namespace {

using namespace decklink;

constexpr Mode mode{"tiny", 0, 16, 9, 50000, 1000};
constexpr std::int32_t rowBytes = 64;
constexpr std::size_t size = rowBytes * 9;
constexpr std::chrono::hours withoutEnd{1};

class FrameTransferTest : public testing::Test
{
protected:
    FrameTransferTest()
    {
        EXPECT_TRUE(frames.open("/tessara-test-transfer-" + std::to_string(getpid()), mode, size));
    }

    void send(std::size_t index, FrameTransfer &transfer)
    {
        WatchedBuffer &buffer = buffers[index];
        buffer.AddRef();
        transfer.begin({index + 1, bmdFormat8BitBGRA, mode.width, mode.height, rowBytes}, &buffer,
                       buffer.bytes.data());
    }
    void request(int count)
    {
        const_cast<SharedFramesHeader *>(frames.header())->requested = count;
    }
    bool isCopied(std::size_t index) const
    {
        return frames.header()->ring[(index + 1) % sharedFrameSlots].number == index + 1;
    }
    bool isFree(std::size_t index) const { return buffers[index].references == 1; }

    std::array<WatchedBuffer, 3> buffers{WatchedBuffer(size), WatchedBuffer(size),
                                         WatchedBuffer(size)};
    SharedFrameWriter frames;
};

TEST_F(FrameTransferTest, FramesThatNobodyLooksAtAreNotCopied)
{
    FrameTransfer transfer(frames, withoutEnd);
    for (std::size_t index = 0; index < buffers.size(); ++index)
        send(index, transfer);

    transfer.finish();

    EXPECT_FALSE(isCopied(0));
    EXPECT_FALSE(isCopied(1));
    EXPECT_TRUE(isCopied(2));
    EXPECT_EQ(frames.header()->newest, 3u);
    for (std::size_t index = 0; index < buffers.size(); ++index)
        EXPECT_TRUE(isFree(index)) << index;
}

TEST_F(FrameTransferTest, AFrameIsHeldUntilTheNextOneComes)
{
    FrameTransfer transfer(frames, withoutEnd);
    send(0, transfer);
    EXPECT_FALSE(isFree(0));
    send(1, transfer);
    send(2, transfer); // the second has been taken by then

    while (!isFree(0))
        std::this_thread::yield();

    EXPECT_FALSE(isFree(2));
}

TEST_F(FrameTransferTest, AsManyFramesAreCopiedAsReadersAskFor)
{
    FrameTransfer transfer(frames, withoutEnd);
    request(2);
    for (std::size_t index = 0; index < 2; ++index) {
        send(index, transfer);
        while (!isFree(index))
            std::this_thread::yield();
        EXPECT_TRUE(isCopied(index)) << index;
    }

    send(2, transfer);
    transfer.finish();

    EXPECT_EQ(frames.header()->requested, 0);
    EXPECT_TRUE(isCopied(2));
}

TEST_F(FrameTransferTest, AFrameThatNoOtherFollowsIsCopied)
{
    FrameTransfer transfer(frames, std::chrono::milliseconds{1});

    send(0, transfer);

    while (!isFree(0))
        std::this_thread::yield();
    EXPECT_TRUE(isCopied(0));
    EXPECT_EQ(std::memcmp(slotData(*frames.header(), 1), buffers[0].bytes.data(), size), 0);
}

TEST_F(FrameTransferTest, AnEndKeepsTheNewestFrame)
{
    {
        FrameTransfer transfer(frames, withoutEnd);
        send(0, transfer);
        send(1, transfer);
    }

    EXPECT_TRUE(isCopied(1));
    EXPECT_TRUE(isFree(0));
    EXPECT_TRUE(isFree(1));
}

TEST_F(FrameTransferTest, ASlowCopyHoldsNoCall)
{
    FrameTransfer transfer(frames, withoutEnd);
    request(2);
    buffers[0].isHeld = true;

    send(0, transfer);
    send(1, transfer);
    EXPECT_FALSE(isCopied(1));

    buffers[0].let();
    transfer.finish();
    EXPECT_TRUE(isCopied(1));
}

} // namespace
} // namespace tessara::virtualcard
