#include "Allocations.h"

#include <cerrno>
#include <cstdlib>

// A program's own malloc takes the place of the C library's, for its shared libraries too. Ours counts and passes on to
// the C library's own names. Two additions for each block, so it may stay in while time is measured.

// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace bench {

namespace {

constinit thread_local Allocations counted;

void count(std::size_t bytes) noexcept {
    ++counted.count;
    counted.bytes += bytes;
}

}  // namespace

Allocations allocationsSoFar() noexcept {
    return counted;
}

}  // namespace bench

extern "C" {

void* malloc(std::size_t size) noexcept {
    bench::count(size);
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    bench::count(count * size);
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept {
    bench::count(size);
    return __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    bench::count(size);
    return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    void* const allocated = memalign(alignment, size);
    if (!allocated) return ENOMEM;
    *block = allocated;
    return 0;
}

}  // extern "C"
