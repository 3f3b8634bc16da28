// One device of the card: what it can do, and what its output is doing.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "virtual-card/Cadence.h"
#include "virtual-card/FrameTransfer.h"
#include "virtual-card/Instruments.h"
#include "virtual-card/OutputLock.h"
#include "virtual-card/SharedFrameWriter.h"

namespace tessara::virtualcard {

/// What a device allows; what is absent is not limited.
struct Limits
{
    std::optional<std::vector<std::string>> modes;
    std::optional<std::vector<decklink::BMDPixelFormat>> formats;
    bool allowsKeying = true;
    std::int32_t rowBytes = 0;   // 0 for what the format needs
    bool acceptsAnySize = false; // frames of another size than the mode's
};

/// The shape of a frame as its sender describes it.
using FrameShape = SharedFrameDescription;

class Device
{
public:
    Device(int index, const char *name, bool hasKeyer);

    int index() const { return m_index; }
    const char *name() const { return m_name; }
    bool isPlugged() const { return m_isPlugged; }
    void unplug();
    void plug() { m_isPlugged = true; }
    void setLimits(const Limits &limits) { m_limits = limits; }

    bool lists(const Mode &mode) const;
    bool supports(const Mode &mode, decklink::BMDPixelFormat format, bool withKeying) const;
    bool canKey() const { return m_hasKeyer && m_limits.allowsKeying; }
    bool hasKeyer() const { return m_hasKeyer; }
    std::int32_t rowBytes(decklink::BMDPixelFormat format, std::int32_t width) const;

    /// Opens the output for one holder, whoever asks first.
    decklink::HRESULT enable(const void *holder, const Mode &mode, const std::string &channel);
    bool isEnabled() const { return m_holder != nullptr; }
    bool isEnabledBy(const void *holder) const { return m_holder == holder; }
    void disable();
    /// Leaves no trace in shared memory.
    void close();

    decklink::HRESULT enableKeyer(bool isExternal);
    void setKeyerLevel(std::uint8_t level) { m_keyerLevel = level; }
    void disableKeyer();

    /// Whether the open output can show such a frame.
    bool accepts(const FrameShape &frame) const;
    /// When a display call that comes now gets its turn.
    Cadence::Time noteDisplayCall(Cadence::Time now, bool isFreeRunning);
    bool hasRoomFor(const FrameShape &frame) const { return m_frames.hasRoomFor(frame); }
    /// For a frame that there is room for, whose buffer is let go when it has been fetched.
    void show(const FrameShape &frame, decklink::IDeckLinkVideoBuffer *buffer, const void *bytes,
              Cadence::Time now, bool isFreeRunning);
    /// Until every frame that was shown has been fetched.
    void finishTransfer() const;

    void describe(TessaraVirtualCardDevice &description) const;
    void count(TessaraVirtualCardFrames &frames) const;
    const SharedFramesHeader *frames() const;

private:
    const Limits &limitsInForce() const { return isEnabled() ? m_limitsAtStart : m_limits; }

    int m_index;
    const char *m_name;
    bool m_hasKeyer;
    bool m_isPlugged = true;
    Limits m_limits;

    const void *m_holder = nullptr;
    const Mode *m_mode = nullptr; // of the last output
    Limits m_limitsAtStart;
    bool m_isKeyerEnabled = false;
    std::uint8_t m_keyerLevel = 0;
    std::optional<Cadence> m_cadence;
    std::int64_t m_sent = 0;
    std::int64_t m_waited = 0;
    std::optional<Cadence::Time> m_lastCall;
    std::vector<float> m_intervals; // s
    OutputLock m_lock;
    SharedFrameWriter m_frames;
    std::unique_ptr<FrameTransfer> m_transfer; // between the first output and the close
};

} // namespace tessara::virtualcard
