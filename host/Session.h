// A plug-in at work among simulated companions: what pellhost and the tests drive.
//
//   host::Session session;
//   const auto exchange = session.call({.resource = "Brightness", .product = "TQ271-P", .serial = "10000001"});
//   exchange["responses"][0]["status"] == 200
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/Plugin.h"
#include "simulator/core/Simulator.h"

namespace host {

using simulator::formatJson;
using simulator::Json;
using simulator::parseIfJson;
using simulator::parseJson;
using simulator::writeJson;

/// Request options, request parameters, query options, body.
using Texts = std::array<std::string, 4>;

/// The four texts of a request to a resource. An empty query or body is sent as an empty text.
struct Request {
    std::string method = "GET";
    std::string resource{};
    std::string product{};
    std::string serial{};
    std::string query{};
    std::string body{};
    std::string id{};  ///< of an opened file

    Texts texts() const;
};

/// Takes an event {"name", "text"} while the call that brings it goes on.
using EventObserver = std::function<void(const Json& event)>;

/// Any number of threads may call one session at once. The simulated world is the process's: sessions share it.
class Session {
 public:
    /// Throws std::runtime_error when the plug-in cannot be loaded.
    explicit Session(const std::filesystem::path& plugin = Plugin::defaultFile()) : plugin_(plugin) {}

    /// Calls an export with exactly these texts, each up to its first NUL. Everything that arrived meanwhile:
    /// {"returned", "responses", "events", "log", "calls"}, the lists as in simulator::Recording. How long each of the
    /// calls took goes into `milliseconds`, if it is not null.
    /// Throws std::invalid_argument when the plug-in has no such export. Events go to the observer as they
    /// arrive, too, on the plug-in's thread.
    Json call(const std::string& name, const Texts& texts, EventObserver onEvent = {},
              std::vector<double>* milliseconds = nullptr) const;
    Json call(const Request& request, EventObserver onEvent = {}) const {
        return call(request.resource, request.texts(), std::move(onEvent));
    }

    /// Carries out one line of a batch, {"call", "texts"} or {"simulate", ...}, and answers it. Never throws: what is
    /// not understood answers {"ok": false, "error"}.
    Json execute(std::string_view line) const;

    /// Throws std::invalid_argument, with a suggestion, when the plug-in has no such export.
    LibpellEntry exportOf(const std::string& name) const;

 private:
    Plugin plugin_;
};

/// The same with other ways to call an export and to simulate.
using LineCall = std::function<Json(const std::string& name, const Texts& texts)>;
Json executeLine(std::string_view line, const LineCall& call, const std::function<void(const Json&)>& simulate);

}  // namespace host
