// One line for every request, in the host's log.
#pragma once

#include <string>

#include "bridge/RequestRecord.h"
#include "runtime/BridgeResult.h"

namespace torvo {

/// Hands the logger "Pell" the line
///     "statusCode:200\tmethod:GET\turi:...\tmsg:Success", or for a failure
///     "statusCode:500\tmethod:GET\turi:...\terr:NAME\tmsg:MESSAGE" and, when the error has a numeric "code",
///     "\tcode:0x" with eight lower-case hexadecimal digits.
/// It is one line: control characters in the URI are percent-encoded ("%0a"). Never fails the request. Without memory
/// for a very long URI, the URI is shortened.
void logRequest(Method method, const std::string& uri, const BridgeResult& result) noexcept;

}  // namespace torvo
