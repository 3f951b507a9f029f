// Where the companions are found, in the layouts of folders that hosts have.
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/Installation.h"

namespace {

using tests::path;
using Lines = std::vector<std::string>;

void setSearchPath(const path& folder) {
#ifdef _WIN32
    _wputenv_s(L"PATH", folder.c_str());
#else
    setenv("LD_LIBRARY_PATH", folder.c_str(), 1);
#endif
}

/// A host of its own: its program in "program", its plug-in perhaps in "program/plugins". The system's search path is
/// "shared", and the program starts in the folder that holds them all.
class Layout : public tests::Installation {
 public:
    Layout() : Installation(u8"layout") {
        for (const char* folder : {"program/plugins", "shared"}) std::filesystem::create_directories(root_ / folder);
        addProgram("program", "layout_host");
    }

    /// Companions and their folders, "libdmc@program" each; "older" is a libdmc, "broken" a libfwupdate that cannot be
    /// loaded, and "." the folder that holds all others.
    void install(const std::string& copies) const {
        std::istringstream words(copies);
        for (std::string word; words >> word;) {
            const auto at = word.find('@');
            const std::string library = word.substr(0, at);
            const path folder = word.substr(at + 1);
            if (library == "older")
                addOlderLibdmc(folder);
            else if (library == "broken")
                std::ofstream(pathOf(folder, "libfwupdate")) << "no library";
            else if (library == "logger")
                addLogger(folder);
            else
                addLibrary(folder, library);
        }
    }

    /// What the host prints when it loads the plug-in from a folder and takes these steps.
    Lines run(const path& folder, const std::string& steps) const {
        for (const char* library : {"libpell", "libcolour"})  // an import that the host has not loaded
            addLibrary(folder, library);
        setSearchPath(root_ / "shared");
        const std::string plugin = (folder / fileOf("libpell")).make_preferred().string();
        const auto [exitCode, text] = Installation::run("program/layout_host", plugin + " " + steps);
        EXPECT_EQ(exitCode, 0) << steps;
        Lines lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(line.substr(0, line.find_last_not_of('\r') + 1));
        return lines;
    }
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
    const char *const program = "program", *const plugins = "program/plugins";
    const struct {
        const char* layout;
        const char* pluginFolder;
        const char* copies;
        bool newer, firmware, logged;  // as in Expected
    } cases[] = {
        {"one folder for all", program, "libdmc@program libfwupdate@program libPlugin@program logger@program", true,
         true, true},
        {"the plug-in in a folder of its own", plugins,
         "libdmc@program libfwupdate@program libPlugin@program logger@program", true, true, true},
        {"libdmc and the others in a folder of the search path", plugins,
         "libdmc@shared libfwupdate@shared libPlugin@shared logger@shared", true, true, true},
        {"the host loaded a newer libdmc than the one beside the plug-in", plugins,
         "libdmc@program older@program/plugins", true, false, false},
        {"the host loaded an older libdmc than the one beside the plug-in", plugins,
         "older@program libdmc@program/plugins", false, false, false},
        {"the plug-in's folder comes first", plugins,
         "libdmc@shared libPlugin@program/plugins libPlugin@shared libPlugin@program logger@program/plugins", true,
         false, true},
        {"the folder of libdmc comes second", plugins, "libdmc@shared libPlugin@shared libPlugin@program logger@shared",
         true, false, true},
        {"the program's folder comes last", plugins,
         "libdmc@shared libfwupdate@program libPlugin@program logger@program", true, true, true},
        {"neither the search path nor the current directory counts", plugins,
         "libdmc@program libfwupdate@shared libPlugin@shared logger@shared libfwupdate@. libPlugin@. logger@.", true,
         false, false},
        {"a file that cannot be loaded is passed over", plugins,
         "libdmc@program broken@program/plugins libfwupdate@program", true, true, false},
    };
    for (const auto& [name, pluginFolder, copies, newer, firmware, logged] : cases) {
        const Layout layout;
        layout.install(copies);
        EXPECT_EQ(layout.run(pluginFolder, "HybridGammaPXL RangeExtension=1 RangeExtension FirmwareUpdate"),
                  answers({newer, firmware, logged}))
            << name;
    }
}

TEST(Logger, IsLoadedFromAFullPathOnly) {
    const Layout layout;
    layout.install("libdmc@program libPlugin@program logger@.");
    layout.add(".", Layout::built() / "exports" / Layout::fileOf("libscrivo2"));
    EXPECT_EQ(layout.run("program", "exports:exports Brightness exports:. Brightness exports: Brightness"),
              (Lines{"200 50", "200 50", "200 50"}));
}

TEST(Companions, AreFoundWhenTheyArriveLater) {
    const struct {
        std::string library, request;
        Lines expected;
    } cases[] = {{"libfwupdate", " FirmwareUpdate", {noFirmwareLibrary, R"(200 {"state":0})"}},
                 {"libPlugin", " Brightness", {"200 50", "200 50 logged"}}};
    for (const auto& [library, request, expected] : cases) {
        const Layout layout;
        layout.install("libdmc@program logger@program " + library + "@shared");
        const std::string file = Layout::fileOf(library);
        EXPECT_EQ(layout.run("program", request + " shared/" + file + "@program/" + file + request), expected);
    }
}

}  // namespace
