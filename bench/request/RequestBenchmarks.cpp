#include "request/RequestBenchmarks.h"

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <libscrivo2.h>

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Allocations.h"
#include "World.h"
#include "request/Requests.h"

namespace bench {

namespace {

/// A shared library of the request folder, loaded for the life of the process.
class Library {
 public:
    explicit Library(const char* file) {
        const std::string path = std::string(PELL_REQUEST_FOLDER "/") + file;
        module_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!module_) throw std::runtime_error(dlerror());
    }

    /// Null when there is none of this name.
    template <class Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(dlsym(module_, name));
    }

 private:
    void* module_;
};

struct Column {
    const char* name;
    Library plugin;
};

/// Everything that a request does to the world, in the order in which it happens.
class Recorder final : public Observer {
 public:
    static nlohmann::json of(const Request& request, Request::Entry& entry) {
        Recorder recorder;
        world().monitors = request.monitors;
        world().observer = &recorder;
        request.call(entry);
        world().observer = nullptr;
        return std::move(recorder.events_);
    }

 private:
    void answered(std::uint32_t status, const char* json) override {
        events_.push_back({{"status", status}, {"answer", nlohmann::json::parse(json)}});
    }
    void logged(std::uint32_t level, const char* line) override {
        events_.push_back({{"level", level}, {"line", line}});
    }
    void written(const void* data, std::size_t size) override {
        const auto* const bytes = static_cast<const std::uint8_t*>(data);
        events_.push_back({{"written", nlohmann::json::binary({bytes, bytes + size})}});
    }

    nlohmann::json events_ = nlohmann::json::array();
};

void measure(benchmark::State& state, const Request& request, Request::Entry& entry) {
    world().monitors = request.monitors;
    request.call(entry);  // what is made once is not counted
    const Allocations allocations = allocationsOf([&] { request.call(entry); });
    for (auto iteration : state) request.call(entry);
    state.counters["allocations"] = static_cast<double>(allocations.count);
    state.counters["bytes"] = static_cast<double>(allocations.bytes);
}

void registerRequests() {
    static const std::vector<Column> columns{{kOurs, Library("libpell.so")},
                                             {"nlohmann", Library("peer_nlohmann.so")},
                                             {"RapidJSON", Library("peer_rapidjson.so")},
                                             {"Boost.JSON", Library("peer_boost.so")}};
    static const std::vector<Request> rows = requests();
    for (const Request& request : rows) {
        std::vector<Request::Entry*> entries;
        for (const Column& column : columns) {
            auto* const entry = column.plugin.find<Request::Entry>(request.entry);
            if (!entry) throw std::runtime_error(std::string(column.name) + " does not export " + request.entry);
            entries.push_back(entry);
        }
        const nlohmann::json expected = Recorder::of(request, *entries[0]);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const nlohmann::json events = Recorder::of(request, *entries[i]);
            if (events != expected)
                throw std::runtime_error(request.name + ": " + columns[i].name + " does otherwise than libpell: " +
                                         nlohmann::json::diff(expected, events).dump());
            benchmark::RegisterBenchmark(("request|" + request.name + "|" + columns[i].name).c_str(), measure, request,
                                         *entries[i]);
        }
    }
}

/// What a request cannot do without, whoever writes it.
void registerRequiredCosts() {
    static const Library logging("libscrivo2_x64.so");
    static const Library monitorControl("libdmc_x64.so");
    benchmark::RegisterBenchmark(
        "request, required costs|look-up of a function by name|libpell", [](benchmark::State& state) {
            for (auto iteration : state)
                benchmark::DoNotOptimize(monitorControl.find<void>("DmCtrlGetSelfQCCalTarget"));
        });
    benchmark::RegisterBenchmark(
        "request, required costs|look-up and call of scrivo_log|libpell", [](benchmark::State& state) {
            ScrivoLogger* const logger = logging.find<decltype(scrivo_get_logger)>("scrivo_get_logger")();
            for (auto iteration : state) logging.find<decltype(scrivo_log)>("scrivo_log")(logger, "Pell", 2, "line");
        });
}

}  // namespace

std::vector<Target> registerRequestBenchmarks() {
    registerRequests();
    registerRequiredCosts();
    return {{"request", "*", "nlohmann", 2.5},
            {"request", "*", "RapidJSON", 1},
            {"request", "*", "Boost.JSON", 1},
            {"request", "Brightness GET", kOurs, 25}};
}

}  // namespace bench
