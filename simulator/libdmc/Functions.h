// One line for each function of the common shapes.
//
// A line defines a function of libdmc.h: serial and product come first, the types of what follows from its declaration,
// whatever its width and sign, be it a record or a text. A `setting` is one of the scenario's; a function answers
// "unsupported" on a monitor that lacks the setting or its feature.
//
//   SUPPORTS(function, feature)         whether the monitor has a feature
//   SUCCEED(function, feature)          what has no effect to see
//
//   GET(function, setting)              a setting's value
//   GET_TEXT(function, setting)         ... as a text; buffer and size
//   GET_LIST(function, setting)         ... as a list; items and how many are asked for, which the caller knows
//   SET(function, setting)
//   SET_LIST(function, setting)         items and count
//   GET_AT, GET_TEXT_AT, SET_AT, SET_LIST_AT(function, setting, key)
//                                       one of a setting's values; the first parameter says which, by `key`: byColor or
//                                       byNumber
//   SET_PART(function, setting, name)   the member of that name of a setting's record
//
//   MEMBER(function, setting, name)     what else a setting has, such as "size"
//   MEMBERS(function, setting, name, name)
//   RANGE(function, setting)            "min" and "max"
//   LIST(function, setting, name)       a list such as "of" in two steps; items and a pointer to their count
//   LIST_AT(function, setting, key)     one of a setting's values, a list, in two steps
//   COUNT(function, setting, name)      how many items such a list has
#pragma once

#include <libdmc.h>

#include <iterator>
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

inline Key byColor(std::uint32_t color) {
    constexpr const char* names[] = {"red", "green", "blue", "white"};
    return color < std::size(names) ? names[color] : "no colour";
}
inline Key byNumber(std::uint32_t number) {
    return number;
}

}  // namespace simulator

#define PARAMETER(function, position) simulator::Parameter<decltype(function), position>

#define SUPPORTS(function, feature)                                             \
    int32_t function(const char* serial, const char* product) {                 \
        return simulator::MonitorCall(__func__, serial, product).test(feature); \
    }                                                                           \
    static_assert(true)

#define SUCCEED(function, feature)                                                 \
    DmResult function(const char* serial, const char* product) {                   \
        return simulator::MonitorCall(__func__, serial, product).succeed(feature); \
    }                                                                              \
    static_assert(true)

#define GET(function, setting)                                                                 \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) { \
        return simulator::MonitorCall(__func__, serial, product).get(setting, value);          \
    }                                                                                          \
    static_assert(true)

#define GET_TEXT(function, setting)                                                                                 \
    DmResult function(const char* serial, const char* product, char* text, uint32_t size) {                         \
        return simulator::MonitorCall(__func__, serial, product).get(setting, simulator::Output::text(text, size)); \
    }                                                                                                               \
    static_assert(true)

#define GET_LIST(function, setting)                                                                                   \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) items, uint32_t count) {        \
        return simulator::MonitorCall(__func__, serial, product).get(setting, simulator::Output::list(items, count)); \
    }                                                                                                                 \
    static_assert(true)

#define SET(function, setting)                                                                 \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) { \
        return simulator::MonitorCall(__func__, serial, product, {value}).set(setting, value); \
    }                                                                                          \
    static_assert(true)

#define SET_LIST(function, setting)                                                                            \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) items, uint32_t count) { \
        const auto list = simulator::Input::list(items, count);                                                \
        return simulator::MonitorCall(__func__, serial, product, {list}).set(setting, list);                   \
    }                                                                                                          \
    static_assert(true)

#define GET_AT(function, setting, key)                                                                      \
    DmResult function(const char* serial, const char* product, uint32_t at, PARAMETER(function, 1) value) { \
        return simulator::MonitorCall(__func__, serial, product, {at}).get(setting, value, key(at));        \
    }                                                                                                       \
    static_assert(true)

#define GET_TEXT_AT(function, setting, key)                                                              \
    DmResult function(const char* serial, const char* product, uint32_t at, char* text, uint32_t size) { \
        return simulator::MonitorCall(__func__, serial, product, {at})                                   \
            .get(setting, simulator::Output::text(text, size), key(at));                                 \
    }                                                                                                    \
    static_assert(true)

#define SET_AT(function, setting, key)                                                                      \
    DmResult function(const char* serial, const char* product, uint32_t at, PARAMETER(function, 1) value) { \
        return simulator::MonitorCall(__func__, serial, product, {at, value}).set(setting, value, key(at)); \
    }                                                                                                       \
    static_assert(true)

#define SET_LIST_AT(function, setting, key)                                                               \
    DmResult function(const char* serial, const char* product, uint32_t at, PARAMETER(function, 1) items, \
                      uint32_t count) {                                                                   \
        const auto list = simulator::Input::list(items, count);                                           \
        return simulator::MonitorCall(__func__, serial, product, {at, list}).set(setting, list, key(at)); \
    }                                                                                                     \
    static_assert(true)

#define SET_PART(function, setting, name)                                                            \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) {       \
        return simulator::MonitorCall(__func__, serial, product, {value}).set(setting, value, name); \
    }                                                                                                \
    static_assert(true)

#define MEMBER(function, setting, name)                                                             \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) {      \
        return simulator::MonitorCall(__func__, serial, product).members(setting, {name}, {value}); \
    }                                                                                               \
    static_assert(true)

#define MEMBERS(function, setting, firstName, secondName)                                    \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) first, \
                      PARAMETER(function, 1) second) {                                       \
        return simulator::MonitorCall(__func__, serial, product)                             \
            .members(setting, {firstName, secondName}, {first, second});                     \
    }                                                                                        \
    static_assert(true)

#define RANGE(function, setting) MEMBERS(function, setting, "min", "max")

#define LIST(function, setting, name)                                                                           \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) items, uint32_t* count) { \
        return simulator::MonitorCall(__func__, serial, product)                                                \
            .members(setting, {name}, {simulator::Output::list(items, count)});                                 \
    }                                                                                                           \
    static_assert(true)

#define LIST_AT(function, setting, key)                                                                   \
    DmResult function(const char* serial, const char* product, uint32_t at, PARAMETER(function, 1) items, \
                      uint32_t* count) {                                                                  \
        return simulator::MonitorCall(__func__, serial, product, {at})                                    \
            .get(setting, simulator::Output::list(items, count), key(at));                                \
    }                                                                                                     \
    static_assert(true)

#define COUNT(function, setting, name)                                                        \
    DmResult function(const char* serial, const char* product, uint32_t* count) {             \
        return simulator::MonitorCall(__func__, serial, product).count(setting, name, count); \
    }                                                                                         \
    static_assert(true)
