#include "simulator/core/Gate.h"

#include <chrono>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

#include "simulator/core/Recorder.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/State.h"

namespace simulator {

namespace {

GateObserver observer;
std::function<Departure(std::string_view function)> departures;

void writeOutputs(std::initializer_list<Output> outputs, const Json& values) {
    if (values.size() > outputs.size()) throw std::invalid_argument("more outputs than the function has");
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!outputs.begin()[i].write(values[i]))
            throw std::invalid_argument("output " + std::to_string(i + 1) + " does not suit the function");
}

/// The journal's line about a call, written when the call ends, however it does.
class JournalEntry {
 public:
    JournalEntry(bool kept, const char* function, const Json& arguments)
        : recording_(kept ? currentRecording() : nullptr),
          entry_({{"function", function}, {"arguments", arguments}, {"result", nullptr}}) {}
    ~JournalEntry() {
        if (!recording_) return;
        recording_->calls.push_back(std::move(entry_));
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begun_;
        recording_->milliseconds.push_back(time.count());
    }
    JournalEntry(const JournalEntry&) = delete;
    JournalEntry& operator=(const JournalEntry&) = delete;

    Result end(Result result) {
        entry_["result"] = result.code;
        return result;
    }
    Result end(Result result, const char* error) {
        entry_["error"] = error;
        return end(result);
    }

 private:
    Recording* const recording_;
    const std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    Json entry_;
};

}  // namespace

void setGateObserver(GateObserver newObserver) {
    observer = newObserver;
}

void setDepartures(std::function<Departure(std::string_view function)> newDepartures) {
    departures = std::move(newDepartures);
}

ObservedScope::ObservedScope() {
    if (observer.enter) observer.enter();
}

ObservedScope::~ObservedScope() {
    if (observer.leave) observer.leave();
}

ScopedUnlock::ScopedUnlock() {
    State::instance().mutex.unlock();
    if (observer.leave) observer.leave();
}

ScopedUnlock::~ScopedUnlock() {
    if (observer.enter) observer.enter();
    State::instance().mutex.lock();
}

// ---- Calls ----------------------------------------------------------------------------------------------------------

Call::Call(const char* function, std::initializer_list<Input> arguments, Journal journal) noexcept
    : function_(function), journal_(journal), arguments_(std::make_unique<Json>(Json::array())) {
    for (const auto& argument : arguments) addArgument(argument);
}

Call::~Call() = default;

void Call::addArgument(const Input& argument) noexcept {
    arguments_->push_back(argument.json());
}

Result Call::pass(const Needs& needs, const Work& work, std::initializer_list<Output> outputs) {
    if (observer.call) observer.call(function_);
    JournalEntry entry(journal_ == Journal::keep, function_, *arguments_);
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);

    auto script = state.scripts.take(function_, serial_, product_);
    const Departure departure = script ? *std::move(script) : departures ? departures(function_) : Departure{};
    if (departure.unplugs) state.world.unplug(serial_, product_);
    try {
        Answer answer;
        if (departure.works) answer = perform(needs, work, state.world);
        if (departure.result) answer.result = {*departure.result};
        if (departure.outputs) answer.outputs = departure.outputs;
        if (answer.outputs) writeOutputs(outputs, *answer.outputs);
        for (const Output& output : outputs) {
            if (departure.lie && !answer.result.failed()) output.distort(*departure.lie);
            if (!departure.bytes.empty()) output.overwrite(departure.bytes);
            if (departure.count) output.overwriteCount(*departure.count);
        }
        if (!departure.throws) return entry.end(answer.result);
    } catch (const std::exception& error) {
        return entry.end({result::failed}, error.what());
    }
    throw std::runtime_error(std::string(function_) + " throws");
}

Answer Call::perform(const Needs& needs, const Work& work, World& world) const {
    if (!work.isAboutMonitor()) return work(world);
    auto monitor = world.findMonitor(serial_, product_);
    if (monitor && monitor->callTime > Milliseconds::zero()) {
        const auto time = monitor->callTime;
        {
            const ScopedUnlock unlock;
            sleepFor(time);
        }
        monitor = world.findMonitor(serial_, product_);
    }
    if (monitor && ++monitor->calls == monitor->unplugAtCall) {
        world.disconnect(*monitor);
        monitor = nullptr;
    }
    if (!monitor) return needs.withoutMonitor;
    if (needs.feature && !monitor->supports(needs.feature)) return needs.withoutFeature;
    const bool isAboutPower = needs.feature && std::string_view(needs.feature) == "power";
    if (monitor->isAsleep() && !isAboutPower) return result::timedOut;
    const auto kept = monitor->ignoresWrites ? std::optional(monitor->settings) : std::nullopt;
    auto answer = work(*monitor);
    if (kept) monitor->settings = *kept;
    if (monitor->hasLeft()) world.disconnect(*monitor);
    return answer;
}

bool LibraryCall::succeeds(std::initializer_list<Output> outputs) {
    return run([](World&) -> Answer { return 1; }, outputs).code != 0;
}

const char* LibraryCall::text(std::string normal) {
    if (!succeeds({Output(&normal)})) return nullptr;
    auto& state = State::instance();
    const std::lock_guard lock(state.mutex);
    return state.texts.insert(std::move(normal)).first->c_str();
}

// ---- Calls about a monitor ------------------------------------------------------------------------------------------

MonitorCall::MonitorCall(const char* function, const char* serial, const char* product,
                         std::initializer_list<Input> inputs) noexcept
    : Call(function, {serial, product}) {
    serial_ = serial ? serial : "";
    product_ = product ? product : "";
    for (const auto& input : inputs) addArgument(input);
}

Result MonitorCall::get(const char* setting, const Output& value, Key key) {
    return run(setting, [&](Monitor& monitor) { return monitor.settings.read(setting, key); }, {value});
}

Result MonitorCall::set(const char* setting, const Input& value, Key key) {
    return run(setting, [&](Monitor& monitor) { return monitor.settings.write(setting, value, key); });
}

Result MonitorCall::members(const char* setting, std::initializer_list<const char*> names,
                            std::initializer_list<Output> outputs) {
    return run(
        setting, [&](Monitor& monitor) { return monitor.settings.members(setting, names); }, outputs);
}

Result MonitorCall::count(const char* setting, const char* member, const Output& count) {
    return run(setting, [&](Monitor& monitor) { return monitor.settings.count(setting, member); }, {count});
}

Result MonitorCall::getPercentage(const char* setting, double* percentage) {
    return run(setting, [&](Monitor& monitor) { return monitor.settings.readPercentage(setting); }, {percentage});
}

Result MonitorCall::setPercentage(const char* setting, double percentage) {
    return run(setting, [&](Monitor& monitor) { return monitor.settings.writePercentage(setting, percentage); });
}

Result MonitorCall::succeed(const char* feature) {
    return run(feature, [](Monitor&) -> Answer { return result::success; });
}

}  // namespace simulator
