#include "Rendering/SparseImage.h"

#include <QPixelFormat>

#include <sys/mman.h>
#include <unistd.h>

#include <new>

namespace tessara {

namespace {

qsizetype roundedUp(qsizetype value, qsizetype step)
{
    return (value + step - 1) / step * step;
}

struct Mapping
{
    void *bytes;
    std::size_t size;
};

void unmap(void *mapping)
{
    const auto *mapped = static_cast<Mapping *>(mapping);
    ::munmap(mapped->bytes, mapped->size);
    delete mapped;
}

} // namespace

SparseImage::SparseImage(QSize size, QImage::Format format)
{
    constexpr int rowStep = 4; // bytes; what a painter wants
    const int bytesPerPixel = QImage::toPixelFormat(format).bitsPerPixel() / 8;
    const qsizetype rowBytes = roundedUp(qsizetype(size.width()) * bytesPerPixel, rowStep);
    const auto bytes = std::size_t(rowBytes) * std::size_t(size.height());
    void *memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    m_image = QImage(static_cast<uchar *>(memory), size.width(), size.height(), rowBytes, format,
                     unmap, new Mapping{memory, bytes});
}

void SparseImage::giveBack(int firstRow, int rows)
{
    static const auto page = qsizetype(::sysconf(_SC_PAGESIZE));
    const qsizetype begin = roundedUp(firstRow * m_image.bytesPerLine(), page);
    const qsizetype end = (firstRow + rows) * m_image.bytesPerLine() / page * page;
    if (begin < end)
        ::madvise(m_image.bits() + begin, std::size_t(end - begin), MADV_DONTNEED);
}

} // namespace tessara
