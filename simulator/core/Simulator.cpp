#include "simulator/core/Simulator.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <stdexcept>
#include <utility>

#include "simulator/core/Generated.h"
#include "simulator/core/State.h"
#include "simulator/core/Suggestion.h"

namespace simulator {

namespace {

void require(bool condition, const std::string& message) {
    if (!condition) throw std::invalid_argument(message);
}

void requireMembers(const Json& instruction, const std::set<std::string>& allowed) {
    for (const auto& [name, value] : instruction.items())
        require(name == "simulate" || allowed.contains(name), "unknown member \"" + name + "\"");
}

std::string text(const Json& instruction, const char* member) {
    const auto found = instruction.find(member);
    if (found == instruction.end()) return {};
    require(found->is_string(), "\"" + std::string(member) + "\" must be a text");
    return found->get<std::string>();
}

/// 32 bits, spelled signed or unsigned.
Result resultCode(const Json& instruction) {
    const auto found = instruction.find("result");
    require(found != instruction.end() && found->is_number_integer(), "\"result\" must be an integer");
    require(*found >= INT32_MIN && *found <= UINT32_MAX, "\"result\" must have 32 bits");
    return {static_cast<std::uint32_t>(found->get<std::int64_t>())};
}

std::optional<std::uint64_t> repetitions(const Json& instruction) {
    const auto found = instruction.find("times");
    if (found == instruction.end()) return std::nullopt;
    require(found->is_number_integer() && *found > 0, "\"times\" must be a positive integer");
    return found->get<std::uint64_t>();
}

Script readScript(const Json& instruction) {
    Script script;
    script.function = text(instruction, "function");
    const auto& functions = generated::functions;
    require(std::find(functions.begin(), functions.end(), script.function) != functions.end(),
            "unknown function \"" + script.function + "\"" + suggestion(script.function, functions));
    script.serial = text(instruction, "serial");
    script.product = text(instruction, "product");
    script.times = repetitions(instruction);
    return script;
}

Script readReturn(const Json& instruction) {
    requireMembers(instruction, {"function", "result", "outputs", "times", "product", "serial"});
    auto script = readScript(instruction);
    const Result result = resultCode(instruction);
    script.departure.result = result.code;
    if (const auto outputs = instruction.find("outputs"); outputs != instruction.end()) {
        require(outputs->is_array(), "\"outputs\" must be a list");
        script.departure.outputs = std::make_shared<const Json>(*outputs);
    }
    // A success without outputs of its own leaves the function to do its normal work.
    script.departure.works = !script.departure.outputs && !result.failed();
    return script;
}

Script readThrow(const Json& instruction) {
    requireMembers(instruction, {"function", "times", "product", "serial"});
    auto script = readScript(instruction);
    script.departure.throws = true;
    script.departure.works = false;
    return script;
}

Script readLie(const Json& instruction) {
    requireMembers(instruction, {"function", "as", "times", "product", "serial"});
    auto script = readScript(instruction);
    const auto lie = instruction.find("as");
    require(lie != instruction.end() && (lie->is_number() || lie->is_string()), "\"as\" must be a number or a text");
    script.departure.lie = std::make_shared<const Json>(*lie);
    return script;
}

Json addressesOf(bool (*condition)(const Monitor& monitor)) {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    auto addresses = Json::array();
    for (const auto monitor : state.world.enumerate())
        if (condition(*monitor)) addresses.push_back(monitor->address());
    return addresses;
}

}  // namespace

namespace {

constexpr auto builtIn = "built-in";
constexpr auto fromDocument = "file";

/// Without what is the same in every scenario.
Json builtInMonitors() {
    auto document = World::builtInScenario();
    for (const auto same : {"settings", "firmware", "products"}) document.erase(same);
    return document;
}

}  // namespace

State::State()
    : initial(World::builtInScenario()),
      world(initial),
      scenario(std::make_shared<const Json>(builtInMonitors())),
      scenarioName(builtIn) {}

State& State::instance() {
    // Never destroyed: the plug-in may let go of its libraries after our own static objects are gone.
    static auto& state = *new State;
    return state;
}

namespace {

void load(const Json& scenario, const std::string& name) {
    World world(scenario);
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    state.scenario = std::make_shared<const Json>(scenario);
    state.scenarioName = name;
    if (name == fromDocument) state.document = state.scenario;
    state.initial = std::move(world);
    state.world = state.initial;
    state.scripts.clear();
}

std::string versionText(const FirmwareVersionRecord& version) {
    std::string text;
    for (const auto part : {version.system, version.controller, version.frontEnd, version.osd, version.fpga})
        text += (text.empty() ? "" : ".") + std::to_string(part);
    return text;
}

Json describe(const Monitor& monitor) {
    Json json = {{"product", monitor.product},
                 {"serial", monitor.serial},
                 {"connected", monitor.connected},
                 {"found", monitor.found},
                 {"delay", monitor.callTime.count()}};
    for (const auto name : {"power", "inputPort", "brightness"})
        if (monitor.supports(name) && monitor.settings.find(name)) json[name] = monitor.settings.at(name).at("value");
    if (monitor.supports("firmwareVersion")) json["firmware"] = versionText(monitor.firmware.version);
    return json;
}

/// The instruction that would add what is left of it.
Json describe(const Script& script) {
    const Departure& departure = script.departure;
    Json json = {{"simulate", departure.throws ? "throw"
                              : departure.lie  ? "lie"
                                               : "return"},
                 {"function", script.function}};
    if (departure.lie) json["as"] = *departure.lie;
    if (departure.result) json["result"] = *departure.result;
    if (departure.outputs) json["outputs"] = *departure.outputs;
    if (script.times) json["times"] = *script.times;
    if (!script.product.empty()) json["product"] = script.product;
    if (!script.serial.empty()) json["serial"] = script.serial;
    return json;
}

/// A number that is not negative.
double number(const Json& instruction, const char* member) {
    const auto found = instruction.find(member);
    require(found != instruction.end() && found->is_number() && found->get<double>() >= 0,
            "\"" + std::string(member) + "\" must be a number that is not negative");
    return found->get<double>();
}

}  // namespace

void loadScenario(const Json& scenario) {
    load(scenario, fromDocument);
}

namespace {

std::shared_ptr<const Json> loadedDocument() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.document;
}

}  // namespace

void chooseScenario(const std::string& name) {
    if (name == builtIn) return load(builtInMonitors(), name);
    if (const auto document = loadedDocument(); document && name == fromDocument) return load(*document, name);
    for (const auto& ready : generated::scenarios)
        if (ready.name == name) return load(parseJson(ready.text), name);
    const auto names = scenarioNames();
    const std::vector<std::string_view> known(names.begin(), names.end());
    require(false, "there is no scenario \"" + name + "\"" + suggestion(name, known));
}

std::vector<std::string> scenarioNames() {
    std::vector<std::string> names{builtIn};
    for (const auto& scenario : generated::scenarios) names.emplace_back(scenario.name);
    if (loadedDocument()) names.emplace_back(fromDocument);
    return names;
}

Json currentScenario() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return *state.scenario;
}

Json describeWorld() {
    const auto names = scenarioNames();
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    auto monitors = Json::array();
    for (const auto& monitor : state.world.monitors()) monitors.push_back(describe(monitor));
    auto scripts = Json::array();
    for (const auto& script : state.scripts.all()) scripts.push_back(describe(script));
    return {{"scenario", state.scenarioName},
            {"scenarios", names},
            {"speed", speed()},
            {"scripts", std::move(scripts)},
            {"monitors", std::move(monitors)}};
}

void simulate(const Json& instruction) {
    require(instruction.is_object(), "an instruction must be an object");
    const auto what = text(instruction, "simulate");
    if (what == "scenario") {
        requireMembers(instruction, {"name"});
        return chooseScenario(text(instruction, "name"));
    }
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);

    if (what == "return" || what == "throw" || what == "lie") {
        auto script = what == "return"  ? readReturn(instruction)
                      : what == "throw" ? readThrow(instruction)
                                        : readLie(instruction);
        require(state.world.knows(script.serial, script.product), "unknown monitor");
        state.scripts.add(std::move(script));
    } else if (what == "plug" || what == "unplug") {
        requireMembers(instruction, {"product", "serial"});
        const auto serial = text(instruction, "serial");
        const auto product = text(instruction, "product");
        require(what == "plug" ? state.world.plug(serial, product) : state.world.unplug(serial, product),
                "unknown monitor");
    } else if (what == "delay") {
        requireMembers(instruction, {"milliseconds", "product", "serial"});
        const auto serial = text(instruction, "serial");
        const auto product = text(instruction, "product");
        require(state.world.knows(serial, product), "unknown monitor");
        state.world.delay(serial, product, Milliseconds(number(instruction, "milliseconds")));
    } else if (what == "advance") {
        requireMembers(instruction, {"milliseconds"});
        advance(Milliseconds(number(instruction, "milliseconds")));
    } else if (what == "speed") {
        requireMembers(instruction, {"factor"});
        const auto factor = number(instruction, "factor");
        constexpr double maximumFactor = 1e6;
        require(factor <= maximumFactor, "\"factor\" must be at most a million");
        setSpeed(factor);
    } else if (what == "reset") {
        requireMembers(instruction, {});
        state.scripts.clear();
        state.world = state.initial;
    } else {
        constexpr std::string_view kinds[] = {"return", "throw",   "lie",   "plug",     "unplug",
                                              "delay",  "advance", "speed", "scenario", "reset"};
        std::string known;
        for (const auto kind : kinds) known += (known.empty() ? "" : ", ") + std::string(kind);
        require(false, "\"simulate\" must be one of " + known + suggestion(what, kinds));
    }
}

Json openHandles() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.handles.count();
}

void releaseHandles() {
    auto& state = State::instance();
    if (const std::unique_lock lock(state.mutex, std::try_to_lock); lock) state.handles.releaseAll();
}

Json takeHandleFaults() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.handles.takeFaults();
}

Json lockedMonitors() {
    return addressesOf([](const Monitor& monitor) { return monitor.locked; });
}

Json monitorsInCriticalSection() {
    return addressesOf([](const Monitor& monitor) { return monitor.inCriticalSection; });
}

}  // namespace simulator
