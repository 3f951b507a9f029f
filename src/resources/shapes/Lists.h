// Lists of numbers whose length one function gives, and which another one reads or writes.
#pragma once

#include <cstdint>
#include <vector>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

/// "supports" where only a count shows it: whether it can be read and is not 0.
template <class Callable>
struct SupportByCount {
    constexpr explicit SupportByCount(Callable countFunction) : function(countFunction) {}

    Value answer(const Monitor& monitor) const {
        std::uint32_t count = 0;
        return monitor.call(function, &count) >= 0 && count > 0;
    }

    const char* member = "supports";
    Callable function;
};

/// The numbers of an array; refused when the data is none, or has something else in it.
inline std::vector<std::uint32_t> toNumbers(const Value& data, const char* refusal) {
    checkRequest(data.isArray(), refusal);
    std::vector<std::uint32_t> numbers;
    numbers.reserve(data.size());
    for (const Value& element : data.elements()) {
        checkRequest(isNumber(element), refusal);
        numbers.push_back(toNumber<std::uint32_t>(element));
    }
    return numbers;
}

}  // namespace torvo::bridge
