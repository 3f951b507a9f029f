// C values as JSON and back: one set of conversions for the journal, for settings and for scripted outputs.
#pragma once

#include <records/Member.h>

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

/// Numbers, texts (char arrays up to their NUL), arrays and records. Unlike the page, the journal has every member of a
/// record as it is: flags as numbers, and what does not apply.
template <class T>
Json toJson(const T& value);

namespace detail {

template <class Record, class Member>
void addMember(Json& object, const Record& record, const Member& member) {
    object[member.name] = toJson(record.*member.pointer);
}

template <class Record, std::size_t Size, std::size_t Layouts>
void addMember(Json& object, const Record& record, const companions::Variant<Record, Size, Layouts>& variant) {
    for (const companions::Field& field : variant.fieldsOf(record))
        if (field.name) object[field.name] = field.read(record.*variant.pointer);
}

}  // namespace detail

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
        std::apply([&](const auto&... member) { (detail::addMember(object, value, member), ...); },
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
bool fromJson(const Json& json, T& value);

namespace detail {

/// Counts in `known` what the object has of the record.
template <class Record, class Member>
bool readMember(const Json& object, Record& record, const Member& member, std::size_t& known) {
    const auto found = object.find(member.name);
    if (found == object.end()) return true;
    ++known;
    return fromJson(*found, record.*member.pointer);
}

template <class Record, std::size_t Size, std::size_t Layouts>
bool readMember(const Json& object, Record& record, const companions::Variant<Record, Size, Layouts>& variant,
                std::size_t& known) {
    for (const companions::Field& field : variant.fieldsOf(record)) {
        const auto found = field.name ? object.find(field.name) : object.end();
        if (found == object.end()) continue;
        std::uint32_t number = 0;
        if (!fromJson(*found, number)) return false;
        field.write(record.*variant.pointer, number);
        ++known;
    }
    return true;
}

}  // namespace detail

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
        const auto write = [&](const auto& member) { return detail::readMember(json, value, member, known); };
        return std::apply([&](const auto&... member) { return (write(member) && ...); }, companions::members<T>) &&
               known == json.size();
    }
}

}  // namespace simulator
