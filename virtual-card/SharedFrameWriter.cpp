#include "virtual-card/SharedFrameWriter.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <new>

namespace tessara::virtualcard {
namespace {

constexpr std::uint64_t page = 4096;

std::uint64_t wholePages(std::uint64_t bytes)
{
    return (bytes + page - 1) / page * page;
}

/// Whoever still reads the segment of a program that ended or crashed is sent to the new one.
void retireOldSegment(const std::string &name)
{
    const int file = shm_open(name.c_str(), O_RDWR, 0);
    if (file < 0)
        return;
    struct stat status = {};
    if (fstat(file, &status) == 0 && status.st_size >= off_t(sizeof(SharedFramesHeader))) {
        void *memory =
            mmap(nullptr, sizeof(SharedFramesHeader), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (memory != MAP_FAILED) {
            static_cast<SharedFramesHeader *>(memory)->isRetired.store(1);
            munmap(memory, sizeof(SharedFramesHeader));
        }
    }
    close(file);
    shm_unlink(name.c_str());
}

// Populated, like the memory of a card: no frame waits for its pages.
void *mapShared(const std::string &name, std::uint64_t size)
{
    retireOldSegment(name);
    const int file = shm_open(name.c_str(), O_CREAT | O_EXCL | O_RDWR, S_IRUSR | S_IWUSR);
    if (file < 0)
        return MAP_FAILED;
    void *memory = MAP_FAILED;
    // Allocated at once: a full /dev/shm then shows here, and not as a signal on the first write.
    if (posix_fallocate(file, 0, off_t(size)) == 0)
        memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, file, 0);
    close(file);
    if (memory == MAP_FAILED)
        shm_unlink(name.c_str());
    return memory;
}

} // namespace

bool SharedFrameWriter::map(const std::string &name, std::uint64_t size)
{
    m_name = name;
    void *memory = mapShared(name, size);
    if (memory == MAP_FAILED) {
        m_name.clear();
        memory = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    }
    if (memory == MAP_FAILED)
        return false;
    m_header = new (memory) SharedFramesHeader{};
    m_header->totalBytes = size;
    return true;
}

bool SharedFrameWriter::open(const std::string &name, const Mode &mode, std::uint64_t slotBytes)
{
    close();
    const std::uint64_t offset = wholePages(sizeof(SharedFramesHeader));
    const std::uint64_t slot = wholePages(slotBytes);
    if (!map(name, offset + slot * sharedFrameSlots))
        return false;
    m_header->version = sharedFramesVersion;
    m_header->firstSlotOffset = offset;
    m_header->slotBytes = slot;
    m_header->writer = getpid();
    std::strncpy(m_header->modeName, mode.name, sizeof m_header->modeName - 1);
    m_header->width = mode.width;
    m_header->height = mode.height;
    m_header->frameDuration = mode.frameDuration;
    m_header->timeScale = mode.timeScale;
    m_header->isEnabled.store(1);
    m_header->magic.store(sharedFramesMagic, std::memory_order_release);
    return true;
}

void SharedFrameWriter::close()
{
    if (!m_header)
        return;
    m_header->isEnabled.store(0);
    m_header->isRetired.store(1, std::memory_order_release);
    if (!m_name.empty())
        shm_unlink(m_name.c_str());
    munmap(m_header, m_header->totalBytes);
    m_header = nullptr;
}

void SharedFrameWriter::setEnabled(bool isEnabled)
{
    if (m_header)
        m_header->isEnabled.store(isEnabled ? 1 : 0);
}

void SharedFrameWriter::setKeying(bool isKeying)
{
    if (m_header)
        m_header->isKeying.store(isKeying ? 1 : 0);
}

bool SharedFrameWriter::hasRoomFor(const SharedFrameDescription &frame) const
{
    return m_header && frame.size() <= m_header->slotBytes;
}

bool SharedFrameWriter::takeRequest()
{
    const bool isRequested = m_header->requested.load(std::memory_order_relaxed) > 0;
    if (isRequested)
        m_header->requested.fetch_sub(1, std::memory_order_relaxed);
    return isRequested;
}

void SharedFrameWriter::publish(const SharedFrameDescription &frame, const void *bytes)
{
    SharedFrameSlot &slot = m_header->ring[frame.number % sharedFrameSlots];
    const std::uint64_t lock = slot.lock.load(std::memory_order_relaxed);
    slot.lock.store(lock + 1, std::memory_order_relaxed);
    std::atomic_thread_fence(std::memory_order_release); // odd before the first byte
    slot.number = frame.number;
    slot.pixelFormat = frame.pixelFormat;
    slot.width = frame.width;
    slot.height = frame.height;
    slot.rowBytes = frame.rowBytes;
    std::memcpy(const_cast<unsigned char *>(slotData(*m_header, frame.number)), bytes,
                frame.size());
    slot.lock.store(lock + 2, std::memory_order_release);
    m_header->newest.store(frame.number, std::memory_order_release);
}

} // namespace tessara::virtualcard
