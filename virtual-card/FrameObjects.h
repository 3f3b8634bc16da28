// Frames and their memory as the driver hands them out.
#pragma once

#include <atomic>
#include <memory>

#include "virtual-card/DriverObject.h"
#include "virtual-card/SharedFrames.h"

namespace tessara::virtualcard {

/// Memory of the driver's own. One access at a time, be it the card's.
class BufferObject final : public DriverObject<decklink::IDeckLinkVideoBuffer>
{
public:
    explicit BufferObject(std::size_t size);

    decklink::HRESULT GetBytes(void **bytes) override;
    decklink::HRESULT StartAccess(decklink::BMDBufferAccessFlags flags) override;
    decklink::HRESULT EndAccess(decklink::BMDBufferAccessFlags flags) override;

private:
    static constexpr decklink::BMDBufferAccessFlags noAccess = 0;

    std::unique_ptr<unsigned char[]> m_bytes;
    std::atomic<decklink::BMDBufferAccessFlags> m_access = noAccess;
};

/// A frame over a buffer, the sender's or the driver's own.
class FrameObject final : public DriverObject<decklink::IDeckLinkMutableVideoFrame>
{
public:
    /// Holds a reference of its own to the buffer.
    FrameObject(const SharedFrameDescription &shape, decklink::BMDFrameFlags flags,
                decklink::IDeckLinkVideoBuffer &buffer);

    decklink::HRESULT QueryInterface(decklink::REFIID iid, void **object) override;

    long GetWidth() override;
    long GetHeight() override;
    long GetRowBytes() override;
    decklink::BMDPixelFormat GetPixelFormat() override;
    decklink::BMDFrameFlags GetFlags() override;
    decklink::HRESULT GetTimecode(decklink::BMDTimecodeFormat,
                                  decklink::IDeckLinkTimecode **) override;
    decklink::HRESULT GetAncillaryData(decklink::IDeckLinkVideoFrameAncillary **) override;
    decklink::HRESULT SetFlags(decklink::BMDFrameFlags flags) override;
    decklink::HRESULT SetTimecode(decklink::BMDTimecodeFormat,
                                  decklink::IDeckLinkTimecode *) override;
    decklink::HRESULT SetTimecodeFromComponents(decklink::BMDTimecodeFormat, std::uint8_t,
                                                std::uint8_t, std::uint8_t, std::uint8_t,
                                                decklink::BMDTimecodeFlags) override;
    decklink::HRESULT SetAncillaryData(decklink::IDeckLinkVideoFrameAncillary *) override;
    decklink::HRESULT SetTimecodeUserBits(decklink::BMDTimecodeFormat,
                                          decklink::BMDTimecodeUserBits) override;
    decklink::HRESULT SetInterfaceProvider(decklink::REFIID, decklink::IUnknown *) override;

private:
    ~FrameObject() override;

    SharedFrameDescription m_shape;
    decklink::BMDFrameFlags m_flags;
    decklink::IDeckLinkVideoBuffer &m_buffer;
};

} // namespace tessara::virtualcard
