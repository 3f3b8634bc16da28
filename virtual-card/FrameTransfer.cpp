#include "virtual-card/FrameTransfer.h"

#include "virtual-card/SharedFrameWriter.h"

namespace tessara::virtualcard {

using namespace decklink;

FrameTransfer::FrameTransfer(SharedFrameWriter &target)
    : m_target(target)
    , m_thread([this] { run(); })
{
}

FrameTransfer::~FrameTransfer()
{
    finish();
    {
        const std::lock_guard guard(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void FrameTransfer::begin(const SharedFrameDescription &frame, IDeckLinkVideoBuffer *buffer,
                          const void *bytes)
{
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_next; });
        m_next = Job{frame, buffer, bytes};
    }
    m_changed.notify_all();
}

void FrameTransfer::finish()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_next && !m_isFetching; });
}

void FrameTransfer::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_next || m_isEnding; });
        if (!m_next)
            return;
        const Job job = *m_next;
        m_next.reset();
        m_isFetching = true;
        lock.unlock();
        m_changed.notify_all();
        m_target.publish(job.frame, job.bytes);
        job.buffer->EndAccess(bmdBufferAccessRead);
        job.buffer->Release();
        lock.lock();
        m_isFetching = false;
        m_changed.notify_all();
    }
}

} // namespace tessara::virtualcard
