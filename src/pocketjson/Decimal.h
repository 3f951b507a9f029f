// Between doubles and decimal digits, exact in both directions and independent of locale and rounding mode.
#pragma once

#include <cstdint>
#include <string_view>

namespace pocketjson {

/// digits * 10^exponent
struct Decimal {
    std::uint64_t digits;
    std::int64_t exponent;
};

/// The 17 significant digits of a number that is finite and greater than zero, the last one rounded half to even.
Decimal seventeenDigits(double number) noexcept;

/// So many digits always fit into a Decimal.
inline constexpr std::int64_t kDigitsOfDecimal = 19;

/// The double nearest to the decimal, half to even: infinity beyond the largest one, zero below the smallest one.
double nearestDouble(Decimal decimal) noexcept;

/// The same for more digits than fit into a Decimal: those of `mantissa`, in which one '.' may stand. The first digit
/// is not 0, and the exponent is that of the last digit.
double nearestDouble(std::string_view mantissa, std::int64_t exponent) noexcept;

}  // namespace pocketjson
