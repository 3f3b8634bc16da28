// Frames that are kept while they go round between the program and a device.
#pragma once

#include "Base/Pixels/FrameBytes.h"
#include "Rendering/FramePath/TileDamage.h"

#include <memory>

namespace tessara {

/// Every kept frame knows what has changed since it was last composed. A device holds a frame for
/// as long as it likes: one that is still held is never written.
class FrameRing
{
public:
    struct Slot
    {
        FrameBytes bytes;
        TileDamage stale;
        quint64 lastUse = 0;
    };

    /// Forgets all frames. `bytes` is the size of one.
    void setUp(QSize frame, qsizetype bytes);

    /// As many frames as a device that is late with one needs: making one in the middle of a show
    /// takes longer than composing it.
    void makeAhead();

    /// How many go round.
    std::size_t count() const { return m_slots.size(); }

    /// The last frame that was taken; null before the first.
    Slot *current() const { return m_current; }
    /// What the frames show is no longer so.
    void add(const TileDamage &damage);
    /// A frame that nobody holds, as little stale as there is; null if there is no memory for it.
    Slot *next();

private:
    /// Null if there is no memory for it.
    Slot *make();
    void dropIdle();

    QSize m_frame;
    qsizetype m_bytes = 0;
    quint64 m_uses = 0;
    std::vector<std::unique_ptr<Slot>> m_slots;
    Slot *m_current = nullptr;
};

} // namespace tessara
