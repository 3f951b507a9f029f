#include "tests/faults/Guest.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "tests/Example.h"
#include "tests/PackageFile.h"

namespace faults {

namespace {

/// The request that runs, for the simulated functions that it calls.
struct Current {
    const Disturbance* disturbance = nullptr;
    int occurrences = 0;
    std::map<std::string, std::size_t> entered{};  ///< functions, and how often they were called
    std::size_t calls = 0;
} current;

/// Lists whose items cost calls end after 1,024 of them, and none costs as many as 32 calls.
constexpr std::size_t mostCalls = 1024 * 32;

void enter() {
    ++supply.simulated;
}

void leave() {
    --supply.simulated;
}

void call(const char* function) {
    if (!current.disturbance) return;
    ++current.entered[function];
    if (++current.calls > mostCalls) {
        std::puts("too many calls");  // and the journal grows with each
        std::abort();
    }
    if (current.disturbance->action && function == current.disturbance->function &&
        ++current.occurrences == current.disturbance->occurrence)
        current.disturbance->action();
}

std::size_t succeeded(const Outcome& outcome, const char* function) {
    return static_cast<std::size_t>(std::count_if(outcome.calls.begin(), outcome.calls.end(), [&](const Json& call) {
        return call["function"] == function && call["result"].is_number() && call["result"] < 0x80000000U;
    }));
}

/// What was taken is given back, if its function can be found.
void judgeLocks(Outcome& outcome, const Disturbance& disturbance) {
    constexpr const char* pairs[][2] = {{"DmCtrlLockMonitor", "DmCtrlUnlockMonitor"},
                                        {"DmCtrlEnterCriticalSection", "DmCtrlExitCriticalSection"}};
    for (const auto& [take, giveBack] : pairs)
        if (disturbance.vanished != giveBack)
            outcome.require(current.entered[giveBack] >= succeeded(outcome, take), std::string("no ") + giveBack);
    // An exception that the simulator's own compiler does not know leaves the handle of its function in use.
    outcome.require(simulator::takeHandleFaults().empty() || disturbance.isForeign, "misuses a handle");
}

}  // namespace

Request parseRequest(const std::string& resource, const std::string& line, const char* ofProduct) {
    const tests::Example example = tests::parseExample(line, resource);
    const host::Request request{example.method, example.resource, ofProduct, serial,
                                example.query,  example.body,     example.id};
    return {request.resource, request.method, line, request.texts()};
}

Guest::Guest() {
    simulator::setGateObserver({enter, leave, call});
    reload();
}

Guest::~Guest() {
    plugin_.reset();
    simulator::setGateObserver({});
}

void Guest::reload() {
    plugin_.reset();
    plugin_.emplace(host::Plugin::defaultFile());
    standIn();
}

Outcome Guest::ask(const Request& request, const Disturbance& disturbance) {
    const LibpellEntry entry = plugin_->find(request.resource.c_str());
    if (!entry) throw std::invalid_argument("the plug-in has no export " + request.resource);
    const auto& texts = request.texts;
    Outcome outcome;
    const auto run = [&] {
        simulator::Recording recording;
        current = {&disturbance};
        vanished = disturbance.vanished.empty() ? nullptr : disturbance.vanished.c_str();
        supply.watch(disturbance.need, disturbance.refused, disturbance.lasting);
        const auto promise = entry(texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), texts[3].c_str());
        const Supply used = std::exchange(supply, {});
        vanished = nullptr;
        current.disturbance = nullptr;
        outcome = {tests::judge(promise, recording.responses, recording.log), std::move(recording.calls), used.failed};
        outcome.require(used.bytes <= mostBytes, "asks for " + std::to_string(used.bytes) + " bytes");
    };
    if (disturbance.onFreshThread)
        std::thread(run).join();
    else
        run();
    judgeLocks(outcome, disturbance);
    return outcome;
}

std::string packageFile() {
    static const tests::PackageFile file(product, 2048);
    return file.path();
}

std::string substitute(std::string line, const std::map<std::string, std::string>& variables) {
    for (const auto& [name, value] : variables) {
        const std::string text = host::writeJson(value), plain = text.substr(1, text.size() - 2);
        for (std::size_t at; (at = line.find(name)) != std::string::npos;) line.replace(at, name.size(), plain);
    }
    return line;
}

std::size_t openHandles() {
    std::size_t total = 0;
    for (const Json& count : simulator::openHandles()) total += count.get<std::size_t>();
    return total;
}

}  // namespace faults
