// What a simulated function does instead of its normal work, or besides.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "simulator/core/Json.h"

namespace simulator {

struct Departure {
    bool unplugs = false;  ///< the monitor that the call is about is unplugged before
    bool works = true;     ///< the normal work is done
    bool throws = false;   ///< a std::runtime_error is thrown in the end
    std::optional<std::uint32_t> result{};
    std::shared_ptr<const Json> outputs{};  ///< a list, one entry per out-parameter; a JSON null leaves one untouched
    std::shared_ptr<const Json> lie{};      ///< of a success: a number or text in the place of all that it answers
    std::vector<std::uint8_t> bytes{};     ///< written in the end, over and over, to all memory for outputs but handles
    std::optional<std::uint32_t> count{};  ///< what texts and lists in two steps say of their size in the end
};

}  // namespace simulator
