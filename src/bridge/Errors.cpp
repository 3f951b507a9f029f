#include "bridge/Errors.h"

#include <array>
#include <cstdint>

namespace torvo {

using pocketjson::Value;

namespace {

// Messages of consecutive result codes, the first code of each row of codes being its base.
constexpr std::array noticeMessages{
    "OK.", "Exists more data.", "Running.", "Unconfirmed.", "OK but data is not corrected.",
};

constexpr std::uint32_t failureBase = 0x80000000;
constexpr std::array failureMessages{
    "Failed.",
    "Invalid argument.",
    "Invalid buffer.",
    "Invalid buffer size.",
    "Already registered.",
    "Not registered.",
    "Unknown.",
    "Unsupported.",
    "Stall.",
    "Unimplemented.",
    "Out of range.",
    "No more data.",
    "Canceled.",
    "Out of domain.",
    "Long proc lock is wait.",
    "Short proc lock is wait.",
    "Dll is not found.",
    "Over limit.",
    "Already used.",
    "Timed out.",
    "Disabled.",
    "Invalid precondition.",
    "Unresolved.",
    "Retry count exceeded.",
    "Already created.",
    "Cannot create file.",
    "Invalid data.",
    "Invalid data size.",
    "Invalid key.",
    "Invalid key size.",
    "Data verify error.",
    "Rejected by critical section.",
};

constexpr std::uint32_t monitorFailureBase = 0x80010001;
constexpr std::array monitorFailureMessages{
    "Monitor connection error.",
    "Sensor connection error.",
    "Measure error.",
    "Sensor position error.",
    "Calculation error.",
    "Chamber error.",
    "Siggenerator error.",
    "Zero calibration error.",
    "Cannot enter monitor critical section.",
    "Monitor critical section is owned.",
};

template <std::size_t Size>
const char* messageAt(const std::array<const char*, Size>& messages, std::uint32_t index) noexcept {
    return index < Size ? messages[index] : "Undefined error.";
}

struct MethodMessages {
    const char* ofClass;
    const char* ofMonitor;
};

// In the order of Method.
constexpr std::array<MethodMessages, 4> methodMessages{{
    {"GET method is not allowed.", "GET is not allowed."},
    {"POST method is not allowed.", "POST is not allowed."},
    {"PUT method is not allowed.", "PUT is not allowed."},
    {"DELETE method is not allowed.", "DELETE is not allowed."},
}};

}  // namespace

namespace detail {

BridgeResultError badRequest(const char* message) noexcept {
    return {400, "BadRequestError", message};
}

BridgeResultError internalError(const char* message) noexcept {
    return {500, "InternalError", message};
}

BridgeResultError monitorControlError(DmResult result, const char* reason) {
    Value error;
    error["code"] = static_cast<std::uint32_t>(result);
    if (*reason) error["reason"] = reason;
    return {500, "DmError", resultMessage(result), std::move(error)};
}

}  // namespace detail

void throwMethodNotAllowed(Method method) {
    throw BridgeResultError(405, "MethodError", methodMessages[static_cast<std::size_t>(method)].ofClass);
}

void throwMonitorMethodNotAllowed(Method method) {
    throw BridgeResultError(405, "MethodError", methodMessages[static_cast<std::size_t>(method)].ofMonitor);
}

const char* resultMessage(DmResult result) noexcept {
    const auto code = static_cast<std::uint32_t>(result);
    if (code < failureBase) return messageAt(noticeMessages, code);
    if (code < monitorFailureBase) return messageAt(failureMessages, code - failureBase);
    return messageAt(monitorFailureMessages, code - monitorFailureBase);
}

BridgeResult unknownError() noexcept {
    return {500, unknownErrorName, unknownErrorMessage, {}, {}, {}};
}

}  // namespace torvo
