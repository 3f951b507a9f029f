#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace pocketjson {

/// Long enough for every number in decimal.
using NumberBuffer = std::array<char, 32>;

/// As printf's "%lld" and "%.17g" would put them, but '.' is the decimal point under every locale; zero of either sign
/// is "0.0". The number is finite. The text lies in the buffer.
std::string_view formatNumber(std::int64_t number, NumberBuffer& buffer) noexcept;
std::string_view formatNumber(double number, NumberBuffer& buffer) noexcept;

/// Reads a whole text as a decimal number, rounded to the nearest double: infinity beyond the largest one, zero below
/// the smallest one. False if the text is no such number.
bool readNumber(std::string_view text, double& number) noexcept;

/// Reads a whole text as an integer: an optional sign, "0x" before hexadecimal and "0" before octal digits. False if
/// the text is no such number or out of range.
bool readInteger(std::string_view text, std::int64_t& number) noexcept;

}  // namespace pocketjson
