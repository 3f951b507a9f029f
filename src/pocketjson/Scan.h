// Searches that look at sixteen bytes at a time.
#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace pocketjson {

/// Sixteen bytes. A set of them is a mask with the first byte in the lowest bit.
class ByteBlock {
 public:
    static constexpr std::ptrdiff_t size = 16;

    explicit ByteBlock(const char* bytes) noexcept : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes))) {}
    /// Eight bytes twice.
    ByteBlock(std::uint64_t first, std::uint64_t second) noexcept
        : bytes_(_mm_set_epi64x(static_cast<long long>(second), static_cast<long long>(first))) {}
    void store(char* to) const noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes_); }

    /// Those equal to one of the given bytes.
    template <class... Byte>
    unsigned among(Byte... byte) const noexcept {
        __m128i any = _mm_setzero_si128();
        ((any = _mm_or_si128(any, _mm_cmpeq_epi8(bytes_, _mm_set1_epi8(byte)))), ...);
        return static_cast<unsigned>(_mm_movemask_epi8(any));
    }
    /// Those less than or equal to a byte, as unsigned numbers.
    unsigned upTo(char limit) const noexcept {
        return static_cast<unsigned>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(bytes_, _mm_set1_epi8(limit)), bytes_)));
    }
    unsigned nonDigits() const noexcept {
        const __m128i digits = _mm_sub_epi8(bytes_, _mm_set1_epi8('0'));
        const __m128i isDigit = _mm_cmpeq_epi8(_mm_min_epu8(digits, _mm_set1_epi8(9)), digits);
        return static_cast<unsigned>(_mm_movemask_epi8(isDigit)) ^ 0xFFFF;
    }
    /// The number that they make if all are digits: neighbours are put together four times, into 2, 4, 8 and 16 digits.
    std::uint64_t number() const noexcept {
        const __m128i digits = _mm_sub_epi8(bytes_, _mm_set1_epi8('0'));
        const __m128i zero = _mm_setzero_si128();
        const __m128i tens = _mm_set1_epi32(10 | 1 << 16);
        const __m128i two = _mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(digits, zero), tens),
                                            _mm_madd_epi16(_mm_unpackhi_epi8(digits, zero), tens));
        const __m128i four = _mm_madd_epi16(two, _mm_set1_epi32(100 | 1 << 16));
        const __m128i eight = _mm_madd_epi16(_mm_packs_epi32(four, four), _mm_set1_epi32(10000 | 1 << 16));
        const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(eight));
        return (both & 0xFFFFFFFF) * 100000000 + (both >> 32);
    }

 private:
    __m128i bytes_;
};

/// The first of the bytes that `search` finds, or `end`. `search` takes a ByteBlock and returns a mask, or a byte and
/// returns whether it is one.
template <class Search>
const char* findFirst(const char* cursor, const char* end, Search search) noexcept {
    for (; end - cursor >= ByteBlock::size; cursor += ByteBlock::size)
        if (const unsigned found = search(ByteBlock(cursor))) return cursor + std::countr_zero(found);
    while (cursor != end && !search(*cursor)) ++cursor;
    return cursor;
}

}  // namespace pocketjson
