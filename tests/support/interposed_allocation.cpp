// Allocation functions that stand before those of glibc in an executable that is linked with this file.
#include "support/failing_allocation.h"

#include <cerrno>
#include <cstdlib>

#ifdef __GLIBC__

// NOLINTBEGIN: glibc's names
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace {

template <class Allocate>
void* allocated(Allocate allocate)
{
    if (nextAllocationFails()) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const block = allocate();
    countBlocks(block ? 1 : 0);
    return block;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept
{
    return allocated([=] { return __libc_malloc(size); });
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return allocated([=] { return __libc_calloc(count, size); });
}

void* realloc(void* block, std::size_t size) noexcept
{
    countBlocks(block ? -1 : 0);
    void* const moved = allocated([=] { return __libc_realloc(block, size); });
    if (block && !moved && size > 0)  // it stays where it was
        countBlocks(1);
    return moved;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return allocated([=] { return __libc_memalign(alignment, size); });
}

void* memalign(std::size_t alignment, std::size_t size) noexcept { return aligned_alloc(alignment, size); }

int posix_memalign(void** result, std::size_t alignment, std::size_t size) noexcept
{
    void* const block = aligned_alloc(alignment, size);
    if (!block)
        return ENOMEM;
    *result = block;
    return 0;
}

void free(void* block) noexcept
{
    countBlocks(block ? -1 : 0);
    __libc_free(block);
}

}  // extern "C"
// NOLINTEND

#endif
