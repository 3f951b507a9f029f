#include "host/Report.h"

namespace host {

namespace {

std::string text(const Json& json) {
    return json.is_string() ? json.get<std::string>() : writeJson(json);
}

std::string formatStatus(const Style& style, const Outcome& outcome) {
    return paint(style, outcome.succeeded() ? green : red, outcome.status.is_null() ? "---" : text(outcome.status));
}

std::string formatRequest(const Request& request) {
    auto line = request.method + " " + request.resource;
    if (!request.serial.empty()) line += "  of " + request.product + "/" + request.serial;
    if (!request.id.empty()) line += "  id " + request.id;
    if (!request.query.empty()) line += "  query " + request.query;
    if (!request.body.empty()) line += "  body " + request.body;
    return line;
}

std::string formatResult(const Json& result) {
    if (!result.is_number_unsigned()) return "threw";
    char digits[16];
    std::snprintf(digits, sizeof digits, result < 0x80000000u ? "%u" : "0x%08x", result.get<unsigned>());
    return digits;
}

/// On the status's line when it is short, below it otherwise.
std::string formatValue(const Json& value) {
    constexpr std::size_t lineLength = 100;
    const auto compact = writeJson(value);
    if (value.is_null()) return "  OK";
    return compact.size() <= lineLength ? "  " + compact : "\n" + formatJson(value);
}

std::string formatDetails(const Style& style, const Outcome& outcome, const Json& exchange) {
    std::string lines;
    const auto addLine = [&](const char* name, const std::string& value) {
        lines += "  " + paint(style, dim, name) + value + "\n";
    };
    for (const auto& response : exchange.at("responses")) {
        addLine("status  ", paint(style, outcome.succeeded() ? green : red, text(response.at("status"))));
        addLine("answer  ", text(response.at("text")));
    }
    for (const auto& event : exchange.at("events"))
        addLine("event   ", text(event.at("name")) + " " + text(event.at("text")));
    for (const auto& line : exchange.at("log"))
        addLine("log     ", text(line.at("name")) + " " + text(line.at("level")) + "  " + text(line.at("line")));
    if (style.detail != Detail::trace) return lines;
    for (const auto& call : exchange.at("calls")) {
        const auto arguments = writeJson(call.at("arguments"));
        addLine("call    ", text(call.at("function")) + "(" + arguments.substr(1, arguments.size() - 2) +
                                ") = " + formatResult(call.at("result")) +
                                (call.contains("error") ? "  simulation failed: " + text(call.at("error")) : ""));
    }
    return lines;
}

}  // namespace

std::string paint(const Style& style, const char* colour, const std::string& text) {
    return style.colours ? "\x1b[" + std::string(colour) + "m" + text + "\x1b[0m" : text;
}

Outcome hostError(const std::string& message) {
    return {nullptr, {{"name", "HostError"}, {"message", message}}, nullptr};
}

Outcome readOutcome(const Json& exchange) {
    const auto& responses = exchange.at("responses");
    if (responses.size() != 1)
        return hostError("the plug-in answered " + std::to_string(responses.size()) + " times, not once");
    try {
        const auto answer = parseJson(text(responses[0].at("text")));
        return {responses[0].at("status"), answer.at("error"), answer.at("value")};
    } catch (const std::exception& error) {
        return hostError("the plug-in's answer is no answer: " + std::string(error.what()));
    }
}

Json describe(const Request& request, const Outcome& outcome, const Json& exchange) {
    return {{"request",
             {{"method", request.method},
              {"resource", request.resource},
              {"product", request.product},
              {"serial", request.serial},
              {"query", request.query},
              {"body", request.body},
              {"id", request.id}}},
            {"status", outcome.status},
            {"error", outcome.error},
            {"value", outcome.value},
            {"events", exchange.at("events")},
            {"log", exchange.at("log")},
            {"calls", exchange.at("calls")}};
}

std::string describeError(const Json& error) {
    if (!error.is_object()) return writeJson(error);
    auto line = text(error.value("name", Json(""))) + ": " + text(error.value("message", Json("")));
    for (const auto& [name, value] : error.items())
        if (name != "name" && name != "message")
            line += "  " + name + " " + (name == "code" && value.is_number() ? formatResult(value) : writeJson(value));
    return line;
}

std::string formatExchange(const Style& style, const Request& request, const Outcome& outcome, const Json& exchange) {
    std::string lines;
    if (style.detail != Detail::compact) {
        lines = paint(style, bold, formatRequest(request)) + "\n" + formatDetails(style, outcome, exchange);
        if (!outcome.status.is_null()) return lines;
    }
    const auto result = outcome.error.is_null() ? formatValue(outcome.value) : "  " + describeError(outcome.error);
    return lines + formatStatus(style, outcome) + result + "\n";
}

std::string formatMonitors(const Json& monitors) {
    std::string lines;
    for (const auto& monitor : monitors) lines += text(monitor.at("product")) + "/" + text(monitor.at("serial")) + "\n";
    return lines;
}

}  // namespace host
