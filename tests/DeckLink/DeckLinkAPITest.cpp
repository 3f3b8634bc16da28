#include "DeckLink/DeckLinkAPI.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

namespace tessara::decklink {
namespace {

/// Where the compiler put a virtual method: its pointer holds the offset in the table, plus one.
template <typename Method>
std::ptrdiff_t slot(Method method)
{
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &method, sizeof offset);
    return (offset - 1) / std::ptrdiff_t(sizeof(void *));
}

/// One more method behind an interface shows how long its table is.
template <typename Interface>
struct Longer : Interface
{
    virtual void next() = 0;
};
template <typename Interface>
std::ptrdiff_t length()
{
    return slot(&Longer<Interface>::next);
}

template <typename... Methods>
void expectInOrder(std::ptrdiff_t first, Methods... methods)
{
    for (const std::ptrdiff_t found : {slot(methods)...})
        EXPECT_EQ(found, first++);
}

std::string text(const REFIID &identifier)
{
    std::string text;
    for (std::size_t index = 0; index < identifier.bytes.size(); ++index) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", identifier.bytes[index]);
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += digits;
    }
    return text;
}

TEST(DeckLinkAPITest, TypesHaveTheDriversSizes)
{
    EXPECT_EQ(sizeof(HRESULT), 4u);
    EXPECT_TRUE(std::is_signed_v<HRESULT>);
    EXPECT_EQ(sizeof(ULONG), 8u);
    EXPECT_EQ(sizeof(bool), 1u);
    EXPECT_EQ(sizeof(long), 8u);
    EXPECT_EQ(sizeof(BMDTimeValue), 8u);
    EXPECT_EQ(sizeof(BMDTimeScale), 8u);
    EXPECT_TRUE((std::is_same_v<BMDDisplayMode, std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<BMDPixelFormat, std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<BMDTimecodeUserBits, std::uint32_t>));
}

TEST(DeckLinkAPITest, AnIdentifierTravelsInTwoRegisters)
{
    EXPECT_EQ(sizeof(REFIID), 16u);
    EXPECT_EQ(alignof(REFIID), 1u);
    EXPECT_TRUE(std::is_trivially_copyable_v<REFIID>);
}

TEST(DeckLinkAPITest, IdentifiersAreTheirTextByteForByte)
{
    EXPECT_EQ(IDeckLinkOutput::iid.bytes[0], 0x1A);
    EXPECT_EQ(IDeckLinkOutput::iid.bytes[15], 0x3F);
    EXPECT_EQ(text(IUnknown::iid), "00000000-0000-0000-C000-000000000046");
    EXPECT_EQ(text(IDeckLink::iid), "C418FBDD-0587-48ED-8FE5-640F0A14AF91");
    EXPECT_EQ(text(IDeckLinkIterator::iid), "50FB36CD-3063-4B73-BDBB-958087F2D8BA");
    EXPECT_EQ(text(IDeckLinkOutput::iid), "1A8077F1-9FE2-4533-8147-2294305E253F");
    EXPECT_EQ(text(IDeckLinkDisplayModeIterator::iid), "9C88499F-F601-4021-B80B-032E4EB41C35");
    EXPECT_EQ(text(IDeckLinkDisplayMode::iid), "3EB2C1AB-0A3D-4523-A3AD-F40D7FB14E78");
    EXPECT_EQ(text(IDeckLinkProfileAttributes::iid), "17D4BF8E-4911-473A-80A0-731CF6FF345B");
    EXPECT_EQ(text(IDeckLinkKeyer::iid), "89AFCAF5-65F8-421E-98F7-96FE5F5BFBA3");
    EXPECT_EQ(text(IDeckLinkVideoBuffer::iid), "CCB4B64A-5C86-4E02-B778-885D352709FE");
    EXPECT_EQ(text(IDeckLinkVideoFrame::iid), "6502091C-615F-4F51-BAF6-45C4256DD5B0");
    EXPECT_EQ(text(IDeckLinkMutableVideoFrame::iid), "CF9EB134-0374-4C5B-95FA-1EC14819FF62");
    EXPECT_EQ(text(IDeckLinkVideoOutputCallback::iid), "5BE6DF26-02CE-433E-99D9-9A87C3AC171F");
    EXPECT_EQ(text(IDeckLinkAPIInformation::iid), "7BEA3C68-730D-4322-AF34-8A7152B532A4");
}

TEST(DeckLinkAPITest, CodesAreTheDriversNumbers)
{
    EXPECT_EQ(bmdFormat8BitBGRA, 0x42475241u);
    EXPECT_EQ(bmdFormat8BitARGB, 32u);
    EXPECT_EQ(bmdFormat8BitYUV, 0x32767579u);
    EXPECT_EQ(bmdModeUnknown, 0x69756E6Bu);
    EXPECT_EQ(bmdNoVideoOutputConversion, 0x6E6F6E65u);
    EXPECT_EQ(bmdSupportedVideoModeKeying, 1u);
    EXPECT_EQ(BMDDeckLinkSupportsInternalKeying, 0x6B657969u);
    EXPECT_EQ(BMDDeckLinkSupportsExternalKeying, 0x6B657965u);
    EXPECT_EQ(BMDDeckLinkAPIVersion, 0x76657273u);
    EXPECT_EQ(E_NOINTERFACE, HRESULT(0x80000004));
    EXPECT_EQ(E_ACCESSDENIED, HRESULT(0x80000009));
}

TEST(DeckLinkAPITest, TheRootHasThreeMethodsAndNoDestructor)
{
    expectInOrder(0, &IUnknown::QueryInterface, &IUnknown::AddRef, &IUnknown::Release);
    EXPECT_EQ(length<IUnknown>(), 3);
    EXPECT_FALSE(std::has_virtual_destructor_v<IUnknown>);
}

TEST(DeckLinkAPITest, TheIteratorHasNoDestructorEither)
{
    expectInOrder(3, &IDeckLinkIterator::Next);
    EXPECT_EQ(length<IDeckLinkIterator>(), 4);
}

TEST(DeckLinkAPITest, ADeviceEndsInItsDestructor)
{
    expectInOrder(3, &IDeckLink::GetModelName, &IDeckLink::GetDisplayName);
    EXPECT_EQ(length<IDeckLink>(), 7);
}

TEST(DeckLinkAPITest, AnOutputHasThirtyMethodsInOrder)
{
    using Output = IDeckLinkOutput;
    expectInOrder(
        3, &Output::DoesSupportVideoMode, &Output::GetDisplayMode, &Output::GetDisplayModeIterator,
        &Output::SetScreenPreviewCallback, &Output::EnableVideoOutput, &Output::DisableVideoOutput,
        &Output::CreateVideoFrame, &Output::CreateVideoFrameWithBuffer,
        &Output::RowBytesForPixelFormat, &Output::CreateAncillaryData,
        &Output::DisplayVideoFrameSync, &Output::ScheduleVideoFrame,
        &Output::SetScheduledFrameCompletionCallback, &Output::GetBufferedVideoFrameCount,
        &Output::EnableAudioOutput, &Output::DisableAudioOutput, &Output::WriteAudioSamplesSync,
        &Output::BeginAudioPreroll, &Output::EndAudioPreroll, &Output::ScheduleAudioSamples,
        &Output::GetBufferedAudioSampleFrameCount, &Output::FlushBufferedAudioSamples,
        &Output::SetAudioCallback, &Output::StartScheduledPlayback, &Output::StopScheduledPlayback,
        &Output::IsScheduledPlaybackRunning, &Output::GetScheduledStreamTime,
        &Output::GetReferenceStatus, &Output::GetHardwareReferenceClock,
        &Output::GetFrameCompletionReferenceTimestamp);
    EXPECT_EQ(length<Output>(), 35);
}

TEST(DeckLinkAPITest, DisplayModesAndTheirIteratorKeepTheirOrder)
{
    expectInOrder(3, &IDeckLinkDisplayModeIterator::Next);
    EXPECT_EQ(length<IDeckLinkDisplayModeIterator>(), 6);
    using Mode = IDeckLinkDisplayMode;
    expectInOrder(3, &Mode::GetName, &Mode::GetDisplayMode, &Mode::GetWidth, &Mode::GetHeight,
                  &Mode::GetFrameRate, &Mode::GetFieldDominance, &Mode::GetFlags);
    EXPECT_EQ(length<Mode>(), 12);
}

template <typename Attributes>
void expectAttributes()
{
    expectInOrder(3, &Attributes::GetFlag, &Attributes::GetInt, &Attributes::GetFloat,
                  &Attributes::GetString);
    EXPECT_EQ(length<Attributes>(), 9);
}

TEST(DeckLinkAPITest, AttributesAndInformationHaveOneShape)
{
    expectAttributes<IDeckLinkProfileAttributes>();
    expectAttributes<IDeckLinkAPIInformation>();
}

TEST(DeckLinkAPITest, TheKeyerHasFiveMethodsInOrder)
{
    using Keyer = IDeckLinkKeyer;
    expectInOrder(3, &Keyer::Enable, &Keyer::SetLevel, &Keyer::RampUp, &Keyer::RampDown,
                  &Keyer::Disable);
    EXPECT_EQ(length<Keyer>(), 10);
}

TEST(DeckLinkAPITest, ABufferHasThreeMethodsInOrder)
{
    using Buffer = IDeckLinkVideoBuffer;
    expectInOrder(3, &Buffer::GetBytes, &Buffer::StartAccess, &Buffer::EndAccess);
    EXPECT_EQ(length<Buffer>(), 8);
}

TEST(DeckLinkAPITest, AMutableFrameGoesOnBehindTheDestructorOfItsBase)
{
    using Frame = IDeckLinkVideoFrame;
    expectInOrder(3, &Frame::GetWidth, &Frame::GetHeight, &Frame::GetRowBytes,
                  &Frame::GetPixelFormat, &Frame::GetFlags, &Frame::GetTimecode,
                  &Frame::GetAncillaryData);
    EXPECT_EQ(length<Frame>(), 12);

    using Mutable = IDeckLinkMutableVideoFrame;
    expectInOrder(12, &Mutable::SetFlags, &Mutable::SetTimecode,
                  &Mutable::SetTimecodeFromComponents, &Mutable::SetAncillaryData,
                  &Mutable::SetTimecodeUserBits, &Mutable::SetInterfaceProvider);
    EXPECT_EQ(length<Mutable>(), 18);
}

TEST(DeckLinkAPITest, TheOutputCallbackHasTwoMethods)
{
    using Callback = IDeckLinkVideoOutputCallback;
    expectInOrder(3, &Callback::ScheduledFrameCompleted, &Callback::ScheduledPlaybackHasStopped);
    EXPECT_EQ(length<Callback>(), 7);
}

} // namespace
} // namespace tessara::decklink
