// Where the companions are found, in the layouts of folders that hosts have.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "runtime/platform/Platform.h"

namespace {

using std::filesystem::path;
using Lines = std::vector<std::string>;

#ifdef _WIN32
constexpr auto hostProgram = "layout_host.exe";
constexpr auto plugin = "libpell.dll";

void setSearchPath(const path& folder) {
    _wputenv_s(L"PATH", folder.c_str());
}
#else
constexpr auto hostProgram = "layout_host";
constexpr auto plugin = "libpell.so";

void setSearchPath(const path& folder) {
    setenv("LD_LIBRARY_PATH", folder.c_str(), 1);
}
#endif

void copyInto(const path& folder, const path& file) {
    std::filesystem::copy_file(file, folder / file.filename());
}

/// A companion and the folder that it is copied to.
struct Copy {
    std::string library;
    path folder;
};

/// A host of its own: its program in "program", its plug-in perhaps in "program/plugins". The system's search path is
/// "shared", and the program starts in the folder that holds them all.
class Layout {
 public:
    Layout() {
        std::filesystem::remove_all(root_);
        for (const char* folder : {"program/plugins", "shared"}) std::filesystem::create_directories(root_ / folder);
        copyInto(root_ / "program", built_ / hostProgram);
        for (const auto& entry : std::filesystem::directory_iterator(built_))
            for (const char* library : {"pell_simulator.", "QtWebKitBridgeHelper.", "libstdc++-", "libgcc_", "libwin"})
                if (entry.path().filename().string().starts_with(library)) copyInto(root_ / "program", entry);
    }
    ~Layout() { std::filesystem::remove_all(root_); }
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    /// "older libdmc" has the ordinary imports only; "broken libfwupdate" cannot be loaded; "logger" is the logging
    /// library, where a libPlugin in the same folder says that it lies.
    void add(const Copy& copy) const {
        const path folder = root_ / copy.folder;
        if (copy.library == "older libdmc") {
            copyInto(folder, built_.parent_path() / "minimal" / fileOf("libdmc"));
        } else if (copy.library == "broken libfwupdate") {
            std::ofstream(folder / fileOf("libfwupdate")) << "no library";
        } else if (copy.library == "logger") {
            std::filesystem::create_directory(folder / "exports");
            copyInto(folder / "exports", built_ / "exports" / fileOf("libscrivo2"));
        } else {
            copyInto(folder, built_ / fileOf(copy.library));
        }
    }

    /// What the host prints when it loads the plug-in from a folder and takes these steps.
    Lines run(const path& folder, const std::string& steps) const {
        copyInto(root_ / folder, built_ / plugin);
        copyInto(root_ / folder, built_ / fileOf("libcolour"));  // an import that the host has not loaded
        setSearchPath(root_ / "shared");
        const path before = std::filesystem::current_path();
        std::filesystem::current_path(root_);
        const std::string command = (path("program") / hostProgram).make_preferred().string() + " " +
                                    (folder / plugin).string() + " " + steps + " > answers";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        std::filesystem::current_path(before);

        Lines lines;
        std::ifstream answers(root_ / "answers");
        for (std::string line; std::getline(answers, line);)
            lines.push_back(line.substr(0, line.find_last_not_of('\r') + 1));
        return lines;
    }

    const path& root() const { return root_; }

    static std::string fileOf(const std::string& library) { return torvo::platform::libraryFileName(library.c_str()); }

 private:
    const path built_ = std::filesystem::weakly_canonical(torvo::platform::ownDirectory());
    const path root_ = built_ / u8"layout \u00e4\u4e94";
};

const std::string noFirmwareLibrary = R"(404 "libfwupdate does not have a requested function.")";

struct Expected {
    bool newer;     ///< functions that only the newer libdmc has
    bool firmware;  ///< libfwupdate
    bool logged;    ///< libPlugin, and the logging library beside it
};

/// What "HybridGammaPXL RangeExtension=1 RangeExtension FirmwareUpdate" answers. The range extension is written by a
/// function that is looked up by name and read by an import.
Lines answers(const Expected& expected) {
    const std::string tooOld = R"(404 "libdmc does not have a requested function.")";
    Lines lines{expected.newer ? "200 false" : tooOld, expected.newer ? "200 null" : tooOld,
                expected.newer ? "200 1" : "200 0", expected.firmware ? R"(200 {"state":0})" : noFirmwareLibrary};
    if (expected.logged)
        for (std::string& line : lines) line += " logged";
    return lines;
}

TEST(Companions, AreFoundInEveryLayout) {
    const path program = "program", plugins = "program/plugins", shared = "shared", current = "";
    const struct {
        const char* layout;
        path pluginFolder;
        std::vector<Copy> copies;
        Expected expected;
    } cases[] = {
        {"one folder for all",
         program,
         {{"libdmc", program}, {"libfwupdate", program}, {"libPlugin", program}, {"logger", program}},
         {true, true, true}},
        {"the plug-in in a folder of its own",
         plugins,
         {{"libdmc", program}, {"libfwupdate", program}, {"libPlugin", program}, {"logger", program}},
         {true, true, true}},
        {"libdmc and the others in a folder of the search path",
         plugins,
         {{"libdmc", shared}, {"libfwupdate", shared}, {"libPlugin", shared}, {"logger", shared}},
         {true, true, true}},
        {"the host loaded a newer libdmc than the one beside the plug-in",
         plugins,
         {{"libdmc", program}, {"older libdmc", plugins}},
         {true, false, false}},
        {"the host loaded an older libdmc than the one beside the plug-in",
         plugins,
         {{"older libdmc", program}, {"libdmc", plugins}},
         {false, false, false}},
        {"the plug-in's folder comes first",
         plugins,
         {{"libdmc", shared},
          {"libPlugin", plugins},
          {"libPlugin", shared},
          {"libPlugin", program},
          {"logger", plugins}},
         {true, false, true}},
        {"the folder of libdmc comes second",
         plugins,
         {{"libdmc", shared}, {"libPlugin", shared}, {"libPlugin", program}, {"logger", shared}},
         {true, false, true}},
        {"the program's folder comes last",
         plugins,
         {{"libdmc", shared}, {"libfwupdate", program}, {"libPlugin", program}, {"logger", program}},
         {true, true, true}},
        {"neither the search path nor the current directory counts",
         plugins,
         {{"libdmc", program},
          {"libfwupdate", shared},
          {"libPlugin", shared},
          {"logger", shared},
          {"libfwupdate", current},
          {"libPlugin", current},
          {"logger", current}},
         {true, false, false}},
        {"a file that cannot be loaded is passed over",
         plugins,
         {{"libdmc", program}, {"broken libfwupdate", plugins}, {"libfwupdate", program}},
         {true, true, false}},
    };
    for (const auto& test : cases) {
        const Layout layout;
        for (const Copy& copy : test.copies) layout.add(copy);
        EXPECT_EQ(layout.run(test.pluginFolder, "HybridGammaPXL RangeExtension=1 RangeExtension FirmwareUpdate"),
                  answers(test.expected))
            << test.layout;
    }
}

TEST(Logger, IsLoadedFromAFullPathOnly) {
    const Layout layout;
    for (const char* library : {"libdmc", "libPlugin"}) layout.add({library, "program"});
    layout.add({"logger", ""});
    copyInto(layout.root(), layout.root() / "exports" / Layout::fileOf("libscrivo2"));
    EXPECT_EQ(layout.run("program", "exports:exports Brightness exports:. Brightness exports: Brightness"),
              (Lines{"200 50", "200 50", "200 50"}));
}

TEST(Logger, IsFoundWhenItArrivesLater) {
    const Layout layout;
    for (const Copy& copy : {Copy{"libdmc", "program"}, {"libPlugin", "shared"}, {"logger", "program"}})
        layout.add(copy);
    const std::string file = Layout::fileOf("libPlugin");
    EXPECT_EQ(layout.run("program", "Brightness shared/" + file + "@program/" + file + " Brightness Brightness"),
              (Lines{"200 50", "200 50 logged", "200 50 logged"}));
}

TEST(Companions, AreFoundWhenTheyArriveLater) {
    const Layout layout;
    layout.add({"libdmc", "program"});
    layout.add({"libfwupdate", "shared"});
    const std::string file = Layout::fileOf("libfwupdate");
    const std::string arrival = "shared/" + file + "@program/" + file;
    EXPECT_EQ(layout.run("program/plugins", "FirmwareUpdate " + arrival + " FirmwareUpdate"),
              (Lines{noFirmwareLibrary, R"(200 {"state":0})"}));
}

}  // namespace
