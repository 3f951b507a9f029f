// C values as JSON and back: one set of conversions for the journal, for settings and for scripted outputs.
#pragma once

#include <members.h>

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <type_traits>

#include "simulator/core/Json.h"

namespace simulator {

namespace detail {

template <class T>
inline constexpr bool isText = std::is_same_v<T, std::string> ||
                               (std::is_array_v<T> && std::is_same_v<std::remove_extent_t<T>, char>);

/// A number that JSON cannot hold is written as one of these texts.
inline constexpr std::pair<const char*, double> namedNumbers[] = {
    {"Infinity", std::numeric_limits<double>::infinity()},
    {"-Infinity", -std::numeric_limits<double>::infinity()},
    {"NaN", std::numeric_limits<double>::quiet_NaN()},
};

/// Fills the buffer to its end, without a NUL, when the text is too long for it: a companion may do that.
inline void copyText(const std::string& text, char* buffer, std::size_t size) {
    std::memcpy(buffer, text.c_str(), std::min(size, text.size() + 1));
}

/// Whether an integer has the type's width; signed and unsigned spellings of the same bits mean the same.
template <class T>
bool fits(const Json& json) {
    if constexpr (sizeof(T) == sizeof(std::int64_t)) return true;
    constexpr auto bits = 8 * static_cast<int>(std::min(sizeof(T), sizeof(std::int32_t)));
    return json >= -(std::int64_t{1} << (bits - 1)) && json <= (std::uint64_t{1} << bits) - 1;
}

}  // namespace detail

/// Numbers, texts (char arrays up to their NUL), arrays and records.
template <class T>
Json toJson(const T& value) {
    if constexpr (std::floating_point<T>) {
        if (std::isnan(value)) return "NaN";
        if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
        return value;
    } else if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, std::string>) {
        return value;
    } else if constexpr (detail::isText<T>) {
        return std::string(value, std::find(std::begin(value), std::end(value), '\0'));
    } else if constexpr (std::is_array_v<T>) {
        auto list = Json::array();
        for (const auto& item : value) list.push_back(toJson(item));
        return list;
    } else {
        auto object = Json::object();
        std::apply([&](const auto&... member) { ((object[member.name] = toJson(value.*member.pointer)), ...); },
                   companions::members<T>);
        return object;
    }
}

inline Json toJson(const char* text) {
    return text ? Json(text) : Json();
}

/// Writes a JSON value to a C value; false when it does not suit. Of a record or an array only what is given is
/// written.
template <class T>
bool fromJson(const Json& json, T& value) {
    if constexpr (std::floating_point<T>) {
        if (json.is_number()) {
            value = json.get<T>();
            return true;
        }
        for (const auto& [name, number] : detail::namedNumbers)
            if (json == name) {
                value = static_cast<T>(number);
                return true;
            }
        return false;
    } else if constexpr (std::is_arithmetic_v<T>) {
        if (!json.is_number_integer() || !detail::fits<T>(json)) return false;
        value = static_cast<T>(json.get<std::int64_t>());
        return true;
    } else if constexpr (detail::isText<T>) {
        if (!json.is_string()) return false;
        if constexpr (std::is_array_v<T>) {
            detail::copyText(json.get_ref<const std::string&>(), value, std::size(value));
        } else {
            value = json.get<std::string>();
        }
        return true;
    } else if constexpr (std::is_array_v<T>) {
        if (!json.is_array() || json.size() > std::size(value)) return false;
        for (std::size_t i = 0; i < json.size(); ++i)
            if (!fromJson(json[i], value[i])) return false;
        return true;
    } else {
        if (!json.is_object()) return false;
        std::size_t known = 0;
        const auto write = [&](const auto& member) {
            const auto found = json.find(member.name);
            if (found == json.end()) return true;
            ++known;
            return fromJson(*found, value.*member.pointer);
        };
        return std::apply([&](const auto&... member) { return (write(member) && ...); }, companions::members<T>) &&
               known == json.size();
    }
}

}  // namespace simulator
