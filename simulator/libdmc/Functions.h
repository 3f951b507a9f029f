// One line for each function of the common shapes.
//
// A line defines a function of libdmc.h; the types of what follows serial and product come from its declaration. A
// `setting` is one of the scenario's.
#pragma once

#include <libdmc.h>

#include <tuple>

#include "simulator/core/Gate.h"

namespace simulator {

template <class Function>
struct Prototype;
template <class Result, class... Inputs>
struct Prototype<Result(const char*, const char*, Inputs...)> {
    using Parameters = std::tuple<Inputs...>;
};

/// The type of the parameter at this position after serial and product.
template <class Function, std::size_t Position>
using Parameter = std::tuple_element_t<Position, typename Prototype<Function>::Parameters>;

/// The keys of settings that have a value for each colour, or for each mode and the like.
inline const char* byColor(std::uint32_t color) {
    constexpr const char* names[] = {"red", "green", "blue", "white"};
    return color < std::size(names) ? names[color] : "no colour";
}
inline std::uint32_t byNumber(std::uint32_t number) {
    return number;
}

}  // namespace simulator

#define PARAMETER(function, position) simulator::Parameter<decltype(function), position>

/// Whether the monitor has a feature.
#define SUPPORTS(function, feature)                                                 \
    int32_t function(const char* serial, const char* product) {                     \
        return simulator::monitorCall(__func__, serial, product).supports(feature); \
    }                                                                               \
    static_assert(true)

/// A setting, of whatever type the function has.
#define GET(function, setting)                                                                 \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) { \
        return simulator::monitorCall(__func__, serial, product).get(setting, value);          \
    }                                                                                          \
    static_assert(true)

#define SET(function, setting)                                                                 \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) { \
        return simulator::monitorCall(__func__, serial, product, value).set(setting);          \
    }                                                                                          \
    static_assert(true)

/// One of a setting's values; `key` is byColor or byNumber.
#define GET_AT(function, setting, key)                                                                      \
    DmResult function(const char* serial, const char* product, uint32_t at, PARAMETER(function, 1) value) { \
        return simulator::monitorCall(__func__, serial, product, at).get(setting, value, key(at));          \
    }                                                                                                       \
    static_assert(true)

#define SET_AT(function, setting, key)                                                                      \
    DmResult function(const char* serial, const char* product, uint32_t at, PARAMETER(function, 1) value) { \
        return simulator::monitorCall(__func__, serial, product, at, value).set(setting, key(at));          \
    }                                                                                                       \
    static_assert(true)

/// The member of that name of a setting's record.
#define SET_PART(function, setting, name)                                                      \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) { \
        return simulator::monitorCall(__func__, serial, product, value).set(setting, name);    \
    }                                                                                          \
    static_assert(true)

/// What else a setting has: its range, a member such as "size", a list such as "of", the number of such a list's items.
#define RANGE(function, setting)                                                                                       \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) minimum,                         \
                      PARAMETER(function, 1) maximum) {                                                                \
        return simulator::monitorCall(__func__, serial, product).members(setting, {"min", "max"}, {minimum, maximum}); \
    }                                                                                                                  \
    static_assert(true)

#define MEMBER(function, setting, member)                                                             \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) {        \
        return simulator::monitorCall(__func__, serial, product).members(setting, {member}, {value}); \
    }                                                                                                 \
    static_assert(true)

#define LIST(function, setting, member)                                                                         \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) items, uint32_t* count) { \
        return simulator::monitorCall(__func__, serial, product)                                                \
            .members(setting, {member}, {simulator::Output::list(items, count)});                               \
    }                                                                                                           \
    static_assert(true)

#define COUNT(function, setting, member)                                                        \
    DmResult function(const char* serial, const char* product, uint32_t* count) {               \
        return simulator::monitorCall(__func__, serial, product).count(setting, member, count); \
    }                                                                                           \
    static_assert(true)
