// What the normal work of a simulated function comes to.
#pragma once

#include <initializer_list>
#include <memory>

#include "simulator/core/Parameters.h"

namespace simulator {

/// Results of the monitor-control library.
namespace result {
inline constexpr std::uint32_t success = 0;
inline constexpr std::uint32_t failed = 0x80000000;
inline constexpr std::uint32_t invalidArgument = 0x80000001;
inline constexpr std::uint32_t invalidBufferSize = 0x80000003;
inline constexpr std::uint32_t unsupported = 0x80000007;
inline constexpr std::uint32_t stall = 0x80000008;
inline constexpr std::uint32_t outOfRange = 0x8000000A;
inline constexpr std::uint32_t noMoreData = 0x8000000B;
inline constexpr std::uint32_t canceled = 0x8000000C;
inline constexpr std::uint32_t locked = 0x8000000F;
inline constexpr std::uint32_t alreadyUsed = 0x80000012;
inline constexpr std::uint32_t timedOut = 0x80000013;
inline constexpr std::uint32_t disabled = 0x80000014;
inline constexpr std::uint32_t invalidPrecondition = 0x80000015;
inline constexpr std::uint32_t invalidData = 0x8000001A;
inline constexpr std::uint32_t invalidDataSize = 0x8000001B;
inline constexpr std::uint32_t connectionError = 0x80010001;
inline constexpr std::uint32_t criticalSectionOwned = 0x8001000A;
}  // namespace result

/// The result of a call, which some functions declare as signed and some as unsigned.
struct Result {
    std::uint32_t code;

    bool failed() const { return (code & 0x80000000u) != 0; }
    operator std::uint32_t() const { return code; }
    operator std::int32_t() const { return static_cast<std::int32_t>(code); }
};

struct Answer {
    Answer(std::uint32_t code = result::success) : result{code} {}

    /// Success with these out-parameters.
    explicit Answer(Json outputs);

    Result result;
    std::shared_ptr<const Json> outputs;  ///< a list in the order of the out-parameters; null: none are written
};

/// Success with these out-parameters, in their order.
Answer answer(std::initializer_list<Input> outputs);

}  // namespace simulator
