#include "host/Commands.h"

#include <fstream>
#include <iostream>
#include <iterator>

#include "host/Platform.h"
#include "host/Query.h"
#include "host/Report.h"

namespace host {

namespace {

Style style(const Options& options, const Console& console) {
    const auto detail = options.trace ? Detail::trace : options.verbose ? Detail::verbose : Detail::compact;
    return {detail, console.colours};
}

void loadScenario(const std::string& file) {
    std::ifstream stream(fromUtf8(file), std::ios::binary);
    if (!stream) throw UsageError("cannot read " + file);
    simulator::loadScenario(parseJson(std::string(std::istreambuf_iterator<char>(stream), {})));
}

/// The monitor that the options name, else the first that the plug-in lists, if any.
void chooseMonitor(const Session& session, const Options& options, Request& request) {
    if (!options.monitor.empty()) {
        const auto slash = options.monitor.rfind('/');
        if (slash == std::string::npos) throw UsageError("--monitor takes PRODUCT/SERIAL");
        request.product = options.monitor.substr(0, slash);
        request.serial = options.monitor.substr(slash + 1);
        return;
    }
    const auto outcome = readOutcome(session.call({.resource = "Monitors"}));
    if (!outcome.succeeded() || outcome.value.empty()) return;
    request.product = outcome.value[0].at("product");
    request.serial = outcome.value[0].at("serial");
}

}  // namespace

Commands::Commands(const Console& console) : console_(console) {}

Commands::~Commands() = default;

void Commands::loadPlugin(const Options& options) {
    session(options);
}

const Session& Commands::session(const Options& options) {
    if (!session_) {
        if (!options.scenario.empty()) loadScenario(options.scenario);
        session_ =
            std::make_unique<const Session>(options.plugin.empty() ? Plugin::defaultFile() : fromUtf8(options.plugin));
    }
    return *session_;
}

bool Commands::list(const Options& options) {
    session(options);
    const auto formatsMonitors = !options.json && style(options, console_).detail == Detail::compact;
    return send({.resource = "Monitors", .query = options.update ? R"({"update":true})" : ""}, options,
                formatsMonitors ? formatMonitors : nullptr);
}

bool Commands::request(const char* method, const Options& options) {
    Request request{.method = method,
                    .resource = options.resource,
                    .query = queryText(options.query),
                    .body = options.body,
                    .id = options.id};
    chooseMonitor(session(options), options, request);
    return send(request, options);
}

bool Commands::send(const Request& request, const Options& options, std::string (*formatValue)(const Json& value)) {
    for (const auto& instruction : options.simulations) simulate(instruction);
    const auto exchange = session(options).call(request);
    const auto outcome = readOutcome(exchange);
    if (options.json)
        console_.out << formatJson(describe(request, outcome, exchange)) << '\n';
    else if (formatValue && outcome.succeeded())
        console_.out << formatValue(outcome.value);
    else
        console_.out << formatExchange(style(options, console_), request, outcome, exchange);
    return outcome.succeeded();
}

bool Commands::updateFirmware(const Options& options) {
    Request monitor;
    chooseMonitor(session(options), options, monitor);
    for (const auto& instruction : options.simulations) simulate(instruction);
    std::ostream nowhere(nullptr);
    const Console silent{.in = console_.in, .out = nowhere, .error = console_.error};
    const auto result = host::updateFirmware(session(options), options.package.file, monitor.serial, monitor.product,
                                             options.json ? silent : console_, style(options, console_));
    if (options.json) console_.out << formatJson(result) << '\n';
    return true;
}

void Commands::simulate(const std::string& instruction) {
    simulator::simulate(parseJson(instruction));
}

void Commands::batch(const Options& options) {
    const auto& plugin = session(options);
    for (std::string line; std::getline(console_.in, line);)
        console_.out << writeJson(plugin.execute(line)) << std::endl;
}

void Commands::reportError(const std::string& message, const Options& options) {
    console_.error << "pellhost: " << message << '\n';
    if (!options.json) return;
    const auto outcome = hostError(message);
    console_.out << formatJson({{"status", outcome.status}, {"error", outcome.error}, {"value", outcome.value}})
                 << '\n';
}

}  // namespace host
