// What `pellhost doctor` finds in the layouts of folders that hosts have.
#include <gtest/gtest.h>
#include <libpell.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "runtime/platform/Platform.h"

namespace {

using Json = nlohmann::json;
using std::filesystem::path;
using Names = std::set<std::string>;

#ifdef _WIN32
constexpr bool isWindows = true;
const std::string extension = ".dll", program = ".exe";
#else
constexpr bool isWindows = false;
const std::string extension = ".so", program;
#endif

const path built = std::filesystem::weakly_canonical(torvo::platform::ownDirectory());

std::string fileOf(const std::string& library) {
    const bool hasSuffix = library != "libpell" && library != "QtWebKitBridgeHelper";
    return hasSuffix ? torvo::platform::libraryFileName(library.c_str()) : library + extension;
}

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
class Installation {
 public:
    Installation() {
        std::filesystem::remove_all(root_);
        for (const char* folder : {"pellhost", "host/plugins"}) std::filesystem::create_directories(root_ / folder);
        add("pellhost", built / ("pellhost" + program));
        addLibrary("pellhost", "QtWebKitBridgeHelper");
        for (const auto& entry : std::filesystem::directory_iterator(built))
            for (const char* runtime : {"pell_simulator.", "libstdc++-", "libgcc_", "libwin"})
                if (entry.path().filename().string().starts_with(runtime))
                    for (const char* folder : {"pellhost", "host"}) add(folder, entry.path());
    }
    /// A whole one, with the plug-in in this folder.
    explicit Installation(const path& pluginFolder) : Installation() {
        addLibraries("host");
        addLibrary(pluginFolder, "libpell");
    }
    ~Installation() { std::filesystem::remove_all(root_); }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    void add(const path& folder, const path& file) const {
        std::filesystem::create_directories(root_ / folder);
        std::filesystem::copy_file(file, root_ / folder / file.filename());
    }
    void addLibrary(const path& folder, const std::string& library) const { add(folder, built / fileOf(library)); }
    void addLibraries(const path& folder) const {
        for (const char* library : {"libdmc", "libcolour", "QtWebKitBridgeHelper", "libfwupdate", "libPlugin"})
            addLibrary(folder, library);
        add(folder / "exports", built / "exports" / fileOf("libscrivo2"));
    }

    path pathOf(const path& folder, const std::string& library) const {
        return (root_ / folder / fileOf(library)).make_preferred();
    }

    Report examine(const path& pluginFolder) const {
        const auto [exitCode, text] = run("--json", pluginFolder);
        return {exitCode, Json::parse(text)};
    }

    /// Without a program, the plug-in's folder is taken for the program's.
    std::pair<int, std::string> run(const std::string& options, const path& pluginFolder,
                                    const std::string& programOption = " --program host") const {
        const path before = std::filesystem::current_path();
        std::filesystem::current_path(root_);
        const std::string command = (path("pellhost") / "pellhost").make_preferred().string() + " " + options +
                                    " doctor" + programOption + " --plugin " +
                                    (pluginFolder / fileOf("libpell")).make_preferred().string() + " > report";
        const int status = std::system(command.c_str());
        std::filesystem::current_path(before);
        std::ifstream file(root_ / "report", std::ios::binary);
        return {isWindows ? status : status >> 8, {std::istreambuf_iterator<char>(file), {}}};
    }

 private:
    const path root_ = built / u8"doctor \u00e4\u4e94";
};

TEST(Doctor, FindsNothingWrongInOneFolder) {
    const Installation host("host");
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
    const Installation host("host/plugins");
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
    const Installation host;
    for (const char* library : {"libcolour", "QtWebKitBridgeHelper", "libpell"}) host.addLibrary("host", library);
    host.add("host", built.parent_path() / "minimal" / fileOf("libdmc"));
    const auto report = host.examine("host");
    EXPECT_EQ(report.exitCode, 0);
    EXPECT_EQ(report.problems(), (Problems{"warning libdmc", "warning libfwupdate", "warning libPlugin"}));
    for (const char* library : {"libfwupdate", "libPlugin", "libscrivo2"})
        EXPECT_EQ(report.library(library)["found"], Json()) << library;

    std::ifstream stream(built / "catalogue.json");
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
    const auto [exitCode, text] = host.run("", "host");
    EXPECT_EQ(exitCode, 0);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (line.find_first_of("/\\") == std::string::npos) EXPECT_LE(line.size(), 100U) << line;
    EXPECT_NE(text.find("libfwupdate_x64" + extension), std::string::npos);
    EXPECT_NE(text.find("libpell works here."), std::string::npos);
}

TEST(Doctor, TellsWhatKeepsLibpellFromBeingLoaded) {
    enum class Fault {
        noLibdmc,
        libdmcWithoutAFunction,
        damagedLibdmc,
        noPlugin,
        noPartOfLibdmc,
        folder,
        damagedPlugin
    };
    const struct {
        Fault fault;
        std::string about, text, remedy;
    } cases[] = {
        {Fault::noLibdmc, "libdmc", fileOf("libdmc") + " is missing", "Install it in "},
        {Fault::libdmcWithoutAFunction, "libdmc", "lacks 1 function that libpell imports: DmCtrlGetBrightnessForStep.",
         "Install a "},
        {Fault::damagedLibdmc, "libdmc", isWindows ? "it is no DLL" : "it is no shared object",
         "Install what it needs"},
        {Fault::noPlugin, "libpell", "There is no file ", "--plugin"},
        {Fault::noPartOfLibdmc, "libdmc", "it needs pell_simulator.dll, which is not installed",
         "Install what it needs"},
        {Fault::folder, "libpell", "it is a folder", "--plugin"},
        {Fault::damagedPlugin, "libpell", isWindows ? "it is no DLL" : "it is no shared object", "SHA256SUMS"},
    };
    for (const auto& [fault, about, text, remedy] : cases) {
        if (fault == Fault::noPartOfLibdmc && !isWindows) continue;
        const Installation host;
        host.addLibraries("host");
        if (about != "libpell") host.addLibrary("host", "libpell");
        if (fault == Fault::folder) std::filesystem::create_directory(host.pathOf("host", "libpell"));
        if (fault == Fault::damagedPlugin) std::ofstream(host.pathOf("host", "libpell")) << "no library";
        const path libdmc = host.pathOf("host", "libdmc");
        if (about == "libdmc" && fault != Fault::noPartOfLibdmc) std::filesystem::remove(libdmc);
        if (fault == Fault::libdmcWithoutAFunction)
            host.add("host", built.parent_path() / "lacking" / libdmc.filename());
        if (fault == Fault::damagedLibdmc) std::ofstream(libdmc) << "no library";
        if (fault == Fault::noPartOfLibdmc) std::filesystem::remove(libdmc.parent_path() / "pell_simulator.dll");
        const auto report = host.examine("host");
        EXPECT_EQ(report.exitCode, 1) << text;
        EXPECT_EQ(report.json["ok"], false) << text;
        EXPECT_EQ(report.json["monitors"], Json()) << text;
        ASSERT_FALSE(report.json["problems"].empty()) << text;
        const Json& problem = report.json["problems"][0];
        EXPECT_EQ(problem["severity"], "error");
        EXPECT_EQ(problem["about"], about);
        EXPECT_NE(problem["text"].get<std::string>().find(text), std::string::npos) << problem["text"];
        EXPECT_NE(problem["remedy"].get<std::string>().find(remedy), std::string::npos) << problem["remedy"];
        const bool isKnown = fault == Fault::libdmcWithoutAFunction;
        EXPECT_EQ(report.json["unavailable"].is_array(), isKnown) << text;  // else there is nothing that answers
        if (fault == Fault::libdmcWithoutAFunction)
            EXPECT_EQ(report.library("libdmc")["imported"]["missing"], Json{"DmCtrlGetBrightnessForStep"});
    }
}

TEST(Doctor, DoesNotTakeItsOwnFolderForTheProgramsFolder) {
    for (const bool hasPlugin : {true, false}) {
        const Installation host;
        for (const char* library : {"libdmc", "libcolour", "libfwupdate", "libPlugin"})
            host.addLibrary("pellhost", library);
        if (hasPlugin) host.addLibrary("host", "libpell");
        const auto [exitCode, text] = host.run("--json", "host", "");
        const Report report{exitCode, Json::parse(text)};
        EXPECT_EQ(report.exitCode, 1);
        EXPECT_EQ(report.json["folders"]["program"], report.json["folders"]["libpell"]);
        for (const char* library : {"libdmc", "libcolour", "libfwupdate", "libPlugin"})
            EXPECT_EQ(report.library(library)["found"], Json()) << library;
        EXPECT_EQ(report.json["unavailable"], Json());  // there is nothing that answers
    }
}

TEST(Doctor, TellsWhichFunctionsAPluginLacks) {
    const Installation host;
    host.addLibraries("host");
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
    const Installation host("host");
    std::filesystem::remove(host.pathOf("host", "libdmc"));
    std::filesystem::copy_file(built.parent_path() / "crashing" / fileOf("libdmc"), host.pathOf("host", "libdmc"));
    const auto [exitCode, text] = host.run("", "host");
    EXPECT_NE(exitCode, 0);
    ASSERT_NE(text.find("Libraries"), std::string::npos) << text;
    if (!isWindows) EXPECT_NE(text.find("version unknown"), std::string::npos) << text;
    EXPECT_NE(text.find("Now loading libpell and asking the monitors ..."), std::string::npos) << text;
    const auto last = text.substr(text.find_last_of('\n', text.size() - 2) + 1);
    EXPECT_NE(last.find(fileOf("libdmc")), std::string::npos) << text;
}

TEST(Doctor, PassesOverAnOptionalLibraryThatCannotBeUsed) {
    const Installation host("host/plugins");
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
