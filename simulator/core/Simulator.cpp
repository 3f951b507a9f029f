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
    script.result = resultCode(instruction);
    if (const auto outputs = instruction.find("outputs"); outputs != instruction.end()) {
        require(outputs->is_array(), "\"outputs\" must be a list");
        script.outputs = std::make_shared<const Json>(*outputs);
    }
    return script;
}

Script readThrow(const Json& instruction) {
    requireMembers(instruction, {"function", "times", "product", "serial"});
    auto script = readScript(instruction);
    script.throws = true;
    return script;
}

Script readLie(const Json& instruction) {
    requireMembers(instruction, {"function", "as", "times", "product", "serial"});
    auto script = readScript(instruction);
    const auto lie = instruction.find("as");
    require(lie != instruction.end() && (lie->is_number() || lie->is_string()), "\"as\" must be a number or a text");
    script.lie = std::make_shared<const Json>(*lie);
    return script;
}

}  // namespace

State::State() : initial(World::builtInScenario()), world(initial) {}

State& State::instance() {
    // Never destroyed: the plug-in may let go of its libraries after our own static objects are gone.
    static auto& state = *new State;
    return state;
}

void loadScenario(const Json& scenario) {
    World world(scenario);
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    state.initial = std::move(world);
    state.world = state.initial;
    state.scripts.clear();
}

void simulate(const Json& instruction) {
    require(instruction.is_object(), "an instruction must be an object");
    const auto what = text(instruction, "simulate");
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
    } else if (what == "advance") {
        requireMembers(instruction, {"milliseconds"});
        const auto& milliseconds = instruction.at("milliseconds");
        require(milliseconds.is_number_integer() && milliseconds.get<std::int64_t>() >= 0,
                "\"milliseconds\" must be a number that is not negative");
        advance(std::chrono::milliseconds(milliseconds.get<std::int64_t>()));
    } else if (what == "reset") {
        requireMembers(instruction, {});
        state.scripts.clear();
        state.world = state.initial;
    } else {
        require(false,
                "\"simulate\" must be \"return\", \"throw\", \"lie\", \"plug\", \"unplug\", \"advance\" or \"reset\"");
    }
}

Json openHandles() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.handles.count();
}

void releaseHandles() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    state.handles.releaseAll();
}

Json takeHandleFaults() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.handles.takeFaults();
}

Json lockedMonitors() {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    auto addresses = Json::array();
    for (const auto monitor : state.world.enumerate())
        if (monitor->locked) addresses.push_back(monitor->address());
    return addresses;
}

}  // namespace simulator
