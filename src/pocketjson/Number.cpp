#include "Number.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace pocketjson {

namespace {

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

// Roughly the power of ten of a number: exact enough to tell one that is too large for a double from one that is too
// small. The exponent counts as a huge one when it does not fit.
std::int64_t magnitude(std::string_view unsignedNumber) {
    const auto mantissaEnd = std::min(unsignedNumber.find_first_of("eE"), unsignedNumber.size());
    const auto mantissa = unsignedNumber.substr(0, mantissaEnd);
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    const auto leading = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    const auto position = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leading);

    constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max() / 4;
    std::int64_t exponent = 0;
    if (mantissaEnd < unsignedNumber.size()) {
        auto digits = unsignedNumber.substr(mantissaEnd + 1);
        const bool negative = digits.front() == '-';
        if (!isDigit(digits.front())) digits.remove_prefix(1);
        exponent = kHuge;
        std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        exponent = std::min(exponent, kHuge);
        if (negative) exponent = -exponent;
    }
    return position + exponent;
}

}  // namespace

std::string_view formatNumber(std::int64_t number, NumberBuffer& buffer) noexcept {
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

std::string_view formatNumber(double number, NumberBuffer& buffer) noexcept {
    if (number == 0) return "0.0";
    // Defined as what printf does in the C locale, so no other decimal point can occur.
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, 17);
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

bool readNumber(std::string_view text, double& number) noexcept {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    // Excludes a second sign, and the words for infinity and NaN.
    if (text.empty() || !(isDigit(text.front()) || text.front() == '.')) return false;
    const auto* const end = text.data() + text.size();
    double absolute = 0;
    const auto result = std::from_chars(text.data(), end, absolute);
    if (result.ptr != end) return false;
    if (result.ec ==
        std::errc::result_out_of_range)  // which leaves the number as it was, whether too large or too small
        absolute = magnitude(text) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    else if (result.ec != std::errc{})
        return false;
    number = negative ? -absolute : absolute;
    return true;
}

bool readInteger(std::string_view text, std::int64_t& number) noexcept {
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
    if (result.ec != std::errc{} || result.ptr != end || absolute > limit) return false;
    number = static_cast<std::int64_t>(negative ? 0 - absolute : absolute);
    return true;
}

}  // namespace pocketjson
