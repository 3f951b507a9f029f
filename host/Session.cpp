#include "host/Session.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "simulator/core/Suggestion.h"

namespace host {

namespace {

Json executeCall(const LineCall& call, const Json& line) {
    const auto& name = line.at("call");
    const auto texts = line.find("texts");
    const auto isText = [](const Json& json) { return json.is_string(); };
    if (line.size() != 2 || !name.is_string() || texts == line.end() || !texts->is_array() || texts->size() != 4 ||
        !std::all_of(texts->begin(), texts->end(), isText))
        throw std::invalid_argument(
            "a call must have the members \"call\", a text, and \"texts\", a list of four texts");
    return call(name, texts->get<Texts>());
}

/// Only exports that the plug-in has: it may be older than this program.
std::string suggestExport(const Plugin& plugin, const std::string& name) {
    std::vector<std::string_view> names;
    for (const auto known : exportNames)
        if (plugin.find(std::string(known).c_str())) names.push_back(known);
    return simulator::suggestion(name, names);
}

}  // namespace

Texts Request::texts() const {
    auto parameters = Json::object();
    if (!product.empty() || !serial.empty()) parameters = {{"product", product}, {"serial", serial}};
    if (!id.empty()) parameters["id"] = id;
    return {writeJson({{"method", method}}), writeJson(parameters), query, body};
}

Json Session::call(const std::string& name, const Texts& texts, EventObserver onEvent,
                   std::vector<double>* milliseconds) const {
    const auto function = exportOf(name);
    simulator::Recording recording;
    recording.onEvent = std::move(onEvent);
    const auto returned = function(texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), texts[3].c_str());
    if (milliseconds) *milliseconds = std::move(recording.milliseconds);
    return {{"returned", returned},
            {"responses", std::move(recording.responses)},
            {"events", std::move(recording.events)},
            {"log", std::move(recording.log)},
            {"calls", std::move(recording.calls)}};
}

LibpellEntry Session::exportOf(const std::string& name) const {
    const auto function = plugin_.find(name.c_str());
    if (!function)
        throw std::invalid_argument("the plug-in has no export \"" + name + "\"" + suggestExport(plugin_, name));
    return function;
}

Json Session::execute(std::string_view line) const {
    return executeLine(
        line, [this](const std::string& name, const Texts& texts) { return call(name, texts); }, simulator::simulate);
}

Json executeLine(std::string_view line, const LineCall& call, const std::function<void(const Json&)>& simulate) {
    try {
        const auto json = parseJson(line);
        if (json.is_object() && json.contains("call")) return executeCall(call, json);
        if (json.is_object() && json.contains("simulate")) {
            simulate(json);
            return {{"ok", true}};
        }
        throw std::invalid_argument("a line must be an object with the member \"call\" or \"simulate\"");
    } catch (const std::exception& error) {
        return {{"ok", false}, {"error", error.what()}};
    }
}

}  // namespace host
