// How frames come from their senders' memory into the card's.
#pragma once

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "DeckLink/DeckLinkAPI.h"
#include "virtual-card/SharedFrames.h"

namespace tessara::virtualcard {

class SharedFrameWriter;

/// Fetches a frame while its sender goes on, as a card does, and holds the sender's buffer until
/// then.
class FrameTransfer
{
public:
    explicit FrameTransfer(SharedFrameWriter &target);
    FrameTransfer(const FrameTransfer &) = delete;
    FrameTransfer &operator=(const FrameTransfer &) = delete;
    ~FrameTransfer();

    /// Waits only while two frames are on their way already. Takes over a reference to the buffer,
    /// whose bytes were asked for in an access for reading.
    void begin(const SharedFrameDescription &frame, decklink::IDeckLinkVideoBuffer *buffer,
               const void *bytes);
    /// Returns when nothing is on its way.
    void finish();

private:
    struct Job
    {
        SharedFrameDescription frame;
        decklink::IDeckLinkVideoBuffer *buffer;
        const void *bytes;
    };

    void run();

    SharedFrameWriter &m_target;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<Job> m_next;
    bool m_isFetching = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace tessara::virtualcard
