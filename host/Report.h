// A request's exchange, told to people and to programs.
#pragma once

#include <cstdio>

#include "host/Session.h"

namespace host {

enum class Detail {
    compact,  ///< the status and the value or error
    verbose,  ///< the request, the status, the JSON answer, events and the log line
    trace,    ///< and the companion functions that were called
};

/// The plug-in's answer. Anything but one response with a JSON envelope is told as an error "HostError" without status.
struct Outcome {
    Json status;
    Json error;
    Json value;

    bool succeeded() const { return status.is_number() && status >= 200 && status < 300; }
};
Outcome readOutcome(const Json& exchange);

/// One document: {"request", "status", "error", "value", "events", "log", "calls"}.
Json describe(const Request& request, const Outcome& outcome, const Json& exchange);

/// An error of an outcome in one line.
std::string describeError(const Json& error);

void print(std::FILE* stream, Detail detail, const Request& request, const Outcome& outcome, const Json& exchange);

/// One line "PRODUCT/SERIAL" per monitor of an answer of `Monitors`.
void printMonitors(std::FILE* stream, const Json& monitors);

}  // namespace host
