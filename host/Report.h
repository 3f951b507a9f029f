// A request's exchange as text, for people and for programs.
#pragma once

#include "host/Console.h"
#include "host/Session.h"

namespace host {

/// A text in a colour of the terminal, or as it is.
constexpr auto bold = "1", red = "31", green = "32", dim = "2";
std::string paint(const Style& style, const char* colour, const std::string& text);

/// The plug-in's answer. Anything but one response with a JSON envelope becomes an error "HostError" without status.
struct Outcome {
    Json status;
    Json error;
    Json value;

    bool succeeded() const { return status.is_number() && status >= 200 && status < 300; }
};
Outcome readOutcome(const Json& exchange);
Outcome hostError(const std::string& message);

/// One document: {"request", "status", "error", "value", "events", "log", "calls"}.
Json describe(const Request& request, const Outcome& outcome, const Json& exchange);

/// An error of an outcome in one line.
std::string describeError(const Json& error);

/// Lines for people.
std::string formatExchange(const Style& style, const Request& request, const Outcome& outcome, const Json& exchange);

/// One line "PRODUCT/SERIAL" per monitor of an answer of `Monitors`.
std::string formatMonitors(const Json& monitors);

}  // namespace host
