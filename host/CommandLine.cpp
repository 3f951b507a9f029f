#include "host/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>

#include "host/Commands.h"
#include "host/Platform.h"

namespace host {

namespace {

constexpr int requestFailed = 1;
constexpr int wrongUsage = 2;

/// The commands that the command line and the shell have in common.
class RequestCommands {
 public:
    RequestCommands(CLI::App& app, Options& options, Commands& commands)
        : app_(app), options_(options), commands_(commands) {
        addOutputOptions();
        addList();
        addRequest("get", "GET", "Read a resource");
        addRequest("put", "PUT", "Write a resource")
            ->add_option("body", options.body, "The body, usually JSON")
            ->required();
        addRequest("post", "POST", "Post to a resource")->add_option("body", options.body, "The body, usually JSON");
        addRequest("delete", "DELETE", "Delete a resource")
            ->add_option("body", options.body, "The body, usually JSON; most resources need none");
        addFirmware();
    }

    bool succeeded() const { return succeeded_; }

 private:
    void addOutputOptions() {
        // What the shell was started with comes first, so each adds to it.
        app_.add_option("--simulate", "A simulation to start before the request, as in a batch")
            ->type_name("JSON")
            ->allow_extra_args(false)
            ->take_all()
            ->each([this](const std::string& instruction) { options_.simulations.push_back(instruction); });
        app_.add_flag("--json", options_.json, "One JSON document on the standard output");
        app_.add_flag("-v,--verbose", options_.verbose, "Show the request, the answer and the log line");
        app_.add_flag("-t,--trace", options_.trace, "Show the companion functions that were called, too");
    }

    void addList() {
        const auto list = app_.add_subcommand("list", "List the monitors");
        list->add_flag("--update", options_.update, "Look for connected monitors afresh");
        list->callback([this] { succeeded_ = commands_.list(options_); });
    }

    CLI::App* addRequest(const char* name, const char* method, const char* description) {
        const auto command = app_.add_subcommand(name, description);
        command->add_option("resource", options_.resource, "An export, such as Brightness")->required();
        addMonitor(command);
        command->add_option("--query", options_.query,
                            "The query, as in a URL, such as range or color=red&depth=10, or as a JSON object");
        command->add_option("--id", options_.id, "The identifier of an opened file");
        command->callback([this, method] { succeeded_ = commands_.request(method, options_); });
        return command;
    }

    void addFirmware() {
        const auto firmware = app_.add_subcommand("firmware", "Firmware packages and updates");
        firmware->require_subcommand(1);
        auto& package = options_.package;

        const auto create = firmware->add_subcommand("create", "Make a package");
        create->add_option("file", package.file, "The package")->required();
        create->add_option("--product", package.product, "The product that it is for")->required();
        create->add_option("--version", package.version, "Such as 2.1.0.3.7: system.controller.frontEnd.osd.fpga")
            ->required();
        constexpr std::uint32_t maximumSize = 1u << 26;
        create->add_option("--size", package.size, "Bytes of payload")->check(CLI::Range(0u, maximumSize));
        create->add_option("--broken", package.broken, "What is wrong with it")
            ->check(CLI::IsMember({"checksum", "truncated", "header"}));
        create->callback([this] { createPackage(options_.package); });

        const auto update = firmware->add_subcommand("update", "Check and transfer a package, and trigger the update");
        update->add_option("package", package.file, "The package")->required();
        addMonitor(update);
        update->callback([this] { succeeded_ = commands_.updateFirmware(options_); });
    }

    void addMonitor(CLI::App* command) {
        command->add_option("--monitor", options_.monitor,
                            "The monitor, as PRODUCT/SERIAL; otherwise the first listed");
    }

    CLI::App& app_;
    Options& options_;
    Commands& commands_;
    bool succeeded_ = true;
};

std::string checkNotEmpty(const std::string& text) {
    return text.empty() ? "the name is empty" : "";
}

std::string checkFolder(const std::string& text) {
    std::error_code error;
    return std::filesystem::is_directory(fromUtf8(text), error) ? "" : "there is no folder \"" + text + "\"";
}

/// Options begin with a hyphen on every system: a path may begin with a slash.
void setUp(CLI::App& app) {
    app.require_subcommand(1);
    app.allow_windows_style_options(false);
    app.fallthrough();
}

/// Carries out one line of the shell. Returns false to end it.
bool runLine(const std::string& line, Options options, Commands& commands, const Console& console) {
    CLI::App app("One command a line; # begins a comment.", "");
    setUp(app);
    const RequestCommands requests(app, options, commands);
    std::string instruction;
    const auto simulate = app.add_subcommand("simulate", "Start a simulation, as in a batch");
    simulate->add_option("JSON", instruction, "The simulation")->required();
    simulate->callback([&] { commands.simulate(instruction); });
    bool ended = false;
    app.add_subcommand("quit", "Leave the shell")->callback([&] { ended = true; });
    try {
        app.parse(line, false);
    } catch (const CLI::ParseError& error) {
        app.exit(error, console.out, console.error);
    } catch (const std::exception& error) {
        console.error << error.what() << '\n';
    }
    return !ended;
}

/// The shell asks for lines on a terminal, and shows them when they come from elsewhere.
void runShell(const Options& options, Commands& commands, const Console& console) {
    commands.loadPlugin(options);
    const auto showsLines = !console.asks && !options.json;
    const auto readLine = [&](std::string& line) -> bool {
        if (console.asks) console.out << "pellhost> " << std::flush;
        return static_cast<bool>(std::getline(console.in, line));
    };
    for (std::string line; readLine(line);) {
        const auto first = line.find_first_not_of(" \t\r");
        const bool isCommand = first != std::string::npos && line[first] != '#';
        if (showsLines) console.out << (isCommand ? "> " : "") << line << std::endl;
        if (!isCommand) continue;
        if (!runLine(line, options, commands, console)) break;
        if (!options.json) console.out << std::endl;
    }
}

void addRecording(CLI::App* command, Options& options) {
    const auto record =
        command->add_option("--record", options.record, "Record all that happens, as JSON Lines")->type_name("FILE");
    command->add_flag("--redact", options.redact, "Record other serials in place of the monitors' own")->needs(record);
}

void addServe(CLI::App& app, Options& options, Commands& commands) {
    const auto serve = app.add_subcommand("serve", "Serve the plug-in, a lab and a page to browsers on this machine");
    serve->add_option("--port", options.port, "The port, or 0 for one that is free")->capture_default_str();
    const auto page = serve->add_option("--page", options.page, "A folder with a built page")->type_name("DIR");
    serve->add_option("--proxy", options.proxy, "A development server on this machine that serves the page")
        ->type_name("URL")
        ->excludes(page);
    serve->add_option("--origin", options.origins, "The origin of another page that may ask; may be repeated")
        ->type_name("URL")
        ->allow_extra_args(false)
        ->take_all();
    serve->add_flag("--open", options.open, "Open the page in a browser");
    addRecording(serve, options);
    serve->callback([&commands, &options] { commands.serve(options); });
}

}  // namespace

int runCommandLine(std::vector<std::string> arguments, const Console& console) {
    CLI::App app("Plays the host application for libpell, among simulated monitors.", "pellhost");
    setUp(app);
    Options options;
    Commands commands(console);
    app.add_option("--plugin", options.plugin, "The plug-in, if it is not libpell beside this program")
        ->type_name("FILE")
        ->check(checkNotEmpty);
    app.add_option("--scenario", options.scenario, "The simulated monitors: a ready scenario, or a JSON file")
        ->type_name("NAME|FILE");
    const RequestCommands requests(app, options, commands);
    app.add_subcommand("shell", "Carry out such commands line by line, on monitors that keep their settings")
        ->callback([&] { runShell(options, commands, console); });
    const auto batch =
        app.add_subcommand("batch", "Carry out JSON lines from the standard input and answer each with a JSON line");
    addRecording(batch, options);
    batch->callback([&] { commands.batch(options); });
    addServe(app, options, commands);
    bool isSame = true;
    bool isHealthy = true;
    const auto doctor = app.add_subcommand("doctor", "Tell what is installed around a libpell, and what is missing");
    doctor->add_option("--program", options.program, "The folder of the host's program, if it is not the plug-in's")
        ->type_name("DIR")
        ->check(checkFolder);
    doctor->callback([&] { isHealthy = commands.doctor(options); });
    const auto replay = app.add_subcommand("replay", "Ask what a recording has again, and tell what is different");
    replay->add_option("recording", options.recording, "The recording")->required();
    replay->callback([&] { isSame = commands.replay(options); });

    try {
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
        return requests.succeeded() && isSame && isHealthy ? 0 : requestFailed;
    } catch (const CLI::ParseError& error) {
        return app.exit(error, console.out, console.error) == 0 ? 0 : wrongUsage;
    } catch (const UsageError& error) {
        commands.reportError(error.what(), options);
        return wrongUsage;
    } catch (const std::invalid_argument& error) {  // a scenario, a simulation or an export that does not exist
        commands.reportError(error.what(), options);
        return wrongUsage;
    } catch (const std::exception& error) {
        commands.reportError(error.what(), options);
        return requestFailed;
    }
}

}  // namespace host
