// The newest frames of one output in shared memory: one process writes, any number look.
#pragma once

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tessara::virtualcard {

inline constexpr std::uint32_t sharedFramesMagic = 0x54534652; // "TSFR"
inline constexpr std::uint32_t sharedFramesVersion = 2;
inline constexpr int sharedFrameSlots = 3; // a reader has two frame times before its slot is reused
inline constexpr int framesOfARequest = 100; // a reader that looks now and then misses none

struct SharedFrameSlot
{
    std::atomic<std::uint64_t> lock; // odd while the slot is being written
    std::uint64_t number;            // counts all frames of the output, from 1
    std::uint32_t pixelFormat;
    std::int32_t width;
    std::int32_t height;
    std::int32_t rowBytes;
};

struct SharedFramesHeader
{
    std::atomic<std::uint32_t> magic; // stored last, when all the rest stands
    std::uint32_t version;
    std::uint64_t totalBytes;
    std::uint64_t firstSlotOffset; // from the start of the header
    std::uint64_t slotBytes;
    std::int32_t writer; // process
    char modeName[32];
    std::int32_t width;
    std::int32_t height;
    std::int64_t frameDuration;
    std::int64_t timeScale;
    std::atomic<std::uint32_t> isEnabled;
    std::atomic<std::uint32_t> isKeying;
    std::atomic<std::uint32_t> isRetired; // another segment has taken the name
    std::atomic<std::uint64_t> newest;    // number of the newest frame, 0 before the first
    std::atomic<std::int32_t> requested;  // frames that readers still ask for
    SharedFrameSlot ring[sharedFrameSlots];
};
static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

/// A copy of what describes one frame.
struct SharedFrameDescription
{
    std::uint64_t number = 0;
    std::uint32_t pixelFormat = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t rowBytes = 0;

    std::uint64_t size() const { return std::uint64_t(rowBytes) * std::uint64_t(height); }
};

inline std::string defaultChannel()
{
    return "tessara-" + std::to_string(getuid());
}

/// A channel becomes part of a file name.
inline bool isChannelName(std::string_view name)
{
    const auto isAllowed = [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z')
               || (letter >= 'A' && letter <= 'Z') || letter == '-' || letter == '_';
    };
    if (name.empty() || name.size() > 100)
        return false;
    for (const char letter : name) {
        if (!isAllowed(letter))
            return false;
    }
    return true;
}

inline std::string sharedFramesName(std::string_view channel, int device)
{
    std::string name("/");
    name.append(channel).append("-card-").append(std::to_string(device));
    return name;
}

/// Whoever has this object locked owns the device's output.
inline std::string outputLockName(std::string_view channel, int device)
{
    return sharedFramesName(channel, device).append("-lock");
}

inline const unsigned char *slotData(const SharedFramesHeader &header, std::uint64_t number)
{
    return reinterpret_cast<const unsigned char *>(&header) + header.firstSlotOffset
           + number % sharedFrameSlots * header.slotBytes;
}

/// Hands the newest frame to `copy(description, bytes)`. False before the first frame, and when the
/// writer overtook every attempt; what was copied is then worthless.
template <typename Copy>
bool readNewestFrame(const SharedFramesHeader &header, Copy &&copy)
{
    for (int attempt = 0; attempt < 8; ++attempt) {
        const std::uint64_t newest = header.newest.load(std::memory_order_acquire);
        if (newest == 0)
            return false;
        const SharedFrameSlot &slot = header.ring[newest % sharedFrameSlots];
        const std::uint64_t before = slot.lock.load(std::memory_order_acquire);
        if (before % 2 != 0)
            continue;
        const SharedFrameDescription frame{slot.number, slot.pixelFormat, slot.width, slot.height,
                                           slot.rowBytes};
        if (frame.width < 1 || frame.height < 1 || frame.rowBytes < 1
            || frame.size() > header.slotBytes)
            continue;
        copy(frame, slotData(header, newest));
        std::atomic_thread_fence(std::memory_order_acquire);
        if (slot.lock.load(std::memory_order_relaxed) == before)
            return true;
    }
    return false;
}

} // namespace tessara::virtualcard
