#include "DeckLink/DeckLinkNSDataVideoBuffer.h"

#include "DeckLink/DeckLinkReference.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

using namespace decklink;

class DeckLinkNSDataVideoBufferTest : public testing::Test
{
protected:
    FrameBytes data = FrameBytes::zeroed(64);
    DeckLinkReference<IDeckLinkVideoBuffer> buffer{new DeckLinkNSDataVideoBuffer(data)};
};

TEST_F(DeckLinkNSDataVideoBufferTest, ItCountsItsReferencesFromOne)
{
    EXPECT_EQ(buffer->AddRef(), 2u);
    EXPECT_EQ(buffer->Release(), 1u);
}

TEST_F(DeckLinkNSDataVideoBufferTest, ItIsABufferAndAnObjectAndNothingElse)
{
    for (const REFIID &known : {IDeckLinkVideoBuffer::iid, decklink::IUnknown::iid}) {
        void *object = nullptr;
        EXPECT_EQ(buffer->QueryInterface(known, &object), 0);
        EXPECT_EQ(object, buffer.get());
        EXPECT_EQ(buffer->Release(), 1u);
    }

    void *object = &data;
    EXPECT_EQ(buffer->QueryInterface(IDeckLinkVideoFrame::iid, &object), HRESULT(0x80000004));
    EXPECT_EQ(object, nullptr);
}

TEST_F(DeckLinkNSDataVideoBufferTest, TheBytesAreTheFramesOwn)
{
    void *bytes = nullptr;

    EXPECT_EQ(buffer->StartAccess(bmdBufferAccessRead), 0);
    EXPECT_EQ(buffer->GetBytes(&bytes), 0);
    EXPECT_EQ(buffer->EndAccess(bmdBufferAccessRead), 0);

    EXPECT_EQ(bytes, data.data());
    EXPECT_EQ(quintptr(bytes) % FrameBytes::alignment, 0u);
}

TEST_F(DeckLinkNSDataVideoBufferTest, AnAddressToStoreTheBytesIsNeeded)
{
    EXPECT_EQ(buffer->GetBytes(nullptr), HRESULT(0x80000005));
}

TEST_F(DeckLinkNSDataVideoBufferTest, WithoutDataThereAreNoBytes)
{
    DeckLinkReference<IDeckLinkVideoBuffer> empty{new DeckLinkNSDataVideoBuffer(FrameBytes())};
    void *bytes = &data;

    EXPECT_EQ(empty->GetBytes(&bytes), HRESULT(0x80000008));

    EXPECT_EQ(bytes, nullptr);
}

TEST_F(DeckLinkNSDataVideoBufferTest, TheLastReferenceReleasesTheData)
{
    bool isReleased = false;
    std::shared_ptr<const quint8> owner(new quint8(0), [&](const quint8 *byte) {
        isReleased = true;
        delete byte;
    });
    DeckLinkReference<IDeckLinkVideoBuffer> holder{
        new DeckLinkNSDataVideoBuffer(FrameBytes(std::move(owner), 1))};
    holder->AddRef();

    EXPECT_EQ(holder->Release(), 1u);
    EXPECT_FALSE(isReleased);

    holder.reset();
    EXPECT_TRUE(isReleased);
}

} // namespace
} // namespace tessara
