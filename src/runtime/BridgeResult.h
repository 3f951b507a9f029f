// How a request ends: the result that a handler fills, and the exception that carries a failure.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "pocketjson/Value.h"

namespace torvo {

/// Names and messages are fixed texts of the program (static storage), so that a failure can be reported without
/// memory.
struct BridgeResult {
    std::int32_t statusCode = 200;  ///< a web status code; 200 to 299 is success
    const char* name = "";          ///< the kind of error; empty on success
    const char* message = "";       ///< what people read of the error; empty on success
    pocketjson::Value error;        ///< further members of the error (an object), null on success
    pocketjson::Value value;        ///< the handler's answer, null when there is none
    std::string text;  ///< the answer as it goes to the page, if it takes memory; written by `writeResponse`
};

/// Thrown by value by the handlers' checks; the handle operation turns it into the request's result.
class BridgeResultError {
 public:
    BridgeResultError(std::int32_t statusCode, const char* name, const char* message,
                      pocketjson::Value error = nullptr) noexcept
        : result{statusCode, name, message, std::move(error), nullptr, {}} {}

    BridgeResult result;
};

}  // namespace torvo
