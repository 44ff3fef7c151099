#include "LargeAllocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

// The C library's own names for its allocator; the definitions below take the place of the public ones.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* old, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

std::atomic<unsigned long> count{0};

void note(std::size_t size)
{
    if (size >= 64 * 1024)
        ++count;
}

} // namespace

unsigned long largeAllocations()
{
    return count;
}

extern "C" {

void* malloc(std::size_t size)
{
    note(size);
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size)
{
    note(number * size);
    return __libc_calloc(number, size);
}

void* realloc(void* old, std::size_t size)
{
    note(size);
    return __libc_realloc(old, size);
}

void* memalign(std::size_t alignment, std::size_t size)
{
    note(size);
    return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void** result, std::size_t alignment, std::size_t size)
{
    *result = memalign(alignment, size);
    return *result ? 0 : ENOMEM;
}
}
