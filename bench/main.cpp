#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "Corpora.h"
#include "Report.h"
#include "json/JsonBenchmarks.h"
#include "request/RequestBenchmarks.h"

namespace {

// Defaults of Google Benchmark's own options. With the repetitions of all benchmarks in random order, what else the
// machine does strikes all of them alike; with many short ones, the medians hold on a machine that is slow at times.
constexpr const char* kDefaults[] = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=101",
                                     "--benchmark_min_time=0.002"};

void passToBenchmark(const char* program, const std::vector<std::string>& options) {
    std::vector<std::string> texts{program};
    texts.insert(texts.end(), std::begin(kDefaults), std::end(kDefaults));
    texts.insert(texts.end(), options.begin(), options.end());
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (auto& text : texts) arguments.push_back(text.data());
    arguments.push_back(nullptr);
    int count = static_cast<int>(texts.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) throw std::runtime_error("wrong usage");
}

int run(int argc, char** argv) {
    CLI::App app("Measures libpell beside its peers. Takes the options of Google Benchmark as well.");
    app.allow_extras();
    std::vector<std::string> files;
    app.add_option("--corpus", files, "one more JSON text to measure with")
        ->check(CLI::ExistingFile)
        ->type_name("FILE")
        ->expected(1)
        ->take_all();
    CLI11_PARSE(app, argc, argv);
    passToBenchmark(argv[0], app.remaining());

    auto corpora = bench::builtInCorpora();
    for (const auto& file : files) corpora.push_back(bench::corpusOfFile(file));
    auto targets = bench::registerJsonBenchmarks(corpora);
    const auto more = bench::registerRequestBenchmarks();
    targets.insert(targets.end(), more.begin(), more.end());
    bench::Report report(std::move(targets));
    benchmark::RunSpecifiedBenchmarks(&report);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
