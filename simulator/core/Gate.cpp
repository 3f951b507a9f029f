#include "simulator/core/Gate.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <stdexcept>

#include "simulator/core/Simulator.h"
#include "simulator/core/State.h"

namespace simulator {

namespace {

GateObserver observer;

void fillOutputs(std::initializer_list<Output> outputs, const Json& values) {
    if (values.size() > outputs.size()) throw std::invalid_argument("more outputs than the function has");
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!outputs.begin()[i].fill(values[i]))
            throw std::invalid_argument("output " + std::to_string(i + 1) + " does not suit the function");
}

bool contains(const Json& list, const Json& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

/// Of a list or a record: each of its numbers. Compares as doubles, which hold every 32-bit number.
bool within(const Json& minimum, const Json& maximum, const Json& value) {
    if (!value.is_structured())
        return value.is_number() && value.get<double>() >= minimum.get<double>() &&
               value.get<double>() <= maximum.get<double>();
    const auto limit = [](const Json& limits, const std::string& name) {
        return limits.is_object() ? limits.at(name) : limits;
    };
    const auto items = value.items();
    return std::all_of(items.begin(), items.end(), [&](const auto& item) {
        return within(limit(minimum, item.key()), limit(maximum, item.key()), item.value());
    });
}

}  // namespace

void setGateObserver(GateObserver newObserver) {
    observer = newObserver;
}

Json* part(Json& setting, const Json& key) {
    auto& value = setting["value"];
    if (key.is_null()) return &value;
    if (value.is_array()) return key.is_number() && key < value.size() ? &value[key.get<std::size_t>()] : nullptr;
    const auto found = value.find(key.is_number() ? key.dump() : key.get<std::string>());
    return found == value.end() ? nullptr : &*found;
}

Answer readSetting(Json& setting, const Json& key) {
    const auto kept = part(setting, key);
    return kept ? answer(*kept) : Answer{result::invalidArgument};
}

Answer writeSetting(Json& setting, const Json& key, const Json& value) {
    const auto kept = part(setting, key);
    if (!kept || value.is_null()) return {result::invalidArgument};
    if (setting.contains("of") && !contains(setting.at("of"), value)) return {result::invalidArgument};
    if (setting.contains("size") && value.get_ref<const std::string&>().size() >= setting.at("size"))
        return {result::invalidBufferSize};
    if (value.is_array() && value.size() != kept->size()) return {result::invalidDataSize};
    if (setting.contains("min") && !within(setting.at("min"), setting.at("max"), value)) return {result::outOfRange};
    *kept = value;
    return {};
}

Presence::Presence() {
    if (observer.enter) observer.enter();
}

Presence::~Presence() {
    if (observer.leave) observer.leave();
}

Intermission::Intermission() {
    State::instance().mutex.unlock();
    if (observer.leave) observer.leave();
}

Intermission::~Intermission() {
    if (observer.enter) observer.enter();
    State::instance().mutex.lock();
}

Call::Call(const char* function, bool journalled) : function_(function), journalled_(journalled) {}

Answer Call::perform(const Work& work, std::initializer_list<Output> outputs, Json& entry) {
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    const auto script = state.scripts.take(function_, product_, serial_);
    if (script && script->throws) throw std::runtime_error(std::string(function_) + " throws by script");

    Answer answer;
    try {
        if (!script || (!script->outputs && !script->failing())) answer = work(state.world);
        if (script) {
            answer.result = script->result;
            if (script->outputs) answer.outputs = *script->outputs;
        }
        fillOutputs(outputs, answer.outputs);
    } catch (const std::exception& error) {
        answer.result = result::failed;
        entry["error"] = error.what();
    }
    return answer;
}

std::uint32_t Call::pass(const Work& work, std::initializer_list<Output> outputs) {
    Json entry = {{"function", function_}, {"arguments", arguments_}, {"result", nullptr}};
    const auto journal = [&] {
        if (const auto recording = Recording::current(); recording && journalled_)
            recording->calls.push_back(std::move(entry));
    };
    try {
        const auto answer = perform(work, outputs, entry);
        entry["result"] = answer.result;
        journal();
        return answer.result;
    } catch (...) {
        journal();
        throw;
    }
}

void LibraryCall::tell(const std::function<void()>& work) {
    pass(
        [&](World&) {
            work();
            return Answer();
        },
        {});
}

const char* LibraryCall::text(std::string normal) {
    const auto work = [&](World&) { return Answer{1}; };
    if (pass(work, {&normal}) == 0) return nullptr;
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.texts.insert(std::move(normal)).first->c_str();
}

void MonitorCall::address(const char* serial, const char* product) {
    arguments_ = Json::array({toJson(serial), toJson(product)});
    serial_ = serial ? serial : "";
    product_ = product ? product : "";
}

DmResult MonitorCall::run(const MonitorWork& work, std::initializer_list<Output> outputs) {
    return static_cast<DmResult>(pass(
        [&](World& world) {
            const auto monitor = world.findMonitor(product_, serial_);
            return monitor ? work(*monitor) : Answer{result::connectionError};
        },
        outputs));
}

DmResult MonitorCall::run(const char* feature, const MonitorWork& work, std::initializer_list<Output> outputs) {
    return run(
        [&](Monitor& monitor) { return monitor.supports(feature) ? work(monitor) : Answer{result::unsupported}; },
        outputs);
}

std::int32_t MonitorCall::supports(const char* feature, const std::function<bool(Monitor&)>& condition) {
    return static_cast<std::int32_t>(pass(
        [&](World& world) {
            const auto monitor = world.findMonitor(product_, serial_);
            return Answer{monitor && monitor->supports(feature) && (!condition || condition(*monitor)) ? 1u : 0u};
        },
        {}));
}

DmResult MonitorCall::get(const char* setting, Output value, const Json& key) {
    return run(setting, [&](Monitor& monitor) { return readSetting(monitor.setting(setting), key); }, {value});
}

DmResult MonitorCall::set(const char* setting, const Json& key) {
    return run(setting,
               [&](Monitor& monitor) { return writeSetting(monitor.setting(setting), key, arguments_.back()); });
}

DmResult MonitorCall::members(const char* setting, std::initializer_list<const char*> names,
                              std::initializer_list<Output> outputs) {
    return run(
        setting,
        [&](Monitor& monitor) {
            Answer answer;
            for (const auto name : names) answer.outputs.push_back(monitor.setting(setting).at(name));
            return answer;
        },
        outputs);
}

DmResult MonitorCall::count(const char* setting, const char* member, Output count) {
    return run(setting, [&](Monitor& monitor) { return answer(monitor.setting(setting).at(member).size()); }, {count});
}

DmResult MonitorCall::getPercentage(const char* setting, Output percentage) {
    return run(setting,
               [&](Monitor& monitor) {
                   const auto& kept = monitor.setting(setting);
                   const auto minimum = kept.at("min").get<double>();
                   const auto span = kept.at("max").get<double>() - minimum;
                   return answer(100.0 * (kept.at("value").get<double>() - minimum) / span);
               },
               {percentage});
}

DmResult MonitorCall::setPercentage(const char* setting) {
    return run(setting, [&](Monitor& monitor) {
        if (!within(0, 100, arguments_.back())) return Answer{result::outOfRange};
        auto& kept = monitor.setting(setting);
        const auto minimum = kept.at("min").get<double>();
        const auto span = kept.at("max").get<double>() - minimum;
        kept["value"] = std::llround(minimum + arguments_.back().get<double>() / 100.0 * span);
        return Answer();
    });
}

}  // namespace simulator
