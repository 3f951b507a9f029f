#include "Number.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <limits>

#include "Decimal.h"

namespace pocketjson {

namespace {

// The eight digits of a number, each a byte from 0 to 9, the first one in the lowest byte: split into halves three
// times, by multiplication with the reciprocals of 100 and 10.
inline std::uint64_t eightDigits(std::uint64_t number) noexcept {
    const std::uint64_t fours = number / 10000 + (number % 10000 << 32);
    const std::uint64_t hundreds = (fours * 10486 >> 20) & 0x0000007F0000007F;
    const std::uint64_t twos = hundreds + ((fours - 100 * hundreds) << 16);
    const std::uint64_t tens = (twos * 103 >> 10) & 0x000F000F000F000F;
    return tens + ((twos - 10 * tens) << 8);
}

inline void writeEightDigits(std::uint64_t digits, char* to) noexcept {
    digits += 0x3030303030303030;
    std::memcpy(to, &digits, sizeof digits);
}

char* writeExponent(std::int64_t exponent, char* to) noexcept {
    *to++ = 'e';
    *to++ = exponent < 0 ? '-' : '+';
    const auto absolute = static_cast<std::uint64_t>(exponent < 0 ? -exponent : exponent);
    if (absolute >= 100) *to++ = static_cast<char>('0' + absolute / 100);
    *to++ = static_cast<char>('0' + absolute / 10 % 10);
    *to++ = static_cast<char>('0' + absolute % 10);
    return to;
}

constexpr int kSignificantDigits = 17;

}  // namespace

char* writeAnyNumber(std::int64_t number, char* buffer) noexcept {
    auto absolute = static_cast<std::uint64_t>(number);
    if (number < 0) {
        *buffer++ = '-';
        absolute = 0 - absolute;
    }
    const auto writeLeading = [&buffer](std::uint64_t upToEightDigits) {
        const std::uint64_t digits = eightDigits(upToEightDigits);
        const int zeros = std::countr_zero(digits | std::uint64_t{1} << 56) / 8;
        writeEightDigits(digits >> (8 * zeros), buffer);
        buffer += 8 - zeros;
    };
    const auto writeNextEight = [&buffer](std::uint64_t eight) {
        writeEightDigits(eightDigits(eight), buffer);
        buffer += 8;
    };
    constexpr std::uint64_t kTenTo8 = 100000000;
    constexpr std::uint64_t kTenTo16 = kTenTo8 * kTenTo8;
    if (absolute < kTenTo8) {
        writeLeading(absolute);
    } else if (absolute < kTenTo16) {
        writeLeading(absolute / kTenTo8);
        writeNextEight(absolute % kTenTo8);
    } else {
        writeLeading(absolute / kTenTo16);
        writeNextEight(absolute / kTenTo8 % kTenTo8);
        writeNextEight(absolute % kTenTo8);
    }
    return buffer;
}

char* writeNumber(double number, char* buffer) noexcept {
    if (number == 0) {
        std::memcpy(buffer, "0.0", 3);
        return buffer + 3;
    }
    if (number < 0) {
        *buffer++ = '-';
        number = -number;
    }
    const Decimal decimal = seventeenDigits(number);

    // The digits as they stand in a text: the first one, and twice eight.
    const std::uint64_t leading = decimal.digits / 100000000;
    const auto first = static_cast<char>('0' + leading / 100000000);
    const std::uint64_t upper = eightDigits(leading % 100000000), lower = eightDigits(decimal.digits % 100000000);
    const std::int64_t length = lower != 0 ? 17 - std::countl_zero(lower) / 8 : 9 - std::countl_zero(upper) / 8;
    const auto writeDigits = [&](char* to) {
        *to = first;
        writeEightDigits(upper, to + 1);
        writeEightDigits(lower, to + 9);
    };

    const std::int64_t power = decimal.exponent + kSignificantDigits - 1;  // of ten, in the first digit
    if (power < -4 || power >= kSignificantDigits) {
        writeDigits(buffer + 1);
        buffer[0] = first;
        buffer[1] = '.';
        return writeExponent(power, buffer + (length > 1 ? length + 1 : 1));
    }
    if (power < 0) {
        std::memcpy(buffer, "0.000", 5);
        writeDigits(buffer + 1 - power);
        return buffer + 1 - power + length;
    }
    writeDigits(buffer);
    if (length <= power + 1) return buffer + power + 1;
    std::memmove(buffer + power + 2, buffer + power + 1, kSignificantDigits - 1);
    buffer[power + 1] = '.';
    return buffer + length + 1;
}

const char* scanExponent(const char* cursor, const char* end, std::int64_t& exponent) noexcept {
    constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max() / 100;
    exponent = 0;
    for (; cursor != end && isDigit(*cursor); ++cursor)
        if (exponent < kHuge) exponent = exponent * 10 + (*cursor - '0');
    return cursor;
}

double longToDouble(std::string_view mantissa, std::uint64_t digits, std::int64_t exponent) noexcept {
    mantissa.remove_prefix(std::min(mantissa.find_first_not_of("0."), mantissa.size()));
    if (mantissa.size() <= static_cast<std::size_t>(kDigitsOfDecimal)) return nearestDouble({digits, exponent});
    return nearestDouble(mantissa, exponent);
}

bool readNumber(std::string_view text, double& number) noexcept {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    const DecimalText decimal = scanDecimal(text.data(), end);
    if (decimal.digitCount() == 0 || decimal.lacksExponentDigits || decimal.end != end) return false;
    const double absolute = toDouble(decimal);
    number = isNegative ? -absolute : absolute;
    return true;
}

void readInteger(std::string_view text, std::int64_t& number) noexcept {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.starts_with('0')) {
        base = 8;
    }
    std::uint64_t absolute = 0;  // unsigned, so that from_chars takes no second sign
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, absolute, base);
    const std::uint64_t limit = std::uint64_t{std::numeric_limits<std::int64_t>::max()} + negative;
    if (result.ec != std::errc{} || result.ptr != end || absolute > limit) return;
    number = static_cast<std::int64_t>(negative ? 0 - absolute : absolute);
}

}  // namespace pocketjson
