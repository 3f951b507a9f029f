// How long it takes to load the plug-in and to have its first answer: medians over fresh processes. Stands in a folder
// with the plug-in and its companions.
//
//     start [PROCESSES]
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using Entry = std::uint32_t(const char* options, const char* params, const char* query, const char* body);

#ifdef _WIN32
Entry* load(const std::filesystem::path& folder) {
    const auto module = LoadLibraryExW((folder / "libpell.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return module ? reinterpret_cast<Entry*>(reinterpret_cast<void*>(GetProcAddress(module, "Brightness"))) : nullptr;
}
std::FILE* openProcess(const std::string& command) {
    return _popen(command.c_str(), "r");
}
int closeProcess(std::FILE* process) {
    return _pclose(process);
}
#else
Entry* load(const std::filesystem::path& folder) {
    void* const module = dlopen((folder / "libpell.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    return module ? reinterpret_cast<Entry*>(dlsym(module, "Brightness")) : nullptr;
}
std::FILE* openProcess(const std::string& command) {
    return popen(command.c_str(), "r");
}
int closeProcess(std::FILE* process) {
    return pclose(process);
}
#endif

struct Times {
    double load;  // microseconds
    double request;
};

/// What a child does: prints both times.
int measure(const std::filesystem::path& folder) {
    using Clock = std::chrono::steady_clock;
    using Microseconds = std::chrono::duration<double, std::micro>;
    const auto start = Clock::now();
    Entry* const brightness = load(folder);
    const auto loaded = Clock::now();
    if (!brightness) return EXIT_FAILURE;
    brightness(R"({"method":"GET"})", R"({"product":"TQ271-P","serial":"10000001"})", "{}", "null");
    const auto answered = Clock::now();
    std::printf("%.3f %.3f\n", Microseconds(loaded - start).count(), Microseconds(answered - loaded).count());
    return EXIT_SUCCESS;
}

bool runChild(const std::string& command, Times& times) {
    std::FILE* const process = openProcess(command);
    if (!process) return false;
    const int read = std::fscanf(process, "%lf %lf", &times.load, &times.request);
    return closeProcess(process) == 0 && read == 2;
}

double median(std::vector<Times>& runs, double (*figure)(const Times&)) {
    const auto middle = runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2);
    std::nth_element(runs.begin(), middle, runs.end(),
                     [figure](const Times& a, const Times& b) { return figure(a) < figure(b); });
    return figure(*middle);
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path self = std::filesystem::absolute(argv[0]);
    const std::string argument = argc > 1 ? argv[1] : "51";
    if (argument == "--child") return measure(self.parent_path());

        // A path with spaces is quoted; Windows' shell wants the whole command quoted once more.
#ifdef _WIN32
    const std::string command = "\"\"" + self.string() + "\" --child\"";
#else
    const std::string command = "\"" + self.string() + "\" --child";
#endif
    std::vector<Times> runs(static_cast<std::size_t>(std::max(1, std::atoi(argument.c_str()))));
    for (Times& times : runs) {
        if (!runChild(command, times)) {
            std::fprintf(stderr, "cannot load libpell from %s\n", self.parent_path().string().c_str());
            return EXIT_FAILURE;
        }
    }
    std::printf(
        "Loading libpell takes %.0f us, its first Brightness GET %.0f us; together %.0f us (medians of %zu "
        "processes).\n",
        median(runs, [](const Times& times) { return times.load; }),
        median(runs, [](const Times& times) { return times.request; }),
        median(runs, [](const Times& times) { return times.load + times.request; }), runs.size());
    return EXIT_SUCCESS;
}
