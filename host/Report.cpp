#include "host/Report.h"

#include "host/Platform.h"

namespace host {

namespace {

Outcome hostError(const std::string& message) {
    return {nullptr, {{"name", "HostError"}, {"message", message}}, nullptr};
}

/// A text in a colour of the terminal, or as it is.
std::string paint(std::FILE* stream, const char* colour, const std::string& text) {
    return showsColours(stream) ? "\x1b[" + std::string(colour) + "m" + text + "\x1b[0m" : text;
}
constexpr auto bold = "1", red = "31", green = "32", dim = "2";

void write(std::FILE* stream, const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

std::string text(const Json& json) {
    return json.is_string() ? json.get<std::string>() : writeJson(json);
}

std::string statusText(std::FILE* stream, const Outcome& outcome) {
    return paint(stream, outcome.succeeded() ? green : red, outcome.status.is_null() ? "---" : text(outcome.status));
}

std::string requestText(const Request& request) {
    auto line = request.method + " " + request.resource;
    if (!request.serial.empty()) line += "  of " + request.product + "/" + request.serial;
    if (!request.id.empty()) line += "  id " + request.id;
    if (!request.query.empty()) line += "  query " + request.query;
    if (!request.body.empty()) line += "  body " + request.body;
    return line;
}

std::string resultText(const Json& result) {
    if (!result.is_number_unsigned()) return "threw";
    char digits[16];
    std::snprintf(digits, sizeof digits, result < 0x80000000u ? "%u" : "0x%08x", result.get<unsigned>());
    return digits;
}

/// The value on the status's line when it is short, below it otherwise.
std::string valueText(const Json& value) {
    constexpr std::size_t lineLength = 100;
    const auto compact = writeJson(value);
    if (value.is_null()) return "OK";
    return compact.size() <= lineLength ? compact : "\n" + writeJson(value, 2);
}

void printDetails(std::FILE* stream, Detail detail, const Outcome& outcome, const Json& exchange) {
    const auto row = [&](const char* name, const std::string& value) {
        write(stream, "  " + paint(stream, dim, name) + value + "\n");
    };
    for (const auto& response : exchange.at("responses")) {
        row("status  ", paint(stream, outcome.succeeded() ? green : red, text(response.at("status"))));
        row("answer  ", text(response.at("text")));
    }
    for (const auto& event : exchange.at("events"))
        row("event   ", text(event.at("name")) + " " + text(event.at("text")));
    for (const auto& line : exchange.at("log"))
        row("log     ", text(line.at("name")) + " " + text(line.at("level")) + "  " + text(line.at("line")));
    if (detail != Detail::trace) return;
    for (const auto& call : exchange.at("calls")) {
        const auto arguments = writeJson(call.at("arguments"));
        row("call    ", text(call.at("function")) + "(" + arguments.substr(1, arguments.size() - 2) +
                            ") = " + resultText(call.at("result")) +
                            (call.contains("error") ? "  simulation failed: " + text(call.at("error")) : ""));
    }
}

}  // namespace

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
            line += "  " + name + " " +
                    (name == "code" && value.is_number() ? resultText(value.get<std::uint32_t>()) : writeJson(value));
    return line;
}

void print(std::FILE* stream, Detail detail, const Request& request, const Outcome& outcome, const Json& exchange) {
    if (detail != Detail::compact) {
        write(stream, paint(stream, bold, requestText(request)) + "\n");
        printDetails(stream, detail, outcome, exchange);
        if (!outcome.status.is_null()) return;
    }
    const auto succeeded = outcome.error.is_null();
    const auto result = succeeded ? valueText(outcome.value) : describeError(outcome.error);
    write(stream, statusText(stream, outcome) + (result.starts_with('\n') ? "" : "  ") + result + "\n");
}

void printMonitors(std::FILE* stream, const Json& monitors) {
    for (const auto& monitor : monitors)
        write(stream, text(monitor.at("product")) + "/" + text(monitor.at("serial")) + "\n");
}

}  // namespace host
