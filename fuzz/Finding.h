// How a fuzzer reports that an oracle disagrees.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

/// A text of any bytes as a JSON string of ASCII.
inline std::string shown(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

/// Ends the process; libFuzzer then keeps the input.
[[noreturn]] inline void reportFinding(const char* what, std::string_view subject = {}) {
    std::fprintf(stderr, "FINDING: %s %s\n", what, shown(subject).c_str());
    std::abort();
}

inline void require(bool condition, const char* otherwise, std::string_view subject = {}) {
    if (!condition) reportFinding(otherwise, subject);
}
