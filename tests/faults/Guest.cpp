#include "tests/faults/Guest.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "host/Platform.h"
#include "simulator/core/FirmwarePackage.h"

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
        std::puts("runaway");  // and the journal grows with each call
        std::fflush(stdout);
        std::_Exit(4);
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

void judgeAnswer(Outcome& outcome, std::uint32_t promise, const Json& responses) {
    outcome.isLost = responses.size() != 1;
    outcome.require(!outcome.isLost, "is answered " + std::to_string(responses.size()) + " times");
    if (outcome.isLost) return;
    outcome.require(responses[0]["promise"] == promise, "answers another promise");
    outcome.status = responses[0]["status"];
    outcome.text = responses[0]["text"].is_string() ? responses[0]["text"].get<std::string>() : "";
    // Texts of companions are passed on as they are, whatever their encoding.
    std::string ascii = outcome.text;
    for (char& byte : ascii)
        if (static_cast<unsigned char>(byte) >= 0x80) byte = '?';
    const Json answer = Json::parse(ascii, nullptr, false);
    const bool isEnvelope =
        answer.is_object() && answer.size() == 2 && answer.contains("error") && answer.contains("value");
    outcome.require(isEnvelope, "answers " + outcome.text.substr(0, 200));
    if (!isEnvelope) return;
    outcome.error = answer["error"], outcome.value = answer["value"];
    const bool isError = outcome.error.is_object() && outcome.error.value("name", Json()).is_string() &&
                         outcome.error.value("message", Json()).is_string() && outcome.value.is_null();
    outcome.require(outcome.status == 200 ? outcome.error.is_null() : isError,
                    "answers " + outcome.text.substr(0, 200));
}

void judgeLog(Outcome& outcome, const Json& log) {
    outcome.isLogged = log.size() == 1;
    outcome.require(log.size() <= 1, "is logged " + std::to_string(log.size()) + " times");
    if (!outcome.isLogged || outcome.isLost) return;
    const std::string line = log[0]["line"];
    const std::string end =
        outcome.error.is_object() ? "\terr:" + outcome.error.value("name", "") + "\tmsg:" : "\tmsg:Success";
    const bool agrees =
        line.starts_with("statusCode:" + std::to_string(outcome.status) + "\t") && line.find(end) != std::string::npos;
    outcome.require(agrees, "answers " + outcome.text.substr(0, 200) + " and logs " + line.substr(0, 300));
}

}  // namespace

Request parseRequest(const std::string& resource, const std::string& line, const char* ofProduct) {
    std::string rest = line;
    const auto take = [&rest](std::size_t size) {
        const std::string part = rest.substr(0, size);
        rest.erase(0, size == std::string::npos ? size : size + 1);
        return part;
    };
    const auto takeWord = [&] { return take(rest.find(' ')); };
    host::Request request;
    request.resource = resource, request.product = ofProduct, request.serial = serial;
    request.method = takeWord();
    if (!rest.empty() && std::isupper(static_cast<unsigned char>(rest[0]))) request.resource = takeWord();
    if (rest.starts_with('/')) request.id = takeWord().substr(1);
    if (rest.starts_with('?')) {
        // The query ends where its text is an object.
        std::size_t end = rest.find('}');
        while (end != std::string::npos && !Json::accept(rest.substr(1, end))) end = rest.find('}', end + 1);
        request.query = take(end == std::string::npos ? end : end + 1).substr(1);
    }
    request.body = rest;
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
    Outcome outcome;
    Json responses, log;
    std::uint32_t promise = 0;
    const auto& texts = request.texts;
    const auto run = [&] {
        simulator::Recording recording;
        current = {&disturbance};
        vanished = disturbance.vanished.empty() ? nullptr : disturbance.vanished.c_str();
        supply.watch(disturbance.need, disturbance.refused, disturbance.lasting);
        promise = entry(texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), texts[3].c_str());
        const Supply used = std::exchange(supply, {});
        vanished = nullptr;
        current.disturbance = nullptr;
        outcome.refused = used.failed;
        outcome.require(used.bytes <= mostBytes, "asks for " + std::to_string(used.bytes) + " bytes");
        responses = std::move(recording.responses);
        log = std::move(recording.log);
        outcome.calls = std::move(recording.calls);
    };
    if (disturbance.onFreshThread)
        std::thread(run).join();
    else
        run();
    judgeAnswer(outcome, promise, responses);
    judgeLog(outcome, log);
    judgeLocks(outcome, disturbance);
    return outcome;
}

const std::string& packageFile() {
    static const struct File {
        File() {
            simulator::FirmwarePackage package;
            package.product = product;
            package.version = simulator::parseVersion("2.1.0.3.7");
            package.payload.assign(2048, 'f');
            std::ofstream(host::fromUtf8(path), std::ios::binary) << simulator::writePackage(package);
        }
        ~File() {
            std::error_code ignored;
            std::filesystem::remove(host::fromUtf8(path), ignored);
        }
        const std::string path = host::toUtf8(std::filesystem::temp_directory_path() / "pell-faults.dfw");
    } file;
    return file.path;
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
