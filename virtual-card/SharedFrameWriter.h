// Puts the frames of one output where other programs can see them.
#pragma once

#include <string>

#include "virtual-card/Modes.h"
#include "virtual-card/SharedFrames.h"

namespace tessara::virtualcard {

/// Where shared memory can't be had, the frames are kept for this process alone.
class SharedFrameWriter
{
public:
    SharedFrameWriter() = default;
    SharedFrameWriter(const SharedFrameWriter &) = delete;
    SharedFrameWriter &operator=(const SharedFrameWriter &) = delete;
    ~SharedFrameWriter() { close(); }

    /// A new, empty segment in place of any of that name. False when memory ran out.
    bool open(const std::string &name, const Mode &mode, std::uint64_t slotBytes);
    /// Tells every reader to look again, and lets go of the memory.
    void close();

    void setEnabled(bool isEnabled);
    void setKeying(bool isKeying);
    bool hasRoomFor(const SharedFrameDescription &frame) const;
    /// Whether somebody looks at the frame that is next; counts it.
    bool takeRequest();
    /// For a frame that there is room for; on whatever thread, one at a time.
    void publish(const SharedFrameDescription &frame, const void *bytes);

    /// Null while closed.
    const SharedFramesHeader *header() const { return m_header; }

private:
    bool map(const std::string &name, std::uint64_t size);

    SharedFramesHeader *m_header = nullptr;
    std::string m_name; // empty for memory that isn't shared
};

} // namespace tessara::virtualcard
