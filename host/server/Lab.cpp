#include "host/server/Lab.h"

#include <stdexcept>

#include "host/Plugin.h"
#include "host/Recording.h"

namespace host::server {

namespace {

/// 10,000 exchanges, each of which begins and ends.
constexpr std::size_t maximumEvents = 20'000;
constexpr std::size_t maximumBytes = 64u << 20;

HttpResponse jsonResponse(unsigned status, const Json& json) {
    return {.status = status, .type = "application/json", .body = writeJson(json)};
}

const char* nameOf(Journal::Kind kind) {
    switch (kind) {
        case Journal::Kind::opened:
            return "opened";
        case Journal::Kind::exchange:
            return "exchange";
        default:
            return "simulation";
    }
}

}  // namespace

Lab::Lab(Journal& journal, std::string plugin)
    : journal_(journal),
      plugin_(std::move(plugin)),
      folder_(Plugin::defaultFile().parent_path() / "lab"),
      head_(recordingHead(simulator::currentScenario())),
      exchanges_(maximumEvents, maximumBytes, [this](const EventLog::Event& event) { forget(event); }) {
    journal.addSink([this](Journal::Kind kind, const Json& line) { exchanges_.add(nameOf(kind), writeJson(line)); });
}

HttpResponse Lab::state() const {
    Json state = {{"simulated", simulator::companionsAreSimulated()}, {"plugin", plugin_}};
    if (simulator::companionsAreSimulated()) state.update(simulator::describeWorld());
    return jsonResponse(200, state);
}

HttpResponse Lab::simulate(const std::string& instruction) try {
    if (!simulator::companionsAreSimulated()) throw std::invalid_argument("the monitors are not simulated");
    journal_.simulate(parseJson(instruction));
    return jsonResponse(200, {{"ok", true}});
} catch (const std::exception& error) {
    return jsonResponse(400, {{"ok", false}, {"error", error.what()}});
}

HttpResponse Lab::call(const std::string& line) {
    const auto answer = executeLine(
        line, [this](const std::string& name, const Texts& texts) { return journal_.call("lab", name, texts); },
        [](const Json&) { throw std::invalid_argument("instructions of the simulator have an address of their own"); });
    return jsonResponse(answer.contains("responses") ? 200 : 400, answer);
}

HttpResponse Lab::recording(bool redacts) const {
    Json head;
    const auto events = exchanges_.events([&] { head = head_; });
    std::vector<std::string_view> lines;
    for (const auto& event : events)
        if (event->name != nameOf(Journal::Kind::opened)) lines.push_back(event->data);
    Redaction redaction;
    if (redacts) {
        redaction.learn(head);
        for (const auto line : lines) redaction.learn(Json::parse(line));
        head = redaction.apply(head);
    }
    auto text = writeJson(head) + "\n";
    for (const auto line : lines)
        text.append(redacts ? writeJson(redaction.apply(Json::parse(line))) : std::string(line)).append("\n");
    HttpResponse response{.type = "application/x-ndjson", .body = std::move(text)};
    response.fields = {{"Content-Disposition", "attachment; filename=\"recording.jsonl\""}};
    return response;
}

/// The log calls it, and nobody else, so it needs no lock.
void Lab::forget(const EventLog::Event& event) {
    head_["incomplete"] = true;
    if (event.name != nameOf(Journal::Kind::simulation)) return;
    const auto line = Json::parse(event.data);
    if (const auto scenario = line.find("scenario"); scenario != line.end()) head_["scenario"] = *scenario;
}

}  // namespace host::server
