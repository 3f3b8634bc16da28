#include "bench/Allocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

namespace tessara {

namespace {

std::atomic<quint64> allocations = 0;

void count()
{
    allocations.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

quint64 heapAllocations()
{
    return allocations.load(std::memory_order_relaxed);
}

} // namespace tessara

// The C library's own functions under their other names. Operator new and the libraries come by
// malloc, so that each request is counted once.
extern "C" {

void *__libc_malloc(std::size_t size) noexcept;
void *__libc_calloc(std::size_t number, std::size_t size) noexcept;
void *__libc_realloc(void *block, std::size_t size) noexcept;
void *__libc_memalign(std::size_t alignment, std::size_t size) noexcept;

Q_DECL_EXPORT void *malloc(std::size_t size) noexcept
{
    tessara::count();
    return __libc_malloc(size);
}

Q_DECL_EXPORT void *calloc(std::size_t number, std::size_t size) noexcept
{
    tessara::count();
    return __libc_calloc(number, size);
}

Q_DECL_EXPORT void *realloc(void *block, std::size_t size) noexcept
{
    tessara::count();
    return __libc_realloc(block, size);
}

Q_DECL_EXPORT void *memalign(std::size_t alignment, std::size_t size) noexcept
{
    tessara::count();
    return __libc_memalign(alignment, size);
}

Q_DECL_EXPORT void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    tessara::count();
    return __libc_memalign(alignment, size);
}

Q_DECL_EXPORT int posix_memalign(void **block, std::size_t alignment, std::size_t size) noexcept
{
    tessara::count();
    void *made = __libc_memalign(alignment, size);
    if (!made)
        return ENOMEM;
    *block = made;
    return 0;
}
}
