#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "Compiler.h"
#include "Decimal.h"
#include "Scan.h"

namespace pocketjson {

/// Long enough for every number, and for what writing it leaves behind it.
inline constexpr std::size_t kNumberBufferSize = 48;
using NumberBuffer = std::array<char, kNumberBufferSize>;

/// As printf's "%lld" and "%.17g" would put them, but '.' is the decimal point under every locale; zero of either sign
/// is "0.0". The number is finite. Returns the end of the text; all of a NumberBuffer may be written to.
inline char* writeNumber(std::int64_t number, char* buffer) noexcept;
char* writeNumber(double number, char* buffer) noexcept;

template <class Number>
std::string_view formatNumber(Number number, NumberBuffer& buffer) noexcept {
    return {buffer.data(), static_cast<std::size_t>(writeNumber(number, buffer.data()) - buffer.data())};
}

char* writeAnyNumber(std::int64_t number, char* buffer) noexcept;

inline char* writeNumber(std::int64_t number, char* buffer) noexcept {
    if (static_cast<std::uint64_t>(number) >= 10000) return writeAnyNumber(number, buffer);
    // The four digits, each a byte from 0 to 9, the first one in the lowest byte; then those after the leading zeros.
    const auto small = static_cast<std::uint32_t>(number);
    const std::uint32_t pairs = small / 100 + (small % 100 << 16);
    const std::uint32_t tens = (pairs * 103 >> 10) & 0x000F000F;
    const std::uint32_t digits = tens + ((pairs - 10 * tens) << 8);
    const int zeros = std::countr_zero(digits | std::uint32_t{1} << 24) / 8;
    const std::uint32_t text = (digits + 0x30303030) >> (8 * zeros);
    std::memcpy(buffer, &text, sizeof text);
    return buffer + (4 - zeros);
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

/// A decimal number as it stands in a text, any part of which may be missing: digits, '.' and digits, 'e' or 'E' with a
/// sign and digits.
struct DecimalText {
    const char* begin;
    const char* integerEnd;
    const char* mantissaEnd;  ///< Behind the point and its digits.
    const char* end;
    bool lacksExponentDigits;
    std::uint64_t digits;   ///< Of the mantissa, as one number modulo 2^64.
    std::int64_t exponent;  ///< Of the last of these digits; a huge one of its sign if it is beyond all doubles.

    bool isInteger() const noexcept { return end == integerEnd; }
    bool hasPoint() const noexcept { return mantissaEnd != integerEnd; }
    std::ptrdiff_t digitCount() const noexcept { return mantissaEnd - begin - hasPoint(); }
};

/// Appends the digits at the beginning of a text to a number, modulo 2^64. Returns where they end.
POCKETJSON_ALWAYS_INLINE const char* scanDigits(const char* cursor, const char* end, std::uint64_t& number) noexcept {
    if (end - cursor >= ByteBlock::size) {
        const ByteBlock bytes(cursor);
        const unsigned others = bytes.nonDigits();
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
        cursor += ByteBlock::size;
    }
    for (; cursor != end && isDigit(*cursor); ++cursor)
        number = number * 10 + static_cast<std::uint64_t>(*cursor - '0');
    return cursor;
}

/// Reads the digits of an exponent; what is beyond all doubles becomes some huge number. Returns where they end.
const char* scanExponent(const char* cursor, const char* end, std::int64_t& exponent) noexcept;

/// Takes the decimal number at the beginning of a text apart.
POCKETJSON_ALWAYS_INLINE DecimalText scanDecimal(const char* begin, const char* end) noexcept {
    const auto byteAt = [end](const char* at) { return at != end ? *at : '\0'; };
    std::uint64_t digits = 0;
    std::int64_t exponent = 0;
    bool lacksExponentDigits = false;

    const char* cursor = begin;
    char next = byteAt(cursor);
    if (isDigit(next)) {  // mostly, the only one before the point
        digits = static_cast<std::uint64_t>(next - '0');
        next = byteAt(++cursor);
    }
    if (next != '.') {
        cursor = scanDigits(cursor, end, digits);
        next = byteAt(cursor);
    }
    const char* const integerEnd = cursor;
    if (next == '.') {
        const char* const fraction = ++cursor;
        cursor = scanDigits(cursor, end, digits);
        next = byteAt(cursor);
        exponent = fraction - cursor;
    }
    const char* const mantissaEnd = cursor;
    if (next == 'e' || next == 'E') {
        next = byteAt(++cursor);
        if (next == '-' || next == '+') ++cursor;
        const char* const exponentDigits = cursor;
        std::int64_t stated = 0;
        cursor = scanExponent(cursor, end, stated);
        lacksExponentDigits = cursor == exponentDigits;
        exponent += next == '-' ? -stated : stated;
    }
    return {begin, integerEnd, mantissaEnd, cursor, lacksExponentDigits, digits, exponent};
}

/// The nearest double: infinity beyond the largest one, zero below the smallest one.
double longToDouble(std::string_view mantissa, std::uint64_t digits, std::int64_t exponent) noexcept;
inline double toDouble(const DecimalText& decimal) noexcept {
    const std::string_view mantissa(decimal.begin, decimal.mantissaEnd);
    if (static_cast<std::ptrdiff_t>(mantissa.size()) > kDigitsOfDecimal &&
        decimal.digitCount() - (mantissa[0] == '0') > kDigitsOfDecimal)
        return longToDouble(mantissa, decimal.digits, decimal.exponent);
    return nearestDouble({decimal.digits, decimal.exponent});
}

/// Reads a whole text as a decimal number, rounded to the nearest double. False if the text is no such number.
bool readNumber(std::string_view text, double& number) noexcept;

/// Reads a whole text as an integer: an optional sign, "0x" before hexadecimal and "0" before octal digits. The number
/// stays as it is if the text is no such number or out of range.
void readInteger(std::string_view text, std::int64_t& number) noexcept;

}  // namespace pocketjson
