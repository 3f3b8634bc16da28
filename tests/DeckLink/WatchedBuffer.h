// A sender's buffer that notes who lets go of it.
#pragma once

#include "DeckLink/DeckLinkAPI.h"

#include <atomic>
#include <thread>
#include <vector>

namespace tessara {

class WatchedBuffer final : public decklink::IDeckLinkVideoBuffer
{
public:
    explicit WatchedBuffer(std::size_t size)
        : bytes(size, 7)
    {
    }

    decklink::HRESULT QueryInterface(decklink::REFIID, void **object) override
    {
        *object = this;
        AddRef();
        return decklink::S_OK;
    }
    decklink::ULONG AddRef() override { return ++references; }
    decklink::ULONG Release() override { return --references; }
    decklink::HRESULT GetBytes(void **target) override
    {
        *target = bytes.data();
        return decklink::S_OK;
    }
    decklink::HRESULT StartAccess(decklink::BMDBufferAccessFlags) override
    {
        return decklink::S_OK;
    }
    decklink::HRESULT EndAccess(decklink::BMDBufferAccessFlags) override
    {
        isHeld.wait(true);
        reader = std::this_thread::get_id();
        return decklink::S_OK;
    }
    void let()
    {
        isHeld = false;
        isHeld.notify_all();
    }

    std::vector<char> bytes;
    std::atomic<decklink::ULONG> references = 1;
    std::atomic<std::thread::id> reader;
    std::atomic<bool> isHeld = false; // in whoever wants to let go of it
};

} // namespace tessara
