// How frames come from their senders' memory into the card's.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "DeckLink/DeckLinkAPI.h"
#include "virtual-card/SharedFrames.h"

namespace tessara::virtualcard {

class SharedFrameWriter;

/// Takes a frame while its sender goes on, as a card does, and holds the sender's buffer until
/// then. Bytes are copied for those who look at them: a frame that nobody asked for stays where it
/// is until the next one comes, and is copied where none does for a while.
class FrameTransfer
{
public:
    /// How long nothing may follow a frame before it is copied for those who look later; more than
    /// two frames of any mode.
    static constexpr std::chrono::milliseconds usualPatience{100};

    explicit FrameTransfer(SharedFrameWriter &target,
                           std::chrono::milliseconds patience = usualPatience);
    FrameTransfer(const FrameTransfer &) = delete;
    FrameTransfer &operator=(const FrameTransfer &) = delete;
    ~FrameTransfer();

    /// Waits only while two frames are on their way already. Takes over a reference to the buffer,
    /// whose bytes were asked for in an access for reading.
    void begin(const SharedFrameDescription &frame, decklink::IDeckLinkVideoBuffer *buffer,
               const void *bytes);
    /// Returns when the newest frame has been copied and no buffer is held. One caller at a time.
    void finish();

private:
    struct Job
    {
        SharedFrameDescription frame;
        decklink::IDeckLinkVideoBuffer *buffer;
        const void *bytes;
    };

    static void letGo(const Job &job);

    void run();
    void waitForWork(std::unique_lock<std::mutex> &lock);
    void copy(const Job &job);

    SharedFrameWriter &m_target;
    const std::chrono::milliseconds m_patience;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<Job> m_next;
    std::optional<Job> m_kept; // not copied
    bool m_isWorking = false;
    bool m_isFinishing = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace tessara::virtualcard
