// The checks of the handlers: each returns when all is well and throws the failure that the page will see.
#pragma once

#include <libdmc/result.h>

#include "bridge/RequestRecord.h"
#include "runtime/BridgeResult.h"

namespace torvo {

// The checks throw in their handler's own frame, since each frame that an exception leaves takes time; what they throw
// is made elsewhere.
namespace detail {

BridgeResultError badRequest(const char* message) noexcept;
BridgeResultError internalError(const char* message) noexcept;
BridgeResultError monitorControlError(DmResult result, const char* reason);

}  // namespace detail

/// "BadRequestError" (400) unless the condition holds.
inline void checkRequest(bool condition, const char* message) {
    if (!condition) throw detail::badRequest(message);
}

/// "InternalError" (500) unless the condition holds.
inline void checkInternal(bool condition, const char* message) {
    if (!condition) throw detail::internalError(message);
}

/// Results of the monitor-control library that resources answer on their own account.
inline constexpr auto DmFailed = static_cast<DmResult>(0x80000000);
inline constexpr auto DmUnsupported = static_cast<DmResult>(0x80000007);

/// The one failure of the monitor-control library that counts as success.
inline constexpr auto DmUnknown = static_cast<DmResult>(0x80000006);

/// A failure has its top bit set, and is not `DmUnknown`.
inline bool isFailure(DmResult result) noexcept {
    return result < 0 && result != DmUnknown;
}

/// "DmError" (500) with "code" and, unless it is empty, "reason", when the result is a failure.
inline void checkMonitorControl(DmResult result, const char* reason) {
    if (isFailure(result)) throw detail::monitorControlError(result, reason);
}

/// "MethodError" (405): a class that does not provide the method ...
[[noreturn]] void throwMethodNotAllowed(Method method);
/// ... and a monitor resource without a handler for it.
[[noreturn]] void throwMonitorMethodNotAllowed(Method method);

/// The text of a monitor-control result.
const char* resultMessage(DmResult result) noexcept;

inline constexpr char unknownErrorName[] = "UnknownError";
inline constexpr char unknownErrorMessage[] = "Unknown error occurred.";

/// Status 500, the unknown error: whatever was thrown that is no BridgeResultError, and an answer that cannot be
/// written.
BridgeResult unknownError() noexcept;

}  // namespace torvo
