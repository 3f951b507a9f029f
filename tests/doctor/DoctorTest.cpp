// What `pellhost doctor` finds in the layouts of folders that hosts have.
#include <gtest/gtest.h>
#include <libpell.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/Installation.h"

namespace {

using Json = nlohmann::json;
using tests::isWindows;
using tests::path;
using Names = std::set<std::string>;

struct Report {
    int exitCode;
    Json json;

    const Json& library(const std::string& name) const {
        for (const auto& one : json.at("libraries"))
            if (one.at("name") == name) return one;
        throw std::out_of_range(name);
    }

    /// "error libdmc", for example, in order.
    std::vector<std::string> problems() const {
        std::vector<std::string> texts;
        for (const auto& problem : json.at("problems"))
            texts.push_back(problem.at("severity").get<std::string>() + " " + problem.at("about").get<std::string>());
        return texts;
    }

    Names unavailable() const {
        Names names;
        for (const auto& entry : json.at("unavailable")) names.insert(entry.at("resource"));
        return names;
    }
};
using Problems = std::vector<std::string>;

/// A host's installation in "host", the plug-in perhaps in "host/plugins", and pellhost in a folder of its own.
class Host : public tests::Installation {
 public:
    Host() : Installation(u8"doctor") {
        addProgram("pellhost", "pellhost");
        addSimulator("host");
        std::filesystem::create_directories(root_ / "host/plugins");
    }
    /// A whole one, with the plug-in in this folder.
    explicit Host(const path& pluginFolder) : Host() {
        addLibraries();
        addLibrary(pluginFolder, "libpell");
    }

    void addLibraries() const {
        for (const char* library : {"libdmc", "libcolour", "QtWebKitBridgeHelper", "libfwupdate", "libPlugin"})
            addLibrary("host", library);
        addLogger("host");
    }

    Report examine(const path& pluginFolder, const std::string& programOption = " --program host") const {
        const auto [exitCode, text] = run(pluginFolder, "--json", programOption);
        return {exitCode, Json::parse(text)};
    }

    /// Without a program, the plug-in's folder is taken for the program's.
    std::pair<int, std::string> run(const path& pluginFolder, const std::string& options = "",
                                    const std::string& programOption = " --program host") const {
        return Installation::run("pellhost/pellhost",
                                 options + " doctor" + programOption + " --plugin " +
                                     (pluginFolder / Host::fileOf("libpell")).make_preferred().string());
    }
};

TEST(Doctor, FindsNothingWrongInOneFolder) {
    const Host host("host");
    const auto report = host.examine("host");
    EXPECT_EQ(report.exitCode, 0);
    EXPECT_EQ(report.json["ok"], true);
    EXPECT_EQ(report.problems(), Problems());
    EXPECT_EQ(report.unavailable(), Names());
    EXPECT_EQ(report.library("libscrivo2")["place"], "the folder of :exports");
    EXPECT_EQ(report.json["monitors"]["simulated"], true);
    const auto& monitors = report.json["monitors"]["list"];
    ASSERT_EQ(monitors.size(), 3U);
    EXPECT_EQ(monitors[0]["unsupported"], Json::array());  // which has everything
    const Json& older = monitors[1];
    EXPECT_EQ(older["product"], "TB240");
    EXPECT_NE(std::ranges::find(older["supported"], "Brightness"), older["supported"].end());
    EXPECT_NE(std::ranges::find(older["unsupported"], "SelfCalibration"), older["unsupported"].end());
    if (isWindows) EXPECT_EQ(report.json["plugin"]["version"], LIBPELL_VERSION ".0");
}

TEST(Doctor, FindsCompanionsInTheProgramsFolder) {
    const Host host("host/plugins");
    const auto report = host.examine("host/plugins");
    EXPECT_EQ(report.exitCode, 0);
    EXPECT_EQ(report.problems(), (Problems{"warning libdmc", "warning libcolour",
                                           "warning QtWebKitBridgeHelper"}));  // to be loaded before
    EXPECT_EQ(report.library("libfwupdate")["place"], "libdmc's folder");
    EXPECT_EQ(report.json["monitors"]["list"].size(), 3U);
}

/// What a request can miss is read off the sources; the catalogue, which is proven by requests, says the same. Only the
/// clock time is asked for by its newer function when the older one says no.
TEST(Doctor, KnowsWhichResourcesAnOlderWorldLacks) {
    const Host host;
    for (const char* library : {"libcolour", "QtWebKitBridgeHelper", "libpell"}) host.addLibrary("host", library);
    host.addOlderLibdmc("host");
    const auto report = host.examine("host");
    EXPECT_EQ(report.exitCode, 0);
    EXPECT_EQ(report.problems(), (Problems{"warning libdmc", "warning libfwupdate", "warning libPlugin"}));
    for (const char* library : {"libfwupdate", "libPlugin", "libscrivo2"})
        EXPECT_EQ(report.library(library)["found"], Json()) << library;

    std::ifstream stream(Host::built() / "catalogue.json");
    Names expected{"SelfCalibrationClockTime"};
    const Json catalogue = Json::parse(stream);
    for (const auto& [name, resource] : catalogue.at("resources").items())
        for (const auto& rows : resource.at("methods"))
            for (const auto& row : rows)
                if (row.contains("needs")) {
                    expected.insert(name);
                    if (resource.contains("aliases"))
                        for (const auto& alias : resource["aliases"]) expected.insert(alias);
                }
    EXPECT_EQ(report.unavailable(), expected);

    // The same for people, in lines that fit a terminal but for paths.
    const auto [exitCode, text] = host.run("host");
    EXPECT_EQ(exitCode, 0);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (line.find_first_of("/\\") == std::string::npos) EXPECT_LE(line.size(), 100U) << line;
    EXPECT_NE(text.find(Host::fileOf("libfwupdate")), std::string::npos);
    EXPECT_NE(text.find("libpell works here."), std::string::npos);
}

TEST(Doctor, TellsWhatKeepsLibpellFromBeingLoaded) {
    const std::string noLibrary = isWindows ? "it is no DLL" : "it is no shared object";
    const auto remove = [](const path& file) { std::filesystem::remove(file); };
    const auto damage = [](const path& file) { std::ofstream(file) << "no library"; };
    const auto lack = [](const path& file) {
        const auto lacking = Host::built().parent_path() / "lacking" / file.filename();
        std::filesystem::remove(file);  // mingw's copy_file does not overwrite
        std::filesystem::copy_file(lacking, file);
    };
    const auto makeFolder = [](const path& file) {
        std::filesystem::remove(file);
        std::filesystem::create_directory(file);
    };
    const auto removeSimulator = [](const path& file) {
        std::filesystem::remove(file.parent_path() / "pell_simulator.dll");
    };
    const struct {
        const char* about;
        std::function<void(const path& file)> doHarm;
        std::string text, remedy;
        bool isWindowsOnly = false;
    } cases[] = {
        {"libdmc", remove, Host::fileOf("libdmc") + " is missing", "Install it in "},
        {"libdmc", lack, "lacks 1 function that libpell imports: DmCtrlGetBrightnessForStep.", "Install a "},
        {"libdmc", damage, noLibrary, "Install what it needs"},
        {"libdmc", removeSimulator, "it needs pell_simulator.dll, which is not installed", "Install what it needs",
         true},
        {"libpell", remove, "There is no file ", "--plugin"},
        {"libpell", makeFolder, "it is a folder", "--plugin"},
        {"libpell", damage, noLibrary, "SHA256SUMS"},
    };
    for (const auto& [about, doHarm, text, remedy, isWindowsOnly] : cases) {
        if (isWindowsOnly && !isWindows) continue;
        const Host host("host");
        doHarm(host.pathOf("host", about));
        const auto report = host.examine("host");
        EXPECT_EQ(report.exitCode, 1) << text;
        EXPECT_EQ(report.json["ok"], false) << text;
        EXPECT_EQ(report.json["monitors"], Json()) << text;
        ASSERT_FALSE(report.json["problems"].empty()) << text;
        EXPECT_EQ(report.problems()[0], std::string("error ") + about) << text;
        const Json& problem = report.json["problems"][0];
        EXPECT_NE(problem["text"].get<std::string>().find(text), std::string::npos) << problem["text"];
        EXPECT_NE(problem["remedy"].get<std::string>().find(remedy), std::string::npos) << problem["remedy"];
        const bool isKnown = text.starts_with("lacks 1 function");
        EXPECT_EQ(report.json["unavailable"].is_array(), isKnown) << text;  // else there is nothing that answers
        if (isKnown) EXPECT_EQ(report.library("libdmc")["imported"]["missing"], Json{"DmCtrlGetBrightnessForStep"});
    }
}

TEST(Doctor, DoesNotTakeItsOwnFolderForTheProgramsFolder) {
    for (const bool hasPlugin : {true, false}) {
        const Host host;
        for (const char* library : {"libdmc", "libcolour", "libfwupdate", "libPlugin"})
            host.addLibrary("pellhost", library);
        if (hasPlugin) host.addLibrary("host", "libpell");
        const auto report = host.examine("host", "");
        EXPECT_EQ(report.exitCode, 1);
        EXPECT_EQ(report.json["folders"]["program"], report.json["folders"]["libpell"]);
        for (const char* library : {"libdmc", "libcolour", "libfwupdate", "libPlugin"})
            EXPECT_EQ(report.library(library)["found"], Json()) << library;
        EXPECT_EQ(report.json["unavailable"], Json());  // there is nothing that answers
    }
}

TEST(Doctor, TellsWhichFunctionsAPluginLacks) {
    const Host host;
    host.addLibraries();
    std::filesystem::copy_file(host.pathOf("host", "libcolour"), host.pathOf("host", "libpell"));
    const auto report = host.examine("host");
    EXPECT_EQ(report.exitCode, 1);
    ASSERT_FALSE(report.problems().empty());
    EXPECT_EQ(report.problems()[0], "error libpell");
    EXPECT_NE(report.json["problems"][0]["text"].get<std::string>().find("is not libpell"), std::string::npos);
    EXPECT_EQ(report.json["plugin"]["exports"]["missing"].size(), LIBPELL_RESOURCE_COUNT);
    EXPECT_EQ(report.json["monitors"], Json());
}

/// What is told before anything is loaded stays on the screen when a library ends the process.
TEST(Doctor, TellsWhatItFoundBeforeItLoadsAnything) {
    const Host host("host");
    std::filesystem::remove(host.pathOf("host", "libdmc"));
    std::filesystem::copy_file(Host::built().parent_path() / "crashing" / Host::fileOf("libdmc"),
                               host.pathOf("host", "libdmc"));
    const auto [exitCode, text] = host.run("host");
    EXPECT_NE(exitCode, 0);
    ASSERT_NE(text.find("Libraries"), std::string::npos) << text;
    if (!isWindows) EXPECT_NE(text.find("version unknown"), std::string::npos) << text;
    EXPECT_NE(text.find("Now loading libpell and asking the monitors ..."), std::string::npos) << text;
    const auto last = text.substr(text.find_last_of('\n', text.size() - 2) + 1);
    EXPECT_NE(last.find(Host::fileOf("libdmc")), std::string::npos) << text;
}

TEST(Doctor, PassesOverAnOptionalLibraryThatCannotBeUsed) {
    const Host host("host/plugins");
    std::ofstream(host.pathOf("host/plugins", "libfwupdate")) << "no library";
    const auto report = host.examine("host/plugins");
    EXPECT_EQ(report.exitCode, 0);
    EXPECT_EQ(report.problems().back(), "warning libfwupdate");
    const auto& library = report.library("libfwupdate");
    EXPECT_EQ(library["searched"][0]["state"], "unusable");
    EXPECT_EQ(library["searched"][1]["state"], "found");
    EXPECT_EQ(library["place"], "libdmc's folder");
}

}  // namespace
