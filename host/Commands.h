// What pellhost's commands do.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Console.h"
#include "host/Firmware.h"

namespace host {

class Session;
struct Request;

/// The options and arguments of all commands.
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
    PackageOptions package;

    std::string record;     ///< a file that takes what happens
    bool redact = false;    ///< without serials
    std::string recording;  ///< that is replayed

    std::string program;  ///< the folder of the host's program, for the doctor

    std::uint16_t port = 8730;
    std::string page;
    std::string proxy;
    std::vector<std::string> origins;
    bool open = false;  ///< in a browser
};

/// What the caller of the program got wrong.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The plug-in is loaded for the first command that needs it, among the monitors of that command's scenario, and stays.
///
/// Commands return whether they succeeded. They throw UsageError or std::invalid_argument for wrong usage,
/// std::runtime_error for what else stands in their way.
class Commands {
 public:
    explicit Commands(const Console& console);
    ~Commands();
    Commands(const Commands&) = delete;
    Commands& operator=(const Commands&) = delete;

    void loadPlugin(const Options& options);

    bool list(const Options& options);
    bool request(const char* method, const Options& options);
    bool updateFirmware(const Options& options);
    void simulate(const std::string& instruction);

    /// Carries out JSON lines until the input ends.
    void batch(const Options& options);

    /// Whether a recording comes out the same again.
    bool replay(const Options& options);

    /// Whether nothing is missing that libpell needs.
    bool doctor(const Options& options);

    /// Serves the plug-in, the lab and a page over HTTP until the program is interrupted.
    void serve(const Options& options);

    /// A command's failure, for people and, if they asked for it, for programs.
    void reportError(const std::string& message, const Options& options);

 private:
    const Session& session(const Options& options);

    /// A function formats the value of a success in a way of its own; null: as every other.
    bool send(const Request& request, const Options& options, std::string (*formatValue)(const Json& value) = nullptr);

    const Console& console_;
    std::unique_ptr<const Session> session_;
};

}  // namespace host
