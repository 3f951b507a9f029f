// The queries that a GET looks for besides its plain value, as a list in the order in which they are looked at:
//
//     static constexpr std::tuple queries{Support{DmCtrlSupportedCandela},
//                                         Range{DmCtrlGetCandelaParam, "Get candela parameter."}};
//
// A query is there when its member is, whatever the member's value.
#pragma once

#include <tuple>

#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

/// "supports", or another member: whether a support function answers non-zero. With an action its result is checked.
template <class Callable>
struct Support {
    constexpr Support(Callable supportFunction, const char* checkedAction = nullptr)
        : function(supportFunction), action(checkedAction) {}
    constexpr Support(const char* queryMember, Callable supportFunction)
        : member(queryMember), function(supportFunction) {}

    Value answer(const Monitor& monitor) const {
        return action ? monitor.supportsChecked(function, action) : monitor.supports(function);
    }

    const char* member = "supports";
    Callable function;
    const char* action = nullptr;
};

/// "supports" where only a getter can show it: whether it succeeds.
template <class Callable>
struct SupportByReading {
    constexpr explicit SupportByReading(Callable getFunction) : function(getFunction) {}

    Value answer(const Monitor& monitor) const { return monitor.canRead(function); }

    const char* member = "supports";
    Callable function;
};

/// "range", or another member: {"min", "max"} and perhaps "step".
template <class Callable>
struct Range {
    constexpr Range(Callable rangeFunction, const char* rangeAction) : function(rangeFunction), action(rangeAction) {}
    constexpr Range(const char* queryMember, Callable rangeFunction, const char* rangeAction)
        : member(queryMember), function(rangeFunction), action(rangeAction) {}

    Value answer(const Monitor& monitor) const { return monitor.range(function, action); }

    const char* member = "range";
    Callable function;
    const char* action;
};

/// What a function reads: a number (a count, a percentage) or a record.
template <class Callable>
struct Read {
    Value answer(const Monitor& monitor) const { return toValue(monitor.read(function, action)); }

    const char* member;
    Callable function;
    const char* action;
};
template <class Callable>
Read(const char*, Callable, const char*) -> Read<Callable>;

/// The numbers that a function enumerates.
template <class Callable>
struct List {
    Value answer(const Monitor& monitor) const { return Value::array(monitor.enumerate(function, action)); }

    const char* member;
    Callable function;
    const char* action;
};
template <class Callable>
List(const char*, Callable, const char*) -> List<Callable>;

/// A text, by the function of its size and the function that reads it.
template <class SizeCallable, class Callable>
struct Text {
    Value answer(const Monitor& monitor) const {
        return monitor.readText(monitor.read(sizeFunction, action), function, action);
    }

    const char* member;
    SizeCallable sizeFunction;
    Callable function;
    const char* action;
};
template <class SizeCallable, class Callable>
Text(const char*, SizeCallable, Callable, const char*) -> Text<SizeCallable, Callable>;

/// Answers the first of the queries whose member is there; false if there is none.
template <class... Query>
bool answerQuery(BridgeResult& result, const Monitor& monitor, const Value& query,
                 const std::tuple<Query...>& queries) {
    const auto answer = [&](const auto& candidate) {
        if (!query.has(candidate.member)) return false;
        result.value = candidate.answer(monitor);
        return true;
    };
    return std::apply([&](const auto&... candidate) { return (answer(candidate) || ...); }, queries);
}

}  // namespace torvo::bridge
