#include "json/JsonBenchmarks.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iostream>
#include <stdexcept>

#include "Allocations.h"
#include "json/BoostJson.h"
#include "json/ByteScan.h"
#include "json/CJson.h"
#include "json/Containers.h"
#include "json/Jansson.h"
#include "json/Jsoncpp.h"
#include "json/Library.h"
#include "json/Nlohmann.h"
#include "json/Pocketjson.h"
#include "json/QtJson.h"
#include "json/RapidJson.h"

namespace bench {

namespace {

template <JsonLibrary... Libraries>
struct LibraryList {};

using AllLibraries =
    LibraryList<Pocketjson, Nlohmann, Jsoncpp, Jansson, CJson, QtJson, RapidJson, BoostJson, BoostJsonMonotonic>;

constexpr const char* kParse = "parse";
constexpr const char* kParseAndRelease = "parse and release";
constexpr const char* kWrite = "write";
constexpr const char* kReadByName = "read by name";
constexpr const char* kCopyAndChange = "copy and change";

std::size_t totalSize(const Corpus& corpus) {
    std::size_t size = 0;
    for (const auto& document : corpus.documents) size += document.size();
    return size;
}

template <JsonLibrary Library>
std::vector<typename Library::Document> parsed(const Corpus& corpus) {
    std::vector<typename Library::Document> documents;
    documents.reserve(corpus.documents.size());
    for (const auto& text : corpus.documents) documents.push_back(Library::parse(text));
    return documents;
}

/// The number of scalars and shapes of the second that are not those of the first; numbers compare as doubles.
std::size_t differences(const Nlohmann::Document& expected, const Nlohmann::Document& actual) {
    if (expected.is_number() && actual.is_number()) return expected.get<double>() != actual.get<double>();
    if (expected.type() != actual.type() || expected.size() != actual.size()) return 1;
    std::size_t count = 0;
    if (expected.is_object()) {
        for (const auto& [name, member] : expected.items())
            count += actual.contains(name) ? differences(member, actual[name]) : 1;
    } else if (expected.is_array()) {
        for (std::size_t i = 0; i < expected.size(); ++i) count += differences(expected[i], actual[i]);
    } else {
        count = expected != actual;
    }
    return count;
}

/// Whether the library can take part: it reads the corpus, and what it reads and writes is worth comparing.
template <JsonLibrary Library>
bool check(const Corpus& corpus) {
    std::string fault;
    bool refused = false;
    try {
        std::size_t count = 0;
        double sum = 0, expectedSum = 0;
        for (const auto& text : corpus.documents) {
            const auto expected = Nlohmann::parse(text);
            const auto document = Library::parse(text);
            const auto written = Library::write(document);
            count += differences(expected, Nlohmann::parse(std::string(Library::view(written))));
            sum += Library::readAll(document);
            expectedSum += Nlohmann::readAll(expected);
        }
        if (count > 0) fault = std::to_string(count) + " values are read or written inexactly";
        if (!(std::abs(sum - expectedSum) <= 1e-9 * std::abs(expectedSum))) fault += " (read by name: another sum)";
    } catch (const std::exception& exception) {
        fault = std::string("refused: ") + exception.what();
        refused = true;
    }
    if (fault.empty()) return true;
    fault = std::string(Library::name) + ", " + corpus.name + ": " + fault;
    if (std::same_as<Library, Pocketjson>) throw std::runtime_error(fault);
    std::cerr << fault << '\n';
    return !refused;
}

/// Registers a benchmark each of whose iterations goes over the whole corpus once.
template <class Run>
void registerRun(const char* section, const Corpus& corpus, const char* column, Run run) {
    const auto name = std::string(section) + '|' + corpus.name + '|' + column;
    benchmark::RegisterBenchmark(name.c_str(), [section, &corpus, run](benchmark::State& state) {
        run(state);
        if (section != std::string_view(kReadByName) && section != std::string_view(kCopyAndChange))
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(totalSize(corpus)));
    });
}

/// Repeats a pass, after having counted what one allocates.
template <class Pass>
void repeat(benchmark::State& state, Pass pass) {
    pass();
    const auto allocations = allocationsOf(pass);
    for (auto _ : state) pass();
    state.counters["allocations"] = static_cast<double>(allocations.count);
    state.counters["bytes"] = static_cast<double>(allocations.bytes);
}

// Documents are released while time stands still, but many at once, since stopping the clock costs time as well.
template <JsonLibrary Library>
void parseOnly(benchmark::State& state, const Corpus& corpus) {
    constexpr std::size_t textsPerRelease = std::size_t{16} * 1024;
    const auto passesPerRelease = std::max<std::size_t>(1, textsPerRelease / totalSize(corpus));
    std::vector<typename Library::Document> documents;
    documents.reserve(passesPerRelease * corpus.documents.size());
    for (auto _ : state) {
        for (const auto& text : corpus.documents) documents.push_back(Library::parse(text));
        if (documents.size() == documents.capacity()) {
            state.PauseTiming();
            documents.clear();
            state.ResumeTiming();
        }
    }
}

template <JsonLibrary Library>
void registerLibrary(const Corpus& corpus) {
    if (!check<Library>(corpus)) return;
    registerRun(kParse, corpus, Library::name,
                [&corpus](benchmark::State& state) { parseOnly<Library>(state, corpus); });
    registerRun(kParseAndRelease, corpus, Library::name, [&corpus](benchmark::State& state) {
        repeat(state, [&] {
            for (const auto& text : corpus.documents) benchmark::DoNotOptimize(Library::parse(text));
        });
    });
    const auto onDocuments = [&corpus](const char* section, auto use) {
        registerRun(section, corpus, Library::name, [&corpus, use](benchmark::State& state) {
            const auto documents = parsed<Library>(corpus);
            repeat(state, [&] {
                for (const auto& document : documents) use(document);
            });
        });
    };
    onDocuments(kWrite, [](const auto& document) { benchmark::DoNotOptimize(Library::write(document)); });
    onDocuments(kReadByName, [](const auto& document) { benchmark::DoNotOptimize(Library::readAll(document)); });
    onDocuments(kCopyAndChange, [](const auto& document) { Library::copyAndChange(document); });
}

// What no reader or writer can be faster than; and what it takes to make and release the containers that documents of
// libpell and nlohmann consist of, whoever parses the text.
void registerBounds(const Corpus& corpus) {
    registerRun(kParseAndRelease, corpus, "containers", [&corpus](benchmark::State& state) {
        const auto documents = parsed<Nlohmann>(corpus);
        for (auto _ : state)
            for (const auto& document : documents) benchmark::DoNotOptimize(Tree(document));
    });
    for (const auto* section : {kParseAndRelease, kWrite}) {
        registerRun(section, corpus, "memcpy", [&corpus](benchmark::State& state) {
            std::string copy(totalSize(corpus), '\0');
            for (auto _ : state) {
                for (const auto& text : corpus.documents) std::memcpy(copy.data(), text.data(), text.size());
                benchmark::ClobberMemory();
            }
        });
        registerRun(section, corpus, "byte scan", [&corpus](benchmark::State& state) {
            for (auto _ : state)
                for (const auto& text : corpus.documents) benchmark::DoNotOptimize(countQuotes(text));
        });
    }
}

template <JsonLibrary... Libraries>
void registerCorpus(const Corpus& corpus, LibraryList<Libraries...>) {
    (registerLibrary<Libraries>(corpus), ...);
    registerBounds(corpus);
}

}  // namespace

std::vector<Target> registerJsonBenchmarks(const std::vector<Corpus>& corpora) {
    for (const auto& corpus : corpora) registerCorpus(corpus, AllLibraries{});

    std::vector<Target> targets;
    for (const auto* peer : {"nlohmann", "jsoncpp", "jansson", "cJSON", "Qt"}) {
        targets.push_back({kParseAndRelease, "*", peer, 3});
        targets.push_back({kWrite, "*", peer, 2});
    }
    for (const auto* row : {"requests", "target", "lut3d"}) {
        targets.push_back({kParseAndRelease, row, "Boost.JSON", 1.1});
        targets.push_back({kWrite, row, "Boost.JSON", 1.3});
    }
    targets.push_back({kParseAndRelease, "*", "Boost.JSON", 0.85});
    targets.push_back({kWrite, "*", "Boost.JSON", 1.0});
    targets.push_back({kParseAndRelease, "requests", "RapidJSON", 1.2});
    targets.push_back({kWrite, "requests", "RapidJSON", 1.5});
    return targets;
}

}  // namespace bench
