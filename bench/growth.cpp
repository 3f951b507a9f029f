// How the time of parsing and writing grows with texts that are made to be difficult: doubling a text should double it.
// The mean factor over all doublings is what counts; a single one may be larger where a text outgrows a cache. Prints a
// Markdown table of the best times.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "pocketjson/Parser.h"
#include "pocketjson/Serializer.h"

namespace {

constexpr std::size_t kSmallest = std::size_t{256} * 1024;
constexpr std::size_t kLargest = 16 * kSmallest;

constexpr int kRuns = 20;  // fewer if they take long
constexpr std::chrono::seconds kEnough(3);
constexpr double kUnknown = std::numeric_limits<double>::infinity();

using Milliseconds = std::chrono::duration<double, std::milli>;
using Clock = std::chrono::steady_clock;

std::string repeated(const std::string& unit, std::size_t size) {
    std::string text;
    text.reserve(size + unit.size());
    while (text.size() < size) text += unit;
    return text;
}

std::string deep(std::size_t size) {
    return std::string(size / 2, '[') + std::string(size / 2, ']');
}
std::string wide(std::size_t size) {
    return '[' + repeated("1,", size) + "1]";
}
std::string hugeString(std::size_t size) {
    return '"' + std::string(size, 'a') + '"';
}
std::string allEscapes(std::size_t size) {
    return '"' + repeated(R"(\n\")", size) + '"';
}
std::string surrogatePairs(std::size_t size) {
    return '"' + repeated(R"(\ud83d\ude00)", size) + '"';
}
std::string hugeNumber(std::size_t size) {
    return repeated("1234567890", size);
}
std::string emptyContainers(std::size_t size) {
    return '[' + repeated("[],{},", size) + "[]]";
}
std::string alternatingKinds(std::size_t size) {
    return '[' + repeated(R"(null,1,"a",[2],true,{"b":3},0.5,)", size) + "null]";
}
std::string whitespaceOnly(std::size_t size) {
    return repeated(" \t\r\n", size);
}

/// An object whose names are made of a number that counts down.
template <class Name>
std::string object(std::size_t size, Name name) {
    std::string text = "{";
    for (std::size_t number = 99'999'999; text.size() < size; --number) text += '"' + name(number) + "\":1,";
    text.back() = '}';
    return text;
}
std::string longKeys(std::size_t size) {
    // Alike but for their ends, so that comparing two takes as long as it can.
    return object(size, [](std::size_t number) { return std::string(1000, 'k') + std::to_string(number); });
}
std::string duplicates(std::size_t size) {
    return object(size, [](std::size_t number) { return std::to_string(number % 2); });
}
std::string fallingKeys(std::size_t size) {
    return object(size, [](std::size_t number) { return std::to_string(number); });
}

struct Shape {
    const char* name;
    std::string (*text)(std::size_t size);
};

constexpr Shape kShapes[] = {
    {"deep", deep},
    {"wide", wide},
    {"one huge string", hugeString},
    {"all escapes", allEscapes},
    {"\\u pairs", surrogatePairs},
    {"one huge number", hugeNumber},
    {"long keys", longKeys},
    {"two keys, over and over", duplicates},
    {"keys in falling order", fallingKeys},
    {"empty containers", emptyContainers},
    {"alternating kinds", alternatingKinds},
    {"white space only", whitespaceOnly},
};

template <class Run>
double milliseconds(Run run) {
    const auto start = Clock::now();
    run();
    return Milliseconds(Clock::now() - start).count();
}

double parseTime(const std::string& text) {
    return milliseconds([&] {
        pocketjson::Value value;
        std::string message;
        pocketjson::parse(message, value, text);
    });
}

double writeTime(const pocketjson::Value& value) {
    return milliseconds([&] {
        std::string text;
        pocketjson::write(value, text);
    });
}

/// A text of one size, and the best times of several runs, in milliseconds.
struct Sample {
    explicit Sample(std::string shapedText) : text(std::move(shapedText)) {
        std::string message, written;
        isWritable = pocketjson::parse(message, value, text) && pocketjson::write(value, written);
    }
    void run() {
        parsing = std::min(parsing, parseTime(text));
        if (isWritable) writing = std::min(writing, writeTime(value));
    }

    std::string text;
    pocketjson::Value value;
    bool isWritable;
    double parsing = kUnknown, writing = kUnknown;
};

/// For three significant digits, but no more than there are nanoseconds.
int decimals(double time) {
    return time >= 100 ? 0 : time >= 10 ? 1 : time >= 1 ? 2 : time >= 0.1 ? 3 : time >= 0.01 ? 4 : 6;
}

/// The columns of a series: the first time, the last one, and the factors from one to the next.
void printSeries(const std::vector<Sample>& samples, double Sample::*time) {
    const double first = samples.front().*time, last = samples.back().*time;
    if (last == kUnknown) {
        std::printf(" - | - | - | - |");
        return;
    }
    double largest = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        largest = std::max(largest, samples[i].*time / (samples[i - 1].*time));
    const double mean = std::pow(last / first, 1 / static_cast<double>(samples.size() - 1));
    std::printf(" %.*f | %.*f | %.2f | %.2f |", decimals(first), first, decimals(last), last, mean, largest);
}

void printGrowth() {
    std::printf(
        "| times in ms, and factors when doubled | parse and release 256 KiB | 4 MiB | mean | largest |"
        " write 256 KiB | 4 MiB | mean | largest |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const auto& shape : kShapes) {
        std::vector<Sample> samples;
        for (std::size_t size = kSmallest; size <= kLargest; size *= 2) samples.emplace_back(shape.text(size));
        // In turns, so that what else the machine does strikes all sizes alike.
        const auto start = Clock::now();
        for (int i = 0; i < kRuns && Clock::now() - start < kEnough; ++i)
            for (auto& sample : samples) sample.run();
        std::printf("| %s |", shape.name);
        printSeries(samples, &Sample::parsing);
        printSeries(samples, &Sample::writing);
        std::printf("\n");
        std::fflush(stdout);
    }
}

void printLongNumbers() {
    constexpr std::size_t digits = 1'000'000;
    const auto whole = hugeNumber(digits);
    const auto half = hugeNumber(digits / 2);
    const auto best = [](const std::string& text) {
        double time = kUnknown;
        for (int i = 0; i < kRuns; ++i) time = std::min(time, parseTime(text));
        return time;
    };
    std::printf(
        "\nA number of a million digits is read in %.3f ms as an integer, in %.3f ms with a fraction, in %.3f ms "
        "with an exponent.\n",
        best(whole), best(half + '.' + half), best(whole + "e-" + std::to_string(digits - 10)));
}

}  // namespace

int main() {
    printGrowth();
    printLongNumbers();
}
