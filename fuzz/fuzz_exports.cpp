// Whole requests to the plug-in, among companions that depart from their work as the input says. Whatever they do, each
// request is answered once, in JSON that the log agrees with; locks, critical sections and handles are given back; and
// calls and memory stay within bounds.
//
// An input is requests, lines of any bytes, six for each:
//   ............      what the companions do meanwhile: records of twelve bytes, see Record
//   Brightness        the export; any other text stands for one of them
//   PUT               the method, or the whole options
//   0                 the number of a simulated monitor, or the whole parameters
//   {"range":true}    the query
//   60                the body
// In the texts, $package is the path of a firmware package, and $id the identifier of the file that was opened last.
#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Finding.h"
#include "host/Session.h"
#include "simulator/core/World.h"
#include "tests/Judgement.h"
#include "tests/PackageFile.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maximum);

namespace {

using simulator::Json;

// ---- Budgets --------------------------------------------------------------------------------------------------------

/// A monitor is looked up among at most 1024, and a list whose items take calls ends at 1024 of them; a few lists and
/// calls for each item come together in one request.
constexpr std::size_t mostCalls = 16 * 1024;
/// A list of 65536 records as JSON values and as text.
constexpr std::size_t mostMemory = std::size_t{256} << 20;

/// What the plug-in itself holds: allocations within the simulator do not count.
struct Usage {
    std::size_t calls = 0;
    std::size_t live = 0;
    std::size_t peak = 0;
};
thread_local Usage usage;
thread_local bool isCounting = false;
thread_local int depth = 0;  // of simulated functions

void onAllocation(const volatile void*, std::size_t size) {
    if (!isCounting || depth != 0) return;
    usage.live += size;
    usage.peak = std::max(usage.peak, usage.live);
}

void onRelease(const volatile void* memory) {
    if (!isCounting || depth != 0 || !memory) return;
    usage.live -= std::min(usage.live, __sanitizer_get_allocated_size(const_cast<const void*>(memory)));
}

// ---- Companions that depart from their work -------------------------------------------------------------------------

bool isHostFunction(std::string_view function) {
    return function.starts_with("BridgeHelper") || function.starts_with("scrivo") || function.starts_with("Plg");
}

/// Such functions do their work, whatever else they do: otherwise the plug-in could not give anything back.
bool givesBack(std::string_view function) {
    const auto has = [&](const char* part) { return function.find(part) != std::string_view::npos; };
    return has("Unlock") || has("Exit") || has("Release");
}

constexpr std::array<std::uint32_t, 12> results{0,          1,          2,          3,          0x7FFFFFFF, 0x80000000,
                                                0x80000006, 0x80000007, 0x8000000B, 0x80010001, 0x8001000A, 0xFFFFFFFF};

/// Beyond the bounds of lists whose items take calls. Longer lists are left to the tests: they take seconds here.
constexpr std::array<std::uint32_t, 8> counts{0, 1, 2, 17, 256, 1025, 5000, 65536};

/// One record: after so many calls that go as usual, the next one departs. Its bytes are that number, the kinds, the
/// result, the count (of five bits) with the number of bytes to write (of three), and these bytes.
struct Record {
    static constexpr std::size_t size = 12;
    enum Kind : std::uint8_t {
        Throws = 1,
        Returns = 2,
        Writes = 4,
        Unplugs = 8,
        FromNowOn = 16,  ///< that function, at every further call
        Counts = 32,
        Everywhere = 64  ///< every function
    };

    explicit Record(std::string_view record) : skipped(byte(record, 0)), kind(byte(record, 1)) {
        const auto bytes = record.substr(4, 1 + byte(record, 3) % 8);
        if (kind & Writes) departure.bytes.assign(bytes.begin(), bytes.end());
        departure.throws = (kind & Throws) != 0;
        departure.unplugs = (kind & Unplugs) != 0;
        if (kind & Returns) departure.result = results[byte(record, 2) % results.size()];
        if (kind & Counts) departure.count = counts[byte(record, 3) / 8 % counts.size()];
    }

    static std::uint8_t byte(std::string_view record, std::size_t index) {
        return static_cast<std::uint8_t>(record[index]);
    }

    std::uint8_t skipped;
    std::uint8_t kind;
    simulator::Departure departure;
};

class Departures {
 public:
    explicit Departures(std::string_view records) : records_(records) {}

    simulator::Departure operator()(std::string_view function) {
        if (isHostFunction(function)) return {};
        for (const auto& [name, departure] : lasting_)
            if (name.empty() || name == function) return of(function, departure);
        if (records_.size() < Record::size) return {};
        Record next(records_.substr(0, Record::size));
        if (skipped_++ < next.skipped) return {};
        records_.remove_prefix(Record::size);
        skipped_ = 0;
        if (next.kind & (Record::FromNowOn | Record::Everywhere))
            lasting_.emplace_back(next.kind & Record::Everywhere ? "" : function, next.departure);
        return of(function, std::move(next.departure));
    }

 private:
    static simulator::Departure of(std::string_view function, simulator::Departure departure) {
        const bool fails = departure.throws || (departure.result.value_or(0) & 0x80000000U) != 0;
        departure.works = givesBack(function) || !fails;
        return departure;
    }

    std::string_view records_;
    std::size_t skipped_ = 0;
    std::vector<std::pair<std::string, simulator::Departure>> lasting_;
};

// ---- Requests -------------------------------------------------------------------------------------------------------

class Fuzzer {
 public:
    static Fuzzer& instance() {
        static auto& fuzzer = *new Fuzzer;
        return fuzzer;
    }

    void run(std::string_view input) {
        if (changed_) simulator::simulate({{"simulate", "reset"}});
        changed_ = false;
        for (int count = 0; count < 8 && !input.empty(); ++count) {
            const auto departures = takeLine(input);
            simulator::setDepartures(Departures(departures));
            const auto name = takeLine(input);
            const auto method = takeLine(input);
            const auto parameters = takeLine(input);
            const auto query = takeLine(input);
            const auto body = takeLine(input);
            changed_ |= method != "GET" || !departures.empty();
            request(exportFor(name), optionsFor(method), {parametersFor(parameters), expand(query), expand(body)});
        }
        closeFiles();
    }

 private:
    Fuzzer() {
        for (const auto name : host::exportNames)
            if (name != "Setup") exports_.push_back(name);  // which is no request

        // Transfers without waiting.
        Json scenario = simulator::World::builtInScenario();
        scenario["firmware"]["blockMilliseconds"] = 0;
        simulator::loadScenario(scenario);
        for (const Json& monitor : scenario.at("monitors"))
            monitors_.push_back({{"product", monitor.at("product")}, {"serial", monitor.at("serial")}});

        simulator::setGateObserver(
            {.enter = [] { ++depth; }, .leave = [] { --depth; }, .call = [](const char*) { ++usage.calls; }});
        __sanitizer_install_malloc_and_free_hooks(onAllocation, onRelease);
        session_.call("Monitors", {"", "", "", ""});  // the libraries are loaded, the logger is found
    }

    static std::string_view takeLine(std::string_view& input) {
        const auto end = std::min(input.find('\n'), input.size());
        const auto line = input.substr(0, end);
        input.remove_prefix(std::min(end + 1, input.size()));
        return line;
    }

    std::string exportFor(std::string_view name) const {
        if (std::find(exports_.begin(), exports_.end(), name) != exports_.end()) return std::string(name);
        return std::string(exports_[std::hash<std::string_view>()(name) % exports_.size()]);
    }

    std::string optionsFor(std::string_view method) const {
        if (std::all_of(method.begin(), method.end(), [](char letter) { return letter >= 'A' && letter <= 'Z'; }))
            return R"({"method":")" + std::string(method) + R"("})";
        return expand(method);
    }

    std::string parametersFor(std::string_view line) const {
        if (line.size() == 1 && line.front() >= '0' && line.front() <= '9')
            return monitors_[static_cast<std::size_t>(line.front() - '0') % monitors_.size()].dump();
        return expand(line);
    }

    std::string expand(std::string_view line) const {
        std::string text(line);
        const auto replace = [&](std::string_view what, const std::string& by) {
            for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
                text.replace(at, what.size(), by);
        };
        static const tests::PackageFile package("TQ271-P", 1500);
        replace("$package", package.path());
        replace("$id", files_.empty() ? "" : files_.back());
        return text;
    }

    void request(const std::string& name, const std::string& options, const std::array<std::string, 3>& others) {
        usage = {};
        isCounting = true;
        const auto exchange = session_.call(name, {options, others[0], others[1], others[2]});
        isCounting = false;
        checkBudget(name);
        checkAnswer(name, exchange);
        checkGivenBack(name);
    }

    static void checkBudget(const std::string& name) {
        require(depth == 0, "a simulated function has not returned:", name);
        require(usage.calls <= mostCalls, "too many calls of companions:", name);
        require(usage.peak <= mostMemory, "too much memory:", name);
    }

    void checkAnswer(const std::string& name, const Json& exchange) {
        const auto judged = tests::judge(exchange.at("returned"), exchange.at("responses"), exchange.at("log"));
        for (const std::string& problem : judged.problems) reportFinding(name.c_str(), problem);
        require(!judged.log.empty(), "not logged:", judged.text);
        if (judged.status == 200) followFiles(judged.log, judged.value);
    }

    /// Which packages are open now.
    void followFiles(std::string_view line, const Json& value) {
        constexpr std::string_view place = "\turi:/pell/FileSystem/DfwFile";
        if (line.find(place) == std::string_view::npos) return;
        if (line.find("\tmethod:POST") != std::string_view::npos) files_.push_back(value.at("id").get<std::string>());
        if (line.find("\tmethod:DELETE") == std::string_view::npos) return;
        const auto begin = line.rfind('/') + 1;
        std::erase(files_, line.substr(begin, line.find('\t', begin) - begin));
    }

    void checkGivenBack(const std::string& name) const {
        require(simulator::lockedMonitors().empty(), "a monitor is left locked:", name);
        require(simulator::monitorsInCriticalSection().empty(), "a critical section is left entered:", name);
        require(simulator::takeHandleFaults().empty(), "handles are misused:", name);
        auto expected = Json::object();
        if (!files_.empty()) expected["package"] = files_.size();
        require(simulator::openHandles() == expected, "handles are left open, or closed too early:", name);
    }

    void closeFiles() {
        simulator::setDepartures(nullptr);
        while (!files_.empty()) {
            const auto count = files_.size();
            request("FileSystemDfwFile", optionsFor("DELETE"), {Json{{"id", files_.back()}}.dump(), "", ""});
            require(files_.size() < count, "a file is not closed");
        }
    }

    host::Session session_;
    std::vector<std::string_view> exports_;
    std::vector<Json> monitors_;
    std::vector<std::string> files_;  ///< identifiers of the open ones
    bool changed_ = false;            ///< the simulated world, perhaps
};

// ---- Mutations ------------------------------------------------------------------------------------------------------

/// A new record of what companions do: mostly one thing, at one of the first calls.
std::string randomDeparture(std::minstd_rand& random) {
    std::string record;
    for (std::size_t i = 0; i < Record::size; ++i) record += static_cast<char>(random() >> 8);
    record[0] = static_cast<char>(random() % 10);
    unsigned kinds = 1U << random() % 4;
    if (random() % 4 == 0) kinds |= 1U << random() % 4;
    if (random() % 4 == 0) kinds |= Record::Counts;
    if (random() % 4 == 0) kinds |= random() % 2 ? Record::FromNowOn : Record::Everywhere;
    record[1] = static_cast<char>(kinds);
    std::replace(record.begin(), record.end(), '\n', '\0');
    return record;
}

/// A line is mutated alone, so that the others still say what they did.
std::string mutateLine(std::string line, std::size_t maximum) {
    const auto size = line.size();
    line.resize(maximum + 1);
    line.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(line.data()), size, maximum));
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    Fuzzer::instance();
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maximum,
                                               unsigned seed) {
    std::minstd_rand random(seed);
    const auto choice = random() % 8;
    if (choice == 0) return LLVMFuzzerMutate(data, size, maximum);
    std::string text(reinterpret_cast<const char*>(data), size);
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    auto number = random() % count;
    if (choice < 4) number -= number % 6;  // what the companions do
    std::size_t begin = 0;
    for (; number > 0; --number) begin = text.find('\n', begin) + 1;
    const auto length = std::min(text.find('\n', begin), size) - begin;
    if (choice < 3)
        text.replace(begin, random() % 2 * length, randomDeparture(random));
    else
        text.replace(begin, length, mutateLine(text.substr(begin, length), length + maximum - size));
    size = std::min(text.size(), maximum);
    std::copy_n(text.begin(), size, data);
    return size;
}

/// The requests of one input after those of another.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data, std::size_t size, const std::uint8_t* other,
                                                 std::size_t otherSize, std::uint8_t* output, std::size_t maximum,
                                                 unsigned) {
    std::string text(reinterpret_cast<const char*>(data), size);
    if (!text.ends_with('\n')) text += '\n';
    text.append(reinterpret_cast<const char*>(other), otherSize);
    size = std::min(text.size(), maximum);
    std::copy_n(text.begin(), size, output);
    return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzzer::instance().run({reinterpret_cast<const char*>(data), size});
    return 0;
}
