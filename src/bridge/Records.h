// Records of the companion libraries as JSON objects and back, by the tables of members in companions/members.h.
#pragma once

#include <members.h>

#include <concepts>
#include <tuple>
#include <type_traits>

#include "pocketjson/Value.h"

namespace torvo {

/// A number as it is; a record as an object of its members.
template <class T>
pocketjson::Value toValue(const T& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        return value;
    } else {
        pocketjson::Value object = pocketjson::Value::object();
        std::apply([&](const auto&... member) { ((object[member.name] = toValue(value.*member.pointer)), ...); },
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

}  // namespace torvo
