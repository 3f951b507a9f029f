// Records of the companion libraries as JSON and back, by the tables of members in companions/members.h.
#pragma once

#include <members.h>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "bridge/Errors.h"
#include "pocketjson/Value.h"

namespace torvo {

namespace detail {

template <class T>
inline constexpr bool isText = std::is_array_v<T>&& std::same_as<std::remove_extent_t<T>, char>;

}  // namespace detail

/// A number as it is; a text up to its NUL or the end of its field; a list as an array; a record as an object of its
/// members, flags as booleans.
template <class T>
pocketjson::Value toValue(const T& value);

namespace detail {

template <class Record, class T>
pocketjson::Value memberValue(const Record& record, const companions::Member<Record, T>& member) {
    return toValue(record.*member.pointer);
}

template <class Record>
pocketjson::Value memberValue(const Record& record, const companions::Flag<Record>& flag) {
    return record.*flag.pointer != 0;
}

}  // namespace detail

template <class T>
pocketjson::Value toValue(const T& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        return value;
    } else if constexpr (detail::isText<T>) {
        return std::string_view(std::begin(value), std::find(std::begin(value), std::end(value), '\0'));
    } else if constexpr (std::is_array_v<T>) {
        return pocketjson::Value::array(value);
    } else {
        pocketjson::Value object = pocketjson::Value::object();
        std::apply([&](const auto&... member) { ((object[member.name] = detail::memberValue(value, member)), ...); },
                   companions::members<T>);
        return object;
    }
}

/// Replaces what the data has: a number by a number, and of a record the members that are there. Everything else in the
/// target stays as it is.
template <class T>
void replaceMembers(T& target, const pocketjson::Value& data) {
    if constexpr (std::floating_point<T>) {
        if (data.isNumber()) target = data.asDouble();
    } else if constexpr (std::same_as<T, std::uint32_t>) {
        if (data.isNumber()) target = data.asUInt();
    } else {
        std::apply([&](const auto&... member) { (replaceMembers(target.*member.pointer, data.get(member.name)), ...); },
                   companions::members<T>);
    }
}

namespace detail {

template <class T>
void readInto(T& target, const pocketjson::Value& data);

template <class Record, class T>
void readMember(Record& record, const companions::Member<Record, T>& member, const pocketjson::Value& data) {
    readInto(record.*member.pointer, data.get(member.name));
}

template <class Record>
void readMember(Record& record, const companions::Flag<Record>& flag, const pocketjson::Value& data) {
    record.*flag.pointer = data.get(flag.name).asBool();
}

/// The target is zero before.
template <class T>
void readInto(T& target, const pocketjson::Value& data) {
    if constexpr (std::floating_point<T>) {
        target = data.asDouble();
    } else if constexpr (std::same_as<T, std::uint32_t>) {
        if (data.isNumber()) target = data.asUInt();
    } else if constexpr (isText<T>) {
        checkRequest(data.text().size() <= std::size(target), "data has a text that is too long.");
        std::copy(data.text().begin(), data.text().end(), std::begin(target));
    } else if constexpr (std::is_array_v<T>) {
        for (std::size_t i = 0; i < std::size(target); ++i) readInto(target[i], data.at(i));
    } else {
        std::apply([&](const auto&... member) { (readMember(target, member, data), ...); }, companions::members<T>);
    }
}

}  // namespace detail

/// A whole record from the data, read leniently: whatever the data has not, or as something else, is zero. Doubles and
/// flags take every kind of value that `Value::asDouble` and `asBool` can read; whole numbers only numbers, texts only
/// strings. Lists have as many entries as the record, whatever the data has. "BadRequestError" for a text that is
/// longer than its field.
template <class Record>
Record toRecord(const pocketjson::Value& data) {
    Record record{};
    detail::readInto(record, data);
    return record;
}

}  // namespace torvo
