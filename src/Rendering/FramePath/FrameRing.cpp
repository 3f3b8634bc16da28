#include "Rendering/FramePath/FrameRing.h"

namespace tessara {

namespace {

constexpr quint64 patience = 300; // frames

} // namespace

void FrameRing::setUp(QSize frame, qsizetype bytes)
{
    m_frame = frame;
    m_bytes = bytes;
    m_slots.clear();
    m_current = nullptr;
}

void FrameRing::add(const TileDamage &damage)
{
    for (const auto &slot : m_slots)
        slot->stale.add(damage);
}

FrameRing::Slot *FrameRing::next()
{
    Slot *best = nullptr;
    for (const auto &slot : m_slots) {
        if (!slot->bytes.isShared() && (!best || slot->lastUse > best->lastUse))
            best = slot.get();
    }
    if (!best) {
        // Zeroed, for the bytes beyond the pixels of a row are never written.
        auto made = std::make_unique<Slot>(Slot{FrameBytes::zeroed(m_bytes), TileDamage(m_frame)});
        if (made->bytes.isNull())
            return nullptr;
        made->stale.addAll();
        best = made.get();
        m_slots.push_back(std::move(made));
    }
    best->lastUse = ++m_uses;
    m_current = best;
    dropIdle();
    return best;
}

// A frame that has not been needed for so long was needed for a hitch of the device.
void FrameRing::dropIdle()
{
    std::erase_if(m_slots, [this](const auto &slot) {
        return slot->lastUse + patience < m_uses && !slot->bytes.isShared();
    });
}

} // namespace tessara
