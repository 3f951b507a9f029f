// What one compiler needs, and another one has under another name or not at all. Nowhere else in this folder is a
// compiler asked who it is.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define POCKETJSON_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define POCKETJSON_ADDRESS_SANITIZER
#endif
#endif

#ifdef POCKETJSON_ADDRESS_SANITIZER
extern "C" void __asan_poison_memory_region(const volatile void* memory, std::size_t size);
extern "C" void __asan_unpoison_memory_region(const volatile void* memory, std::size_t size);
#endif

#ifdef _MSC_VER
#define POCKETJSON_ALWAYS_INLINE __forceinline
#else
#define POCKETJSON_ALWAYS_INLINE [[gnu::always_inline]] inline
#endif

namespace pocketjson {

/// Lets AddressSanitizer report every use of memory that is not in use.
inline void poison([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef POCKETJSON_ADDRESS_SANITIZER
    __asan_poison_memory_region(memory, size);
#endif
}
inline void unpoison([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef POCKETJSON_ADDRESS_SANITIZER
    __asan_unpoison_memory_region(memory, size);
#endif
}

/// 128 bits.
struct Wide {
    std::uint64_t high;
    std::uint64_t low;
};

inline Wide multiply(std::uint64_t a, std::uint64_t b) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using Product = unsigned __int128;
    const Product product = static_cast<Product>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
    const std::uint64_t aLow = a & 0xFFFFFFFF, aHigh = a >> 32, bLow = b & 0xFFFFFFFF, bHigh = b >> 32;
    const std::uint64_t low = aLow * bLow;
    const std::uint64_t middle = aHigh * bLow + (low >> 32);
    const std::uint64_t otherMiddle = aLow * bHigh + (middle & 0xFFFFFFFF);
    return {aHigh * bHigh + (middle >> 32) + (otherMiddle >> 32), otherMiddle << 32 | (low & 0xFFFFFFFF)};
#endif
}

}  // namespace pocketjson

#undef POCKETJSON_ADDRESS_SANITIZER
