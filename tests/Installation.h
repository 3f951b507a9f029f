// Copies of the built programs and libraries, in folders such as hosts have.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "runtime/platform/Platform.h"

namespace tests {

using std::filesystem::path;

#ifdef _WIN32
constexpr bool isWindows = true;
inline const std::string libraryExtension = ".dll", programExtension = ".exe";
#else
constexpr bool isWindows = false;
inline const std::string libraryExtension = ".so", programExtension;
#endif

/// In a folder beside this program that goes with its object, and whose name is not ASCII.
class Installation {
 public:
    explicit Installation(const std::u8string& name) : root_(built() / (name + u8" \u00e4\u4e94")) {
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(root_);
    }
    ~Installation() { std::filesystem::remove_all(root_); }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    static const path& built() {
        static const path folder = std::filesystem::weakly_canonical(torvo::platform::ownDirectory());
        return folder;
    }
    static std::string fileOf(const std::string& library) {
        const bool hasSuffix = library != "libpell" && library != "QtWebKitBridgeHelper";
        return hasSuffix ? torvo::platform::libraryFileName(library.c_str()) : library + libraryExtension;
    }
    path pathOf(const path& folder, const std::string& library) const {
        return (root_ / folder / fileOf(library)).make_preferred();
    }

    void add(const path& folder, const path& file) const {
        std::filesystem::create_directories(root_ / folder);
        std::filesystem::copy_file(file, root_ / folder / file.filename());
    }
    void addLibrary(const path& folder, const std::string& library) const { add(folder, built() / fileOf(library)); }
    /// One with the ordinary imports only.
    void addOlderLibdmc(const path& folder) const { add(folder, built().parent_path() / "minimal" / fileOf("libdmc")); }
    /// The logging library, where a libPlugin in this folder says that it lies.
    void addLogger(const path& folder) const { add(folder / "exports", built() / "exports" / fileOf("libscrivo2")); }
    /// A program, with what every program needs.
    void addProgram(const path& folder, const std::string& program) const {
        add(folder, built() / (program + programExtension));
        addLibrary(folder, "QtWebKitBridgeHelper");
        addSimulator(folder);
    }
    /// What simulated companions and programs of the tests are linked with.
    void addSimulator(const path& folder) const {
        for (const auto& entry : std::filesystem::directory_iterator(built()))
            for (const char* library : {"pell_simulator.", "libstdc++-", "libgcc_", "libwin"})
                if (entry.path().filename().string().starts_with(library)) add(folder, entry.path());
    }

    /// The exit code of a program that is run in the folder that holds all others, and what it prints.
    std::pair<int, std::string> run(const path& program, const std::string& arguments) const {
        const path before = std::filesystem::current_path();
        std::filesystem::current_path(root_);
        const std::string command = path(program).make_preferred().string() + " " + arguments + " > printed";
        const int status = std::system(command.c_str());
        std::filesystem::current_path(before);
        std::ifstream file(root_ / "printed", std::ios::binary);
        return {isWindows ? status : status >> 8, {std::istreambuf_iterator<char>(file), {}}};
    }

 protected:
    const path root_;
};

}  // namespace tests
