// The plug-in among simulated companions: a request, what is done to it meanwhile, and what must hold of its answer
// whatever that was.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/Session.h"
#include "tests/Judgement.h"
#include "tests/faults/Platform.h"

namespace faults {

using host::Json;

/// The simulated monitor that requests are about, and one that has older functions.
inline constexpr const char* product = "TQ271-P";
inline constexpr const char* olderProduct = "TB240";
inline constexpr const char* serial = "10000001";  ///< of both

struct Request {
    std::string resource;
    std::string method;
    std::string line;  ///< as in the catalogue, without the resource
    host::Texts texts;
};

/// Of a line as the catalogue's examples have them.
Request parseRequest(const std::string& resource, const std::string& line, const char* ofProduct = product);

/// What disturbs a request.
struct Disturbance {
    std::string function{};  ///< a simulated function; at the n-th call of it ...
    int occurrence = 1;
    std::function<void()> action{};  ///< ... this is done, before its work
    bool isForeign = false;          ///< which raises a foreign exception
    std::string vanished{};          ///< a function that cannot be looked up
    Need need = Need::memory;        ///< the n-th of what the plug-in needs is refused,
    long refused = 0;
    bool lasting = false;        ///< and all that follow
    bool onFreshThread = false;  ///< the request is the first of its thread
};

struct Outcome : tests::Judgement {
    Json calls;            ///< of companions, as in a recording
    bool refused = false;  ///< something was refused
};

class Guest {
 public:
    Guest();
    ~Guest();
    Guest(const Guest&) = delete;
    Guest& operator=(const Guest&) = delete;

    /// Loaded anew, with nothing that earlier requests have left.
    void reload();

    /// The outcome has what is wrong of any request: its answer and log, and locks that are still held.
    Outcome ask(const Request& request, const Disturbance& disturbance = {});
    Outcome ask(const std::string& resource, const std::string& line) { return ask(parseRequest(resource, line)); }

 private:
    std::optional<host::Plugin> plugin_;
};

/// The path of a firmware package for the monitor; the file goes with the process.
std::string packageFile();

/// Replaces "$package", and the variables that answers have given a value.
std::string substitute(std::string line, const std::map<std::string, std::string>& variables);

/// How many handles of the firmware library are open.
std::size_t openHandles();

}  // namespace faults
