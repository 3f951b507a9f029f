// Exceptions that need neither memory nor handles, so that a request that gets none is answered all the same. Replaces
// functions of the compiler's runtime library, which at a thread's first exception takes memory and a TLS index that it
// never returns, and locks a mutex that takes memory as well.
//
// For libpell alone, whose runtime library is its own. A program with the shared one would allocate exceptions here and
// have them freed there. There are no std::exception_ptr: they need two more functions of the object file that this one
// replaces, and linking fails with duplicate definitions.
#include <windows.h>
//
#include <cxxabi.h>
#include <unwind.h>

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace {

// What the runtime library keeps before an exception, zero at first, is counted back from the exception: there may be
// more space than it needs.
constexpr std::size_t headerSize = 0x100;
static_assert(headerSize >= 16 + 80 + sizeof(_Unwind_Exception));  // __cxa_refcounted_exception of GCC 12

// Exceptions are few at a time, and small. What does not fit, or comes when all slots are taken, is allocated.
constexpr std::size_t slotSize = 0x200;
constexpr std::size_t slotCount = 64;
alignas(16) constinit std::array<std::byte, slotCount * slotSize> slots{};
constinit std::atomic<std::uint64_t> takenSlots{0};  // a bit for each

std::byte* takeSlot() noexcept {
    std::uint64_t taken = takenSlots.load(std::memory_order_relaxed);
    while (~taken != 0) {
        const auto slot = static_cast<unsigned>(std::countr_one(taken));
        if (takenSlots.compare_exchange_weak(taken, taken | std::uint64_t{1} << slot, std::memory_order_acquire))
            return slots.data() + slot * slotSize;
    }
    return nullptr;
}

/// Whether the memory was a slot.
bool returnSlot(const std::byte* memory) noexcept {
    const std::size_t offset =
        reinterpret_cast<std::uintptr_t>(memory) - reinterpret_cast<std::uintptr_t>(slots.data());
    if (offset >= slots.size()) return false;
    takenSlots.fetch_and(~(std::uint64_t{1} << offset / slotSize), std::memory_order_release);
    return true;
}

}  // namespace

// Where the section .tls begins, and which of a thread's copies of such sections is this library's.
extern "C" char* _tls_start;
extern "C" ULONG _tls_index;

namespace __cxxabiv1 {

extern "C" void* __cxa_allocate_exception(std::size_t size) noexcept {
    if (size > SIZE_MAX - headerSize) std::terminate();
    size += headerSize;
    std::byte* memory = size <= slotSize ? takeSlot() : nullptr;
    if (!memory) memory = static_cast<std::byte*>(std::malloc(size));
    if (!memory) std::terminate();
    std::memset(memory, 0, headerSize);
    return memory + headerSize;
}

extern "C" void __cxa_free_exception(void* exception) noexcept {
    std::byte* const memory = static_cast<std::byte*>(exception) - headerSize;
    if (!returnSlot(memory)) std::free(memory);
}

/// The exceptions that a thread has thrown and caught, as in the runtime library.
struct __cxa_eh_globals {
    void* caughtExceptions;
    unsigned uncaughtExceptions;
};

// The system gives each thread a copy of the section .tls before the thread runs any code. GCC does not use that for
// thread_local, so the copy is found by hand here. The linker sorts the parts of the section by what follows the
// dollar; it must sort before ZZZ, the end of what is copied (lower-case letters sort after it): scripts/check-dll
// looks at it.
[[gnu::section(".tls$PELL")]] static __cxa_eh_globals exceptionsOfThread{};

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept {
    const std::uintptr_t* copies;
    asm("movq %%gs:0x58, %0" : "=r"(copies));  // ThreadLocalStoragePointer of the thread's environment block
    const auto offset =
        reinterpret_cast<std::uintptr_t>(&exceptionsOfThread) - reinterpret_cast<std::uintptr_t>(&_tls_start);
    return reinterpret_cast<__cxa_eh_globals*>(copies[_tls_index] + offset);
}

extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept {
    return __cxa_get_globals();
}

}  // namespace __cxxabiv1
