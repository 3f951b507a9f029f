#include "host/Commands.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>

#include "host/Doctor.h"
#include "host/Journal.h"
#include "host/Platform.h"
#include "host/Query.h"
#include "host/Recording.h"
#include "host/Replay.h"
#include "host/Report.h"
#include "host/server/Server.h"

namespace host {

namespace {

Style style(const Options& options, const Console& console) {
    const auto detail = options.trace ? Detail::trace : options.verbose ? Detail::verbose : Detail::compact;
    return {detail, console.colours};
}

/// What a page may miss without being told so.
constexpr std::size_t maximumEvents = 1024;
constexpr std::size_t maximumEventBytes = 16u << 20;

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string textOf(const Json& json) {
    return json.is_string() ? json.get<std::string>() : writeJson(json);
}

std::filesystem::path pluginFile(const Options& options) {
    return options.plugin.empty() ? Plugin::defaultFile() : fromUtf8(options.plugin);
}

/// Null when nothing is to be recorded.
std::unique_ptr<RecordingWriter> startRecording(const Options& options, Journal& journal, const Console& console) {
    if (options.record.empty()) return nullptr;
    auto writer = std::make_unique<RecordingWriter>(fromUtf8(options.record), options.redact, console.error);
    journal.addSink([recording = writer.get()](Journal::Kind kind, const Json& line) {
        if (kind != Journal::Kind::opened) recording->write(line);
    });
    return writer;
}

/// A ready scenario, or a file.
void loadScenario(const std::string& file) {
    const auto ready = simulator::scenarioNames();
    if (std::find(ready.begin(), ready.end(), file) != ready.end()) return simulator::chooseScenario(file);
    std::ifstream stream(fromUtf8(file), std::ios::binary);
    if (!stream) throw UsageError("cannot read " + file + ", and it is none of the ready scenarios");
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
        session_ = std::make_unique<const Session>(pluginFile(options));
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
    Journal journal(session(options));
    const auto recorder = startRecording(options, journal, console_);
    for (const auto& instruction : options.simulations) journal.simulate(parseJson(instruction));
    for (std::string line; std::getline(console_.in, line);)
        console_.out << writeJson(journal.execute(line)) << std::endl;
    if (recorder) recorder->finish();
}

void Commands::serve(const Options& options) {
    for (const auto& origin : options.origins)
        if (!server::Guard::isOrigin(origin))
            throw UsageError("--origin takes an origin as browsers write it, such as http://localhost:5173, not " +
                             origin);
    returnLargeBlocks();
    Journal journal(session(options));
    const auto recorder = startRecording(options, journal, console_);

    server::EventLog events(maximumEvents, maximumEventBytes);
    simulator::setEventObserver(
        [&](const Json& event) { events.add(textOf(event.at("name")), textOf(event.at("text"))); });
    server::Lab lab(journal, toUtf8(pluginFile(options)));
    for (const auto& instruction : options.simulations) journal.simulate(parseJson(instruction));
    server::SiteOptions site{.forwards = !options.proxy.empty(), .origins = options.origins};
    if (!options.page.empty()) site.page = std::filesystem::absolute(fromUtf8(options.page));
    if (!site.page.empty() && !std::filesystem::is_directory(site.page))
        throw UsageError("there is no folder " + options.page);
    server::Site pages(site, journal, lab, events);
    {
        server::Server server({.port = options.port, .proxy = options.proxy}, pages, journal, console_);
        pages.setPort(server.port());
        server.follow(events);
        server.follow(lab.exchanges());
        const auto address = "http://127.0.0.1:" + std::to_string(server.port()) + "/";
        if (options.json)
            console_.out << writeJson({{"address", address}}) << std::endl;
        else
            console_.out << "Serving at " << address << "  with the lab at " << address << "lab/\n"
                         << "Ctrl+C ends it." << std::endl;
        if (options.open) openInBrowser(address);
        server.run();
    }
    simulator::setEventObserver({});
    if (recorder) recorder->finish();
}

bool Commands::replay(const Options& options) {
    ReplayOptions how{.keepsMonitors = !options.scenario.empty()};
    for (const auto& instruction : options.simulations) how.simulations.push_back(parseJson(instruction));
    const auto outcome = host::replay(session(options), fromUtf8(options.recording), how);
    if (outcome.lacksItsBeginning)
        console_.error << "pellhost: the beginning is missing, so monitors may have been set otherwise\n";
    if (outcome.tornLine)
        console_.error << "pellhost: line " << outcome.tornLine << " is torn: the recording was cut off there\n";
    if (options.json) {
        auto differences = Json::array();
        for (const auto& [line, request, where, recorded, replayed, together] : outcome.differences)
            differences.push_back({{"line", line},
                                   {"request", request},
                                   {"where", where},
                                   {"recorded", recorded},
                                   {"replayed", replayed},
                                   {"ranTogetherWith", together ? Json(together) : Json()}});
        console_.out << formatJson({{"requests", outcome.requests},
                                    {"differences", differences},
                                    {"tornLine", outcome.tornLine ? Json(outcome.tornLine) : Json()},
                                    {"incomplete", outcome.lacksItsBeginning}})
                     << '\n';
    } else {
        std::size_t last = 0;
        for (const auto& [line, request, where, recorded, replayed, together] : outcome.differences) {
            if (line != last) {
                console_.out << "line " << line << ": " << request;
                if (together) console_.out << ", ran together with line " << together;
                console_.out << '\n';
            }
            last = line;
            console_.out << "    " << where << ": " << writeJson(recorded) << " is now " << writeJson(replayed) << '\n';
        }
        console_.out << counted(outcome.requests, "request") << ", "
                     << counted(outcome.differences.size(), "difference") << '\n';
    }
    return outcome.differences.empty();
}

bool Commands::doctor(const Options& options) {
    if (!options.scenario.empty()) loadScenario(options.scenario);
    const Installation installation{.plugin = pluginFile(options), .program = fromUtf8(options.program)};
    if (options.json) {
        const auto examination = examine(installation, {[](const Json&) {}, [](const std::filesystem::path&) {}});
        console_.out << formatJson(examination) << '\n';
        return examination.at("ok");
    }
    Json told;
    const auto tellFiles = [&](const Json& examination) {
        told = examination;
        console_.out << formatFiles(style(options, console_), examination) << std::flush;
        if (examination.at("ok")) console_.out << "\nNow loading libpell and asking the monitors ..." << std::endl;
    };
    const auto tellLoading = [&](const std::filesystem::path& file) {
        console_.out << "  loading " << toUtf8(file) << std::endl;
    };
    const auto examination = examine(installation, {tellFiles, tellLoading});
    console_.out << formatRest(style(options, console_), examination, told);
    return examination.at("ok");
}

void Commands::reportError(const std::string& message, const Options& options) {
    console_.error << "pellhost: " << message << '\n';
    if (!options.json) return;
    const auto outcome = hostError(message);
    console_.out << formatJson({{"status", outcome.status}, {"error", outcome.error}, {"value", outcome.value}})
                 << '\n';
}

}  // namespace host
