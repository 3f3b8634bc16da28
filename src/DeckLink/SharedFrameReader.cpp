#include "DeckLink/SharedFrameReader.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>

#include "DeckLink/MonitorImage.h"
#include "virtual-card/SharedFrames.h"

namespace tessara {

using namespace virtualcard;

/// One segment: read, but for what is asked of its writer.
class SharedFrameReader::Mapping
{
    Q_DISABLE_COPY_MOVE(Mapping)

public:
    static std::unique_ptr<Mapping> open(const QString &name)
    {
        const int file = shm_open(name.toLatin1().constData(), O_RDWR | O_CLOEXEC, 0);
        if (file < 0)
            return nullptr;
        struct stat status = {};
        void *memory = MAP_FAILED;
        // Nobody else's frames, should somebody else have made a segment of that name.
        if (fstat(file, &status) == 0 && status.st_uid == getuid()
            && status.st_size >= off_t(sizeof(SharedFramesHeader)))
            memory =
                mmap(nullptr, size_t(status.st_size), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        close(file);
        if (memory == MAP_FAILED)
            return nullptr;
        std::unique_ptr<Mapping> mapping(new Mapping(memory, size_t(status.st_size)));
        return mapping->isSound() ? std::move(mapping) : nullptr;
    }

    ~Mapping() { munmap(m_memory, m_size); }

    SharedFramesHeader &header() const { return *static_cast<SharedFramesHeader *>(m_memory); }
    void request() { header().requested.store(framesOfARequest, std::memory_order_relaxed); }
    bool isRetired() const { return header().isRetired.load(std::memory_order_acquire) != 0; }
    /// A writer that crashed leaves its segment enabled.
    bool isEnabled() const
    {
        const bool isWriterAlive = kill(header().writer, 0) == 0 || errno != ESRCH;
        return header().isEnabled.load(std::memory_order_acquire) != 0 && isWriterAlive;
    }

private:
    Mapping(void *memory, size_t size)
        : m_memory(memory)
        , m_size(size)
    {
    }

    bool isSound() const
    {
        const SharedFramesHeader &record = header();
        return record.magic.load(std::memory_order_acquire) == sharedFramesMagic
               && record.version == sharedFramesVersion && record.totalBytes == m_size
               && record.firstSlotOffset >= sizeof(SharedFramesHeader)
               && record.firstSlotOffset <= m_size
               && record.slotBytes <= (m_size - record.firstSlotOffset) / sharedFrameSlots;
    }

    void *m_memory;
    size_t m_size;
};

SharedFrameReader::SharedFrameReader(int device, const QString &channel)
    : m_name(QString::fromStdString(
        sharedFramesName(channel.isEmpty() ? defaultChannel() : channel.toStdString(), device)))
{
}

SharedFrameReader::~SharedFrameReader() = default;
SharedFrameReader::SharedFrameReader(SharedFrameReader &&) noexcept = default;
SharedFrameReader &SharedFrameReader::operator=(SharedFrameReader &&) noexcept = default;

const SharedFrameReader::Mapping *SharedFrameReader::mapping()
{
    // A writer that crashed can't retire its segment; the next one to start does it instead.
    if (!m_mapping || m_mapping->isRetired())
        m_mapping = Mapping::open(m_name);
    if (m_mapping)
        m_mapping->request();
    return m_mapping.get();
}

namespace {

SharedFrameStatus statusOf(const SharedFramesHeader &header, bool isEnabled)
{
    SharedFrameStatus status;
    status.number = header.newest.load(std::memory_order_acquire);
    status.isOutputEnabled = isEnabled;
    status.isKeying = header.isKeying.load(std::memory_order_acquire) != 0;
    status.modeName =
        QString::fromLatin1(header.modeName, qstrnlen(header.modeName, sizeof header.modeName));
    status.width = header.width;
    status.height = header.height;
    if (header.frameDuration > 0)
        status.rate = double(header.timeScale) / double(header.frameDuration);
    const SharedFrameSlot &slot = header.ring[status.number % sharedFrameSlots];
    status.pixelFormat = status.number > 0 ? slot.pixelFormat : 0;
    status.rowBytes = status.number > 0 ? slot.rowBytes : 0;
    return status;
}

} // namespace

std::optional<SharedFrameStatus> SharedFrameReader::status()
{
    const Mapping *segment = mapping();
    if (!segment)
        return std::nullopt;
    return statusOf(segment->header(), segment->isEnabled());
}

std::optional<SharedFrame> SharedFrameReader::newestFrame()
{
    const Mapping *segment = mapping();
    if (!segment)
        return std::nullopt;
    SharedFrame result{statusOf(segment->header(), segment->isEnabled()), {}, {}};
    SharedFrameDescription frame;
    const bool isWhole = readNewestFrame(
        segment->header(), [&](const SharedFrameDescription &description, const uchar *bytes) {
            frame = description;
            m_bytes.resize(qsizetype(frame.size()));
            std::memcpy(m_bytes.data(), bytes, frame.size());
        });
    if (!isWhole)
        return std::nullopt;
    result.status.number = frame.number;
    result.status.pixelFormat = frame.pixelFormat;
    result.status.rowBytes = frame.rowBytes;
    const SourceRows rows{reinterpret_cast<const quint8 *>(m_bytes.constData()), frame.rowBytes};
    result.fill = monitorImage(rows, frame.pixelFormat, frame.width, frame.height);
    if (result.status.isKeying)
        result.key = monitorKeyImage(rows, frame.pixelFormat, frame.width, frame.height);
    return result;
}

} // namespace tessara
