// pellhost, the development host: single requests and firmware updates from the command line, and batches for scripts
// and tests.

#include <CLI/CLI.hpp>
#include <cctype>
#include <fstream>
#include <iostream>
#include <iterator>

#include "host/Firmware.h"
#include "host/Platform.h"
#include "host/Report.h"
#include "host/Session.h"

namespace {

using host::Json;

constexpr int requestFailed = 1;
constexpr int wrongUsage = 2;

constexpr auto createCommand = "firmware create";  // needs no plug-in

struct Options {
    std::string plugin;
    std::string scenario;
    std::vector<std::string> simulations;
    bool json = false;
    bool verbose = false;
    bool trace = false;

    std::string resource;
    std::string monitor;
    std::string query;
    std::string body;
    std::string id;
    bool update = false;
    host::PackageOptions package;

    host::Detail detail() const {
        return trace ? host::Detail::trace : verbose ? host::Detail::verbose : host::Detail::compact;
    }
};

/// What the caller of the program got wrong.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void loadScenario(const std::string& file) {
    std::ifstream stream(host::fromUtf8(file), std::ios::binary);
    if (!stream) throw UsageError("cannot read " + file);
    simulator::loadScenario(host::parseJson(std::string(std::istreambuf_iterator<char>(stream), {})));
}

/// JSON as it is; otherwise "name[=value],..." where a value is JSON or else a text, and true if there is none.
std::string queryText(const std::string& query) {
    if (query.empty() || query.front() == '{') return query;
    auto object = Json::object();
    for (const auto& item : CLI::detail::split(query, ',')) {
        const auto equals = item.find('=');
        const auto value = equals == std::string::npos ? "true" : item.substr(equals + 1);
        const auto parsed = Json::parse(value, nullptr, false);
        object[item.substr(0, equals)] = parsed.is_discarded() ? Json(value) : parsed;
    }
    return host::writeJson(object);
}

/// The monitor that the options name, else the first that the plug-in lists, if any.
void chooseMonitor(const host::Session& session, const Options& options, host::Request& request) {
    if (!options.monitor.empty()) {
        const auto slash = options.monitor.rfind('/');
        if (slash == std::string::npos) throw UsageError("--monitor takes PRODUCT/SERIAL");
        request.product = options.monitor.substr(0, slash);
        request.serial = options.monitor.substr(slash + 1);
        return;
    }
    const auto outcome = host::readOutcome(session.call({.resource = "Monitors"}));
    if (!outcome.succeeded() || outcome.value.empty()) return;
    request.product = outcome.value[0].at("product");
    request.serial = outcome.value[0].at("serial");
}

bool listsMonitors(const std::string& command) {
    return command == "list";
}

void startSimulations(const Options& options) {
    for (const auto& simulation : options.simulations) simulator::simulate(host::parseJson(simulation));
}

int runRequest(const host::Session& session, const std::string& command, const Options& options) {
    host::Request request{
        .resource = options.resource, .query = queryText(options.query), .body = options.body, .id = options.id};
    if (listsMonitors(command)) {
        request.resource = "Monitors";
        if (options.update) request.query = R"({"update":true})";
    } else {
        request.method = command;
        for (auto& letter : request.method) letter = static_cast<char>(std::toupper(letter));
        chooseMonitor(session, options, request);
    }
    startSimulations(options);

    const auto exchange = session.call(request);
    const auto outcome = host::readOutcome(exchange);
    if (options.json) {
        std::cout << host::writeJson(host::describe(request, outcome, exchange), 2) << '\n';
    } else if (listsMonitors(command) && outcome.succeeded() && options.detail() == host::Detail::compact) {
        host::printMonitors(stdout, outcome.value);
    } else {
        host::print(stdout, options.detail(), request, outcome, exchange);
    }
    return outcome.succeeded() ? 0 : requestFailed;
}

int runFirmwareUpdate(const host::Session& session, const Options& options) {
    host::Request monitor;
    chooseMonitor(session, options, monitor);
    startSimulations(options);
    const auto result = host::updateFirmware(session, options.package.file, monitor.product, monitor.serial,
                                             {.detail = options.detail(), .silent = options.json});
    if (options.json) std::cout << host::writeJson(result, 2) << '\n';
    return 0;
}

int runCommand(const host::Session& session, const std::string& command, const Options& options) {
    if (command == "firmware update") return runFirmwareUpdate(session, options);
    if (command != createCommand) return runRequest(session, command, options);
    host::createPackage(options.package);
    return 0;
}

/// The subcommand that was given, with its own if it has one: "list", "firmware create".
std::string chosenCommand(const CLI::App& app) {
    const auto command = app.get_subcommands().front();
    const auto rest = command->get_subcommands();
    return command->get_name() + (rest.empty() ? "" : " " + rest.front()->get_name());
}

int runBatch(const host::Session& session) {
    std::string line;
    while (std::getline(std::cin, line)) std::cout << host::writeJson(session.execute(line)) << std::endl;
    return 0;
}

void addRequests(CLI::App& app, Options& options) {
    app.add_subcommand("list", "List the monitors")
        ->add_flag("--update", options.update, "Look for connected monitors afresh");
    const auto addMonitor = [&](CLI::App* command) {
        command->add_option("--monitor", options.monitor, "The monitor, as PRODUCT/SERIAL; otherwise the first listed");
    };
    const auto add = [&](const std::string& name, const std::string& what) {
        const auto command = app.add_subcommand(name, what);
        command->add_option("resource", options.resource, "An export, such as Brightness")->required();
        addMonitor(command);
        command->add_option("--query", options.query, "Query options, as JSON or as name[=value],...");
        command->add_option("--id", options.id, "The identifier of an opened file");
        return command;
    };
    add("get", "Read a resource");
    add("put", "Write a resource")->add_option("body", options.body, "The body, usually JSON")->required();
    add("post", "Post to a resource")->add_option("body", options.body, "The body, usually JSON");
    add("delete", "Delete a resource");

    const auto firmware = app.add_subcommand("firmware", "Firmware packages and updates");
    firmware->require_subcommand(1);
    auto& package = options.package;
    const auto create = firmware->add_subcommand("create", "Make a package");
    create->add_option("file", package.file, "The package")->required();
    create->add_option("--product", package.product, "The product that it is for")->required();
    create->add_option("--version", package.version, "Such as 2.1.0.3.7: system.controller.frontEnd.osd.fpga")
        ->required();
    constexpr std::uint32_t maximumSize = 1u << 26;
    create->add_option("--size", package.size, "Bytes of payload")->check(CLI::Range(0u, maximumSize));
    create->add_option("--broken", package.broken, "What is wrong with it")
        ->check(CLI::IsMember({"checksum", "truncated", "header"}));
    const auto update = firmware->add_subcommand("update", "Check and transfer a package, and trigger the update");
    update->add_option("package", package.file, "The package")->required();
    addMonitor(update);
}

/// Carries out one line of the shell. Returns false to end it.
bool runLine(const host::Session& session, Options options, const std::string& line) {
    CLI::App app("One command a line; # begins a comment.", "");
    app.require_subcommand(1);
    addRequests(app, options);
    std::string simulation;
    app.add_subcommand("simulate", "Start a simulation, as in a batch")
        ->add_option("JSON", simulation, "The simulation")
        ->required();
    app.add_subcommand("quit", "Leave the shell");
    try {
        app.parse(line, false);
        const auto command = chosenCommand(app);
        if (command == "quit") return false;
        if (command == "simulate")
            simulator::simulate(host::parseJson(simulation));
        else
            runCommand(session, command, options);
    } catch (const CLI::ParseError& error) {
        app.exit(error, std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    return true;
}

/// The shell asks for lines on a terminal, and shows them when they come from elsewhere.
int runShell(const host::Session& session, const Options& options) {
    const bool asking = host::isTerminal(stdin);
    const auto prompt = [&] {
        if (asking) std::cout << "pellhost> " << std::flush;
    };
    std::string line;
    for (prompt(); std::getline(std::cin, line); prompt()) {
        const auto first = line.find_first_not_of(" \t\r");
        const bool isCommand = first != std::string::npos && line[first] != '#';
        if (!asking && !options.json) std::cout << (isCommand ? "> " : "") << line << std::endl;
        if (!isCommand) continue;
        if (!runLine(session, options, line)) break;
        if (!options.json) std::cout << std::endl;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    host::prepareStandardStreams();
    Options options;
    CLI::App app("Plays the host application for libpell, among simulated monitors.", "pellhost");
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--plugin", options.plugin, "The plug-in, if it is not libpell beside this program")
        ->type_name("FILE");
    app.add_option("--scenario", options.scenario, "A JSON file that describes the simulated monitors")
        ->type_name("FILE");
    app.add_option("--simulate", options.simulations, "A simulation to start before the request, as in a batch")
        ->type_name("JSON")
        ->allow_extra_args(false);
    app.add_flag("--json", options.json, "One JSON document on the standard output");
    app.add_flag("-v,--verbose", options.verbose, "Show the request, the answer and the log line");
    app.add_flag("-t,--trace", options.trace, "Show the companion functions that were called, too");
    addRequests(app, options);
    app.add_subcommand("shell", "Carry out such commands line by line, on monitors that keep their settings");
    app.add_subcommand("batch", "Carry out JSON lines from the standard input and answer each with a JSON line");

    try {
        auto arguments = host::arguments(argc, argv);
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrongUsage;
    }
    const auto fail = [&](const std::exception& error, int code) {
        std::cerr << "pellhost: " << error.what() << '\n';
        const Json told = {{"name", "HostError"}, {"message", error.what()}};
        if (options.json)
            std::cout << host::writeJson({{"status", nullptr}, {"error", told}, {"value", nullptr}}, 2) << '\n';
        return code;
    };
    try {
        const auto command = chosenCommand(app);
        if (command == createCommand) {
            host::createPackage(options.package);
            return 0;
        }
        if (!options.scenario.empty()) loadScenario(options.scenario);
        const host::Session session(options.plugin.empty() ? host::Plugin::defaultFile()
                                                           : host::fromUtf8(options.plugin));
        if (command == "batch") return runBatch(session);
        if (command == "shell") return runShell(session, options);
        return runCommand(session, command, options);
    } catch (const UsageError& error) {
        return fail(error, wrongUsage);
    } catch (const std::invalid_argument& error) {  // a scenario, a simulation or an export that does not exist
        return fail(error, wrongUsage);
    } catch (const std::exception& error) {
        return fail(error, requestFailed);
    }
}
