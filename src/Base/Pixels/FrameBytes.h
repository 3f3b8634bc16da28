// The bytes of one frame, shared without a copy between the program and the card.
#pragma once

#include <QtGlobal>

#include <atomic>
#include <cstddef>
#include <memory>

namespace tessara {

/// Copies share one block. The last of them may go on any thread: the block returns to a pool.
class FrameBytes
{
public:
    /// Cache lines and the widest vector registers start at multiples of this.
    static constexpr std::size_t alignment = 64;
    /// No raster of any card comes near; a greater size is refused like memory that ran out.
    static constexpr qsizetype maximumSize = qsizetype(1) << 30;
    /// From now on less is refused, for tests of what happens then. Not while another thread
    /// allocates.
    static void setMaximumSize(qsizetype bytes) { s_maximumSize = bytes; }

    FrameBytes() = default;
    /// Foreign bytes that stay as they are while a reference to them lives.
    FrameBytes(std::shared_ptr<const quint8> bytes, qsizetype size);

    /// Fresh bytes with arbitrary contents, null if there is no memory for them.
    static FrameBytes allocate(qsizetype size);
    static FrameBytes zeroed(qsizetype size);

    bool isNull() const { return !m_bytes; }
    /// Somebody else holds the bytes as well. A no is final, as long as nobody copies this one: who
    /// let go last, on any thread, has done with them.
    bool isShared() const
    {
        const bool shared = m_bytes.use_count() > 1;
        std::atomic_thread_fence(std::memory_order_acquire);
        return shared;
    }
    qsizetype size() const { return m_size; }
    const quint8 *data() const { return m_bytes.get(); }
    /// For whoever allocated the bytes, until the first copy has been handed on.
    quint8 *writableData() { return const_cast<quint8 *>(m_bytes.get()); }

    /// The same bytes, wherever they are kept.
    bool operator==(const FrameBytes &other) const;

private:
    static inline qsizetype s_maximumSize = maximumSize;

    std::shared_ptr<const quint8> m_bytes;
    qsizetype m_size = 0;
};

} // namespace tessara
