// The folders that paths may begin with, as a Linux system says where they are.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "runtime/PathTokens.h"
#include "runtime/platform/Platform.h"

namespace {

namespace platform = torvo::platform;
using platform::Folder;

/// Environment variables as they are for the span of a test; an empty one is not set.
class Environment {
 public:
    explicit Environment(const std::map<std::string, std::string>& variables) {
        for (const auto& [name, value] : variables) {
            const char* const before = std::getenv(name.c_str());
            before_[name] = before ? before : "";
            set(name, value);
        }
    }
    ~Environment() {
        for (const auto& [name, value] : before_) set(name, value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

 private:
    static void set(const std::string& name, const std::string& value) {
        if (value.empty())
            unsetenv(name.c_str());
        else
            setenv(name.c_str(), value.c_str(), 1);
    }

    std::map<std::string, std::string> before_;
};

/// What a file in the folder of each token is.
std::map<std::string, std::string> files() {
    std::map<std::string, std::string> paths;
    for (const std::string token :
         {":temporary", ":common_application_data", ":user_application_data", ":common_color_profile",
          ":user_color_profile", ":home", ":desktop", ":system_root"})
        paths[token] = fs::resolve(token + "/f").text();
    return paths;
}

TEST(Folders, AreThoseOfTheEnvironment) {
    const Environment environment({{"HOME", "/h"},
                                   {"TMPDIR", "/t"},
                                   {"XDG_DATA_DIRS", "/d:/e"},
                                   {"XDG_DATA_HOME", "/x"},
                                   {"XDG_CONFIG_HOME", ""}});
    EXPECT_EQ(files(), (std::map<std::string, std::string>{{":temporary", "/t/f"},
                                                           {":common_application_data", "/d/f"},
                                                           {":user_application_data", "/x/f"},
                                                           {":common_color_profile", "/usr/share/color/icc/f"},
                                                           {":user_color_profile", "/usr/share/color/icc/f"},
                                                           {":home", "/h/f"},
                                                           {":desktop", "/h/Desktop/f"},
                                                           {":system_root", "/f"}}));
    EXPECT_EQ(platform::folderPath(Folder{99}), "");
}

TEST(Folders, AreTheUsualOnesWithoutAnEnvironment) {
    const Environment environment(
        {{"HOME", ""}, {"TMPDIR", ""}, {"XDG_DATA_DIRS", ""}, {"XDG_DATA_HOME", ""}, {"XDG_CONFIG_HOME", ""}});
    setenv("TMPDIR", "", 1);
    const std::string home = platform::folderPath(Folder::Home);
    EXPECT_NE(home, "");  // the one of the user's account
    auto paths = files();
    EXPECT_EQ(paths[":temporary"], "/tmp/f");
    EXPECT_EQ(paths[":common_application_data"], "/usr/local/share/f");
    EXPECT_EQ(paths[":user_application_data"], home + "/.local/share/f");
}

TEST(Folders, TheDesktopIsWhereTheUserHasPutIt) {
    const auto directory = std::filesystem::temp_directory_path() / "pell-folders";
    std::filesystem::create_directories(directory);
    const Environment environment({{"HOME", "/h"}, {"XDG_CONFIG_HOME", directory.string()}});
    const struct {
        const char* settings;
        const char* desktop;
    } cases[] = {
        {"# a comment\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n", "/h/Schreibtisch"},
        {"XDG_DESKTOP_DIR=\"/d\"\n", "/d"},
        {"XDG_DESKTOP_DIR=\"/d\n", "/h/Desktop"},
        {"XDG_MUSIC_DIR=\"/m\"\n", "/h/Desktop"},
    };
    for (const auto& [settings, desktop] : cases) {
        std::ofstream(directory / "user-dirs.dirs") << settings;
        EXPECT_EQ(platform::folderPath(Folder::Desktop), desktop) << settings;
    }
    std::filesystem::remove_all(directory);
}

TEST(Modules, HaveAFullPathHoweverTheyWereLoaded) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(platform::ownDirectory());
    const platform::Module relative = platform::loadModule("./" + platform::libraryFileName("libcolour"));
    EXPECT_EQ(platform::fileOf(relative), std::filesystem::current_path() / "./libcolour_x64.so");
    std::filesystem::current_path(before);
    platform::freeModule(relative);

    const platform::Module program = platform::loadModule("");
    EXPECT_EQ(platform::fileOf(program), "");
    platform::freeModule(program);
}

}  // namespace
