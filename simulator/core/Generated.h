// Filled in by the build.
#pragma once

#include <span>
#include <string_view>

namespace simulator::generated {

/// A ready scenario.
struct Scenario {
    std::string_view name;
    std::string_view text;
};

extern const std::string_view scenario;                    ///< scenario.json
extern const std::span<const Scenario> scenarios;          ///< those of scenarios/, by name
extern const std::span<const std::string_view> functions;  ///< every simulated function, from the companion headers

}  // namespace simulator::generated
