#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Decimal.h"
#include "Scan.h"

namespace pocketjson {

/// The room that a number needs in which it is written.
inline constexpr std::size_t kNumberRoom = 48;
using NumberBuffer = std::array<char, kNumberRoom>;

/// As printf's "%lld" and "%.17g" would put them, but '.' is the decimal point under every locale; zero of either sign
/// is "0.0". The number is finite. Returns the end of the text; the room after it may be written to as well.
inline char* writeNumber(std::int64_t number, char* room) noexcept;
char* writeNumber(double number, char* room) noexcept;

template <class Number>
std::string_view formatNumber(Number number, NumberBuffer& buffer) noexcept {
    return {buffer.data(), static_cast<std::size_t>(writeNumber(number, buffer.data()) - buffer.data())};
}

char* writeAnyNumber(std::int64_t number, char* room) noexcept;

inline char* writeNumber(std::int64_t number, char* room) noexcept {
    if (static_cast<std::uint64_t>(number) >= 10000) return writeAnyNumber(number, room);
    // The four digits, each a byte from 0 to 9, the first one in the lowest byte; then those after the leading zeros.
    const auto small = static_cast<std::uint32_t>(number);
    const std::uint32_t pairs = small / 100 + (small % 100 << 16);
    const std::uint32_t tens = (pairs * 103 >> 10) & 0x000F000F;
    const std::uint32_t digits = tens + ((pairs - 10 * tens) << 8);
    const int zeros = std::countr_zero(digits | std::uint32_t{1} << 24) / 8;
    const std::uint32_t text = (digits + 0x30303030) >> (8 * zeros);
    std::memcpy(room, &text, sizeof text);
    return room + (4 - zeros);
}

constexpr bool isDigit(char byte) noexcept {
    return byte >= '0' && byte <= '9';
}

/// The value of the first digits of a text, of which there are one to eight and as many bytes behind.
inline std::uint64_t valueOfDigits(const char* text, int count) noexcept {
    std::uint64_t bytes;
    std::memcpy(&bytes, text, sizeof bytes);
    const std::uint64_t digits = (bytes - 0x3030303030303030) << (64 - 8 * count);  // with zeros in front
    constexpr std::uint64_t kMask = 0x000000FF000000FF;
    const std::uint64_t pairs = digits * 10 + (digits >> 8);
    const std::uint64_t high = (pairs & kMask) * (100 + (std::uint64_t{1000000} << 32));
    const std::uint64_t low = ((pairs >> 16) & kMask) * (1 + (std::uint64_t{10000} << 32));
    return (high + low) >> 32;
}

/// Appends the digits at the beginning of a text to a number, modulo 2^64. Returns where they end.
[[gnu::always_inline]] inline const char* scanDigits(const char* cursor, const char* end,
                                                     std::uint64_t& number) noexcept {
    if (end - cursor >= Sixteen::size) {
        const Sixteen bytes(cursor);
        const unsigned others = bytes.noDigits();
        if (others != 0) {
            constexpr std::array<std::uint64_t, 9> kPowers{1,      10,      100,      1000,     10000,
                                                           100000, 1000000, 10000000, 100000000};
            int count = std::countr_zero(others);
            if (count > 8) {
                number = number * kPowers[8] + valueOfDigits(cursor, 8);
                cursor += 8;
                count -= 8;
            }
            if (count == 0) return cursor;
            number = number * kPowers[static_cast<std::size_t>(count)] + valueOfDigits(cursor, count);
            return cursor + count;
        }
        number = number * 10000000000000000 + bytes.number();
        cursor += Sixteen::size;
    }
    for (; cursor != end && isDigit(*cursor); ++cursor)
        number = number * 10 + static_cast<std::uint64_t>(*cursor - '0');
    return cursor;
}

/// Reads the digits of an exponent, as many as it takes to tell that it is a huge one. Returns where they end.
const char* scanExponent(const char* cursor, const char* end, std::int64_t& exponent) noexcept;

/// The double nearest to mantissa * 10^exponent: infinity beyond the largest one, zero below the smallest one. The
/// mantissa is `count` digits with at most one '.', `digits` is all of them modulo 2^64, and the exponent is that of
/// the last one.
double longToDouble(std::string_view mantissa, std::uint64_t digits, std::int64_t exponent) noexcept;
inline double toDouble(std::string_view mantissa, std::int64_t count, std::uint64_t digits,
                       std::int64_t exponent) noexcept {
    return count <= kDigitsOfDecimal ? nearestDouble({digits, exponent}) : longToDouble(mantissa, digits, exponent);
}

/// Reads a whole text as a decimal number, rounded to the nearest double. False if the text is no such number.
bool readNumber(std::string_view text, double& number) noexcept;

/// Reads a whole text as an integer: an optional sign, "0x" before hexadecimal and "0" before octal digits. False if
/// the text is no such number or out of range.
bool readInteger(std::string_view text, std::int64_t& number) noexcept;

}  // namespace pocketjson
