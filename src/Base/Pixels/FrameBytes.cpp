#include "Base/Pixels/FrameBytes.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <new>
#include <vector>

namespace tessara {
namespace {

constexpr std::align_val_t blockAlignment{FrameBytes::alignment};

// Frames follow each other in one size, and fresh memory costs a page fault every 4 KiB: the blocks
// of the last few frames wait here for the next ones.
class FramePool
{
public:
    quint8 *take(std::size_t size)
    {
        {
            const std::lock_guard guard(m_mutex);
            const auto spare = std::ranges::find(m_spares, size, &Spare::size);
            if (spare != m_spares.end()) {
                quint8 *bytes = spare->bytes;
                m_spares.erase(spare);
                return bytes;
            }
        }
        return static_cast<quint8 *>(::operator new(size, blockAlignment, std::nothrow));
    }

    void giveBack(quint8 *bytes, std::size_t size)
    {
        Spare oldest;
        {
            const std::lock_guard guard(m_mutex);
            m_spares.push_back({bytes, size});
            if (m_spares.size() <= spareLimit)
                return;
            oldest = m_spares.front();
            m_spares.erase(m_spares.begin());
        }
        ::operator delete(oldest.bytes, blockAlignment);
    }

private:
    struct Spare
    {
        quint8 *bytes = nullptr;
        std::size_t size = 0;
    };
    static constexpr std::size_t spareLimit =
        4; // two outputs, each with a frame and its conversion

    std::mutex m_mutex; // a driver may let go of a frame on a thread of its own
    std::vector<Spare> m_spares;
};

FramePool &framePool()
{
    // Never destroyed: the last frame may come back while the process is ending.
    static FramePool *pool = new FramePool;
    return *pool;
}

} // namespace

FrameBytes::FrameBytes(std::shared_ptr<const quint8> bytes, qsizetype size)
    : m_bytes(std::move(bytes))
    , m_size(m_bytes ? size : 0)
{
}

FrameBytes FrameBytes::allocate(qsizetype size)
{
    if (size < 0 || size > s_maximumSize)
        return {};
    const auto blockSize = std::max<std::size_t>(std::size_t(size), 1);
    quint8 *bytes = framePool().take(blockSize);
    if (!bytes)
        return {};
    const auto giveBack = [blockSize](const quint8 *block) {
        framePool().giveBack(const_cast<quint8 *>(block), blockSize);
    };
    return FrameBytes(std::shared_ptr<const quint8>(bytes, giveBack), size);
}

FrameBytes FrameBytes::zeroed(qsizetype size)
{
    FrameBytes frame = allocate(size);
    if (!frame.isNull())
        std::memset(frame.writableData(), 0, std::size_t(size));
    return frame;
}

bool FrameBytes::operator==(const FrameBytes &other) const
{
    if (m_size != other.m_size)
        return false;
    return m_bytes == other.m_bytes
           || std::memcmp(m_bytes.get(), other.m_bytes.get(), std::size_t(m_size)) == 0;
}

} // namespace tessara
