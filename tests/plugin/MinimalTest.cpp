// The plug-in in an older world: libdmc has the ordinary imports only; libPlugin and the logging library are absent.
#include <filesystem>

#include "tests/plugin/Page.h"

namespace {

TEST(MinimalWorld, LogsNothingAndAsksTheOlderFeatureFirst) {
    Page page;
    const Answer answer = page.get("SelfCalibrationClockTime", R"({"supports":1})");
    EXPECT_EQ(summary(answer), "200 true");
    EXPECT_EQ(answer.log, "");
    page.returns("DmCtrlSupportedSelfCalibration", 0);
    EXPECT_EQ(summary(page.get("SelfCalibrationClockTime", R"({"supports":1})")),
              "404 FunctionNotFoundError libdmc does not have a requested function.");
}

TEST(MinimalWorld, HasNoFirmwareLibraryAndNoDirectoriesOfTheHost) {
    Page page;
    const std::string program = "libdmc_x64" + std::filesystem::path(host::Plugin::defaultFile()).extension().string();
    for (const char* resource : {"FileSystemDfwFile", "FileSystemDfwFile2"}) {
        const auto open = [&](const std::string& path) {
            return summary(page.call(resource, {R"({"method":"POST"})", "", "", Json{{"path", path}}.dump()}));
        };
        const auto named = [&](const char* method) {
            return summary(page.call(resource, host::Request{.method = method, .id = "no-such-identifier"}.texts()));
        };
        EXPECT_EQ(open(":executable/" + program),
                  "404 FunctionNotFoundError libfwupdate does not have a requested function.");
        EXPECT_EQ(open(":executable/no such file"), "400 BadRequestError Input path is not a file or not existed.");
        EXPECT_EQ(named("GET"), "500 InternalError Dfw file is not found.");
        EXPECT_EQ(named("DELETE"), "200 null");
        EXPECT_EQ(open(":exports/x"), "404 FunctionNotFoundError libPlugin does not have a requested function.");
    }
}

}  // namespace
