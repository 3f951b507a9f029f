// The folders that paths may begin with, as Windows says where they are.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "runtime/PathTokens.h"

namespace {

std::string variable(const char* name) {
    const char* const text = std::getenv(name);
    return text ? text : "";
}

TEST(Folders, AreThoseOfTheUserAndTheSystem) {
    const std::string user = variable("USERPROFILE"), system = variable("SystemRoot");
    const std::string colors = system + R"(\system32\spool\drivers\color)";
    const struct {
        const char* token;
        std::string folder;
    } cases[] = {
        {":temporary", variable("TMP")},
        {":common_application_data", variable("ProgramData")},
        {":user_application_data", variable("APPDATA")},
        {":common_color_profile", colors},
        {":user_color_profile", colors},
        {":home", user},
        {":desktop", user + R"(\Desktop)"},
        {":system_root", system},
    };
    for (const auto& [token, folder] : cases) {
        const std::string file = fs::resolve(std::string(token) + "/f").text();
        const bool isMissing = file.empty() && !std::filesystem::exists(folder);  // the shell then says nothing of it
        EXPECT_TRUE(file == folder + R"(\f)" || isMissing) << token << " " << file;
    }
}

}  // namespace
