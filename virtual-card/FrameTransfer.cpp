#include "virtual-card/FrameTransfer.h"

#include <utility>

#include "virtual-card/SharedFrameWriter.h"

namespace tessara::virtualcard {

using namespace decklink;

FrameTransfer::FrameTransfer(SharedFrameWriter &target, std::chrono::milliseconds patience)
    : m_target(target)
    , m_patience(patience)
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
    m_isFinishing = true;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return !m_next && !m_isWorking && !m_kept; });
    m_isFinishing = false;
}

void FrameTransfer::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        waitForWork(lock);
        std::optional<Job> next = std::exchange(m_next, std::nullopt);
        const std::optional<Job> kept = std::exchange(m_kept, std::nullopt);
        if (!next && !kept)
            return;
        m_isWorking = true;
        lock.unlock();
        m_changed.notify_all();
        if (!next)
            copy(*kept);
        else if (kept)
            letGo(*kept);
        if (next && m_target.takeRequest()) {
            copy(*next);
            next.reset();
        }
        lock.lock();
        m_kept = next;
        m_isWorking = false;
        m_changed.notify_all();
    }
}

// Comes back for a frame, for a kept one that is to be copied after all, or at the end.
void FrameTransfer::waitForWork(std::unique_lock<std::mutex> &lock)
{
    const auto isNeeded = [this] { return m_next || m_isEnding || (m_isFinishing && m_kept); };
    if (m_kept)
        m_changed.wait_for(lock, m_patience, isNeeded);
    else
        m_changed.wait(lock, isNeeded);
}

void FrameTransfer::copy(const Job &job)
{
    m_target.publish(job.frame, job.bytes);
    letGo(job);
}

void FrameTransfer::letGo(const Job &job)
{
    job.buffer->EndAccess(bmdBufferAccessRead);
    job.buffer->Release();
}

} // namespace tessara::virtualcard
