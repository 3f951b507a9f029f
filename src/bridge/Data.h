// What the data of a request must be, and how it becomes what the companion functions take.
#pragma once

#include <cmath>
#include <concepts>
#include <cstdint>
#include <string>
#include <type_traits>

#include "bridge/Errors.h"
#include "pocketjson/Value.h"

namespace torvo {

// Tests of data. A number that is not finite (1e999) is no number, and a text with a NUL inside is no text: neither can
// be handed to a companion as what it is.
inline bool isPresent(const pocketjson::Value& data) noexcept {
    return !data.isNull();
}
inline bool isBoolean(const pocketjson::Value& data) noexcept {
    return data.isBoolean();
}
inline bool isNumber(const pocketjson::Value& data) noexcept {
    return data.isInteger() || (data.isFloat() && std::isfinite(data.asDouble()));
}
inline bool isText(const pocketjson::Value& data) noexcept {
    return data.isString() && data.text().find('\0') == std::string::npos;
}
inline bool isObject(const pocketjson::Value& data) noexcept {
    return data.isObject();
}
inline bool isArray(const pocketjson::Value& data) noexcept {
    return data.isArray();
}

/// A test of the data, and the message of the "BadRequestError" when it does not hold.
struct Check {
    bool (*holds)(const pocketjson::Value& data) noexcept;
    const char* message;
};

/// All of them, in order.
template <class Checks>
void checkData(const pocketjson::Value& data, const Checks& checks) {
    for (const Check& check : checks) checkRequest(check.holds(data), check.message);
}

/// A number as an argument of type T. Doubles are rounded to whole numbers, halves away from zero; an unsigned number
/// is 0 for what is negative, and the low bits of what is too large for T; a signed one is 0 for what is out of the
/// range of 32 bits, or of 64 if it has so many. A boolean is 1 or 0, a text the whole number that it is, all else 0.
template <class T>
T toNumber(const pocketjson::Value& data) noexcept {
    if constexpr (std::floating_point<T>)
        return static_cast<T>(data.asDouble());
    else if constexpr (sizeof(T) > sizeof(std::uint32_t))
        return static_cast<T>(data.asInt64());
    else if constexpr (std::is_signed_v<T>)
        return static_cast<T>(data.asInt());
    else
        return static_cast<T>(data.asUInt());
}

/// A double, read leniently: a boolean is 1 or 0, a text the decimal number that it is; everything else is 0, numbers
/// that are not finite included.
inline double lenientDouble(const pocketjson::Value& data) noexcept {
    const double number = data.asDouble();
    return std::isfinite(number) ? number : 0;
}

/// A flag, read leniently: a boolean, a number that is not 0, the text "true"; everything else is off.
inline bool lenientFlag(const pocketjson::Value& data) noexcept {
    return data.asBool();
}

/// An unsigned number, read leniently: 0 for whatever is no number.
template <class T = std::uint32_t>
T lenientNumber(const pocketjson::Value& data) noexcept {
    return isNumber(data) ? toNumber<T>(data) : T{};
}

}  // namespace torvo
