#include "host/Journal.h"

#include <chrono>

namespace host {

namespace {

/// Milliseconds since 1970.
std::int64_t now() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

Json objectOf(const std::string& text) {
    const auto json = parseIfJson(text);
    return json.is_object() ? json : Json::object();
}

/// What the texts say of the request, as far as they say it.
Json describe(const std::string& resource, const Texts& texts) {
    Json line = {{"resource", resource}, {"texts", texts}};
    const auto add = [&](const Json& source, const char* member) {
        if (const auto found = source.find(member); found != source.end() && found->is_string()) line[member] = *found;
    };
    add(objectOf(texts[0]), "method");
    const auto parameters = objectOf(texts[1]);
    add(parameters, "product");
    add(parameters, "serial");
    return line;
}

std::string title(const Json& line) {
    auto text = line.value("method", "") + " " + line.at("resource").get<std::string>();
    if (line.contains("serial")) text += " of " + line.value("product", "") + "/" + line.value("serial", "");
    return text;
}

/// Has the request among the running ones while it lives.
class Running {
 public:
    Running(std::mutex& mutex, std::map<std::uint64_t, std::string>& all, std::uint64_t id, std::string name)
        : mutex_(mutex), all_(all), id_(id) {
        const std::lock_guard lock(mutex_);
        all_[id_] = std::move(name);
    }
    ~Running() {
        const std::lock_guard lock(mutex_);
        all_.erase(id_);
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

 private:
    std::mutex& mutex_;
    std::map<std::uint64_t, std::string>& all_;
    const std::uint64_t id_;
};

}  // namespace

Json Journal::call(std::string_view source, const std::string& resource, const Texts& texts) {
    session_.exportOf(resource);  // what does not exist is not asked
    auto line = describe(resource, texts);
    line["id"] = ++lastId_;
    line["time"] = now();
    line["source"] = source;
    const Running running(mutex_, running_, line["id"], title(line));
    send(Kind::opened, line);

    const auto begun = std::chrono::steady_clock::now();
    std::vector<double> milliseconds;
    auto exchange = session_.call(resource, texts, {}, &milliseconds);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begun;
    line["milliseconds"] = time.count();
    line.update(exchange);
    for (std::size_t at = 0; at < milliseconds.size(); ++at) line["calls"][at]["milliseconds"] = milliseconds[at];
    const auto& responses = exchange["responses"];
    line["status"] = responses.size() == 1 ? responses[0]["status"] : Json();
    send(Kind::exchange, line);
    return exchange;
}

void Journal::simulate(const Json& instruction) {
    const std::lock_guard lock(simulating_);  // so that the scenario is the one that was chosen here
    simulator::simulate(instruction);
    auto line = instruction;
    if (line.at("simulate") == "scenario") line["scenario"] = simulator::currentScenario();
    line["id"] = ++lastId_;
    line["time"] = now();
    send(Kind::simulation, line);
}

Json Journal::execute(std::string_view text) {
    return executeLine(
        text, [this](const std::string& name, const Texts& texts) { return call("batch", name, texts); },
        [this](const Json& instruction) { simulate(instruction); });
}

std::vector<std::string> Journal::running() const {
    const std::lock_guard lock(mutex_);
    std::vector<std::string> names;
    for (const auto& [id, name] : running_) names.push_back(name);
    return names;
}

void Journal::send(Kind kind, const Json& line) const {
    for (const auto& sink : sinks_) sink(kind, line);
}

}  // namespace host
