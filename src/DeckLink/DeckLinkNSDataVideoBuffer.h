// Our frame bytes as a buffer of the driver, without a copy.
#pragma once

#include <atomic>

#include "DeckLink/DeckLinkAPI.h"
#include "Base/Pixels/FrameBytes.h"

namespace tessara {

class DeckLinkNSDataVideoBuffer final : public decklink::IDeckLinkVideoBuffer
{
public:
    explicit DeckLinkNSDataVideoBuffer(FrameBytes data);

    decklink::HRESULT QueryInterface(decklink::REFIID iid, void **object) override;
    decklink::ULONG AddRef() override;
    decklink::ULONG Release() override;
    decklink::HRESULT GetBytes(void **bytes) override;
    decklink::HRESULT StartAccess(decklink::BMDBufferAccessFlags flags) override;
    decklink::HRESULT EndAccess(decklink::BMDBufferAccessFlags flags) override;

private:
    ~DeckLinkNSDataVideoBuffer() override = default;

    // The card may let go of the buffer on a thread of its own.
    std::atomic<quint32> m_references{1};
    FrameBytes m_data;
};

} // namespace tessara
