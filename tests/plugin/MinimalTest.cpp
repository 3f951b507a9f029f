// The plug-in in an older world: libdmc has the ordinary imports only; libPlugin and the logging library are absent.
#include <filesystem>

#include "exports/ResourceTable.h"
#include "tests/plugin/Page.h"

namespace {

TEST(MinimalWorld, ServesTheOrdinaryAndLogsNothing) {
    Page page;
    const Answer answer = page.get("Brightness");
    EXPECT_EQ(summary(answer), "200 50");
    EXPECT_EQ(answer.log, "");
    EXPECT_EQ(page.get("Monitors").value.size(), 3U);
    EXPECT_EQ(summary(page.put("Hue", "12")), "200 null");
    EXPECT_EQ(summary(page.get("Hue")), "200 12");
}

TEST(MinimalWorld, AnswersNotFoundForWhatNeedsANewerFunction) {
    const std::string missing = "404 FunctionNotFoundError libdmc does not have a requested function.";
    Page page;
    std::size_t served = 0;
    for (const auto& row : torvo::exports::resourceTable) {
        if (std::string(row.name) != row.entry || !(row.methods & torvo::exports::Get)) continue;
        if (!*row.path || std::string(row.name).starts_with("FirmwareUpdate")) continue;
        const Answer answer = page.get(row.name, plainQuery(row.name));
        if (answer.status == 200)
            ++served;
        else
            EXPECT_EQ(summary(answer), missing) << row.name;
    }
    EXPECT_GT(served, 30U);
    for (const char* newer :
         {"QuickCheck", "LUTA", "PowerLED", "KVMSetting", "SignalInformation", "UDI", "SelfQCCalibration"})
        EXPECT_EQ(summary(page.get(newer)), missing) << newer;
    for (const char* older :
         {"Gamut", "Power", "InputPort", "KeyLock", "AssetTag", "FirmwareVersion", "Layout", "SelfCorrection"})
        EXPECT_EQ(page.get(older).status, 200) << older;
    // A part that is newer, beside one that is not.
    EXPECT_EQ(summary(page.get("USBSelection", R"({"supports":1})")), "200 true");
    EXPECT_EQ(summary(page.get("USBSelection")), missing);
    EXPECT_EQ(summary(page.get("SelfQCPairing", R"({"supports":1})")), missing);
    EXPECT_EQ(summary(page.get("SelfQCPairing")), "200 [0,1,2,3,4,5,6,7]");
    // The older feature is asked first, and found.
    EXPECT_EQ(summary(page.get("SelfCalibrationClockTime", R"({"supports":1})")), "200 true");
    page.returns("DmCtrlSupportedSelfCalibration", 0);
    EXPECT_EQ(summary(page.get("SelfCalibrationClockTime", R"({"supports":1})")), missing);
    // Setters that are newer than their getters.
    EXPECT_EQ(page.put("RangeExtension", "1").status, 404);
    EXPECT_EQ(page.put("Gain", R"({"red":1})").status, 404);
    EXPECT_EQ(page.put("Chromaticity", R"({"x":0.3})").status, 404);
    // The data is looked at before the library is.
    EXPECT_EQ(page.put("QuickCheck", "true").status, 400);
    EXPECT_EQ(page.put("SelfQCCalibrationTarget", "true").status, 400);
    EXPECT_EQ(page.put("SelfQCCalibrationTarget", "{}").status, 404);
}

TEST(MinimalWorld, HasNoFirmwareLibraryAndNoDirectoriesOfTheHost) {
    Page page;
    const char* const missing = "404 FunctionNotFoundError libfwupdate does not have a requested function.";
    for (const char* resource : {"FirmwareUpdate", "FirmwareUpdateVersion", "FirmwareUpdateDeviceVersion"})
        EXPECT_EQ(summary(page.get(resource)), missing) << resource;
    EXPECT_EQ(summary(page.ask("POST", "FirmwareUpdateTrigger")), missing);
    for (const char* resource : {"FileSystemDfwFile", "FileSystemDfwFile2"}) {
        const std::string program =
            "libdmc_x64" + std::filesystem::path(host::Plugin::defaultFile()).extension().string();
        const auto open = [&](const std::string& path) {
            return summary(page.call(resource, {R"({"method":"POST"})", "", "", Json{{"path", path}}.dump()}));
        };
        const auto named = [&](const char* method) {
            return summary(page.call(resource, host::Request{.method = method, .id = "no-such-identifier"}.texts()));
        };
        EXPECT_EQ(open(":executable/" + program), missing);
        EXPECT_EQ(open(":executable/no such file"), "400 BadRequestError Input path is not a file or not existed.");
        EXPECT_EQ(named("GET"), "500 InternalError Dfw file is not found.");
        EXPECT_EQ(named("DELETE"), "200 null");
        EXPECT_EQ(open(":exports/x"), "404 FunctionNotFoundError libPlugin does not have a requested function.");
    }
}

}  // namespace
