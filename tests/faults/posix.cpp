#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/faults/Platform.h"

using faults::grant;
using faults::Need;

#ifdef PELL_SANITIZED

void* operator new(std::size_t size) {
    if (!grant(Need::memory, size)) throw std::bad_alloc();
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

#else

extern "C" {

// The C library's own, under the names that it keeps for this.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
    return grant(Need::memory, size) ? __libc_malloc(size) : nullptr;
}
void* calloc(std::size_t count, std::size_t size) {
    return grant(Need::memory, count * size) ? __libc_calloc(count, size) : nullptr;
}
void* realloc(void* memory, std::size_t size) {
    return grant(Need::memory, size) ? __libc_realloc(memory, size) : nullptr;
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return grant(Need::memory, size) ? __libc_memalign(alignment, size) : nullptr;
}

void* dlsym(void* module, const char* name) {
    using Look = void* (*)(void*, const char*);
    static const auto look = reinterpret_cast<Look>(dlvsym(RTLD_NEXT, "dlsym", "GLIBC_2.34"));
    return faults::vanished && std::strcmp(name, faults::vanished) == 0 ? nullptr : look(module, name);
}

}  // extern "C"

#endif

void faults::standIn() {}
void faults::raise(unsigned long) {}
