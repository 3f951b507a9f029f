// Firmware packages and the simulated firmware library, through the library's own functions.
#include <gmock/gmock.h>
#include <libfwupdate.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "simulator/core/FirmwarePackage.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/World.h"

namespace {

using simulator::FirmwarePackage;
using simulator::Json;
using simulator::Recording;
using simulator::simulate;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr FirmwareVersionRecord newVersion{2, 1, 0, 3, 7};

FirmwarePackage package(const char* product = "TQ271-P", FirmwareVersionRecord version = newVersion) {
    return {product, version, 10, "five blocks, of which the last one is shorter"};
}

std::uint32_t code(DmResult result) {
    return static_cast<std::uint32_t>(result);
}

TEST(FirmwarePackages, AreReadAsWritten) {
    for (const auto product : {"TQ271-P", ""}) {
        const auto read = simulator::readPackage(simulator::writePackage(package(product)));
        EXPECT_EQ(read.product, product);
        EXPECT_EQ(simulator::versionText(read.version), "2.1.0.3.7");
        EXPECT_EQ(read.blockCount(), 5u);
        EXPECT_EQ(read.payload, package().payload);
    }
    EXPECT_THROW(simulator::writePackage(package("a\nb")), std::invalid_argument);
}

TEST(FirmwarePackages, AreRefusedWhenBroken) {
    const auto sound = simulator::writePackage(package());
    const auto with = [&](const std::string& line, const std::string& other) {
        auto bytes = sound;
        return bytes.replace(bytes.find(line), line.size(), other);
    };
    const std::string broken[] = {
        simulator::damage(sound, simulator::PackageDefect::checksum),
        simulator::damage(sound, simulator::PackageDefect::truncated),
        simulator::damage(sound, simulator::PackageDefect::header),
        sound + "x",
        "",
        "pell-firmware 1\n\n",
        with("TQ271-P", "TB240"),
        with("2.1.0.3.7", "2.1.0.3.8"),
        with("version: ", "edition: "),
        with("block-size: 10", "block-size: 0"),
        with("size: 45", "size: 4294967341"),
        with(": TQ", ":TQ"),
    };
    for (const auto& bytes : broken) EXPECT_THROW(simulator::readPackage(bytes), std::invalid_argument) << bytes;
    for (const auto version :
         {"", "1.2.3.4", "1.2.3.4.5.6", "1.2.3.4.5.", "1..3.4.5", "01.2.3.4.5", "1.2.3.4.4294967296"})
        EXPECT_THROW(simulator::parseVersion(version), std::invalid_argument) << version;
}

class FirmwareLibrary : public testing::Test {
 protected:
    FirmwareLibrary() {
        std::filesystem::create_directories(folder);
        load({{"blockMilliseconds", 0}});
    }
    ~FirmwareLibrary() override {
        EXPECT_EQ(simulator::openHandles(), Json::object());
        EXPECT_THAT(simulator::takeHandleFaults(), IsEmpty());
        std::filesystem::remove_all(folder);
    }

    /// The built-in monitors, with what differs in the firmware of the first one.
    static void load(const Json& firmware) {
        auto scenario = simulator::World::builtInScenario();
        scenario["monitors"][0]["firmware"] = firmware;
        simulator::loadScenario(scenario);
    }

    FWDfwFile* open(const std::string& bytes) const {
        const auto path = folder / u8"f\u00fcnf \u4e94.dfw";
        std::ofstream(path, std::ios::binary) << bytes;
        return FWDfwFileCreateWithPath(path.c_str());
    }
    FWDfwFile* open(const FirmwarePackage& contents = package()) const {
        return open(simulator::writePackage(contents));
    }

    static FWHidHandle hid(const char* serial = "10000001", const char* product = "TQ271-P") {
        FWHidHandle handle = nullptr;
        DmCtrlGetHIDHandle(serial, product, &handle);
        return handle;
    }
    static std::uint32_t state() {
        std::uint32_t state = 99;
        FWMonitorGetTransferState(hid(), &state);
        return state;
    }
    static std::string version() {
        FirmwareVersionRecord version{};
        FWMonitorGetFirmwareVersion(hid(), &version);
        return simulator::versionText(version);
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("pell_" + std::to_string(std::random_device()()));
};

/// Counts the steps of a transfer; asks the simulator something at each, and stops it at the step that it is told.
struct Steps {
    std::uint32_t stopAt = 0;
    std::vector<std::uint32_t> bytes{};
    std::thread::id thread{};

    static std::int32_t take(const TransferProgress* progress, void* context) {
        auto& steps = *static_cast<Steps*>(context);
        steps.thread = std::this_thread::get_id();
        steps.bytes.push_back(progress->transferredBytes);
        DmCtrlSupportedBrightness("10000001", "TQ271-P");
        return progress->transferredBlocks != steps.stopAt;
    }
};

TEST_F(FirmwareLibrary, OpensAndDescribesPackages) {
    for (const auto defect : {simulator::PackageDefect::checksum, simulator::PackageDefect::truncated})
        EXPECT_EQ(open(simulator::damage(simulator::writePackage(package()), defect)), nullptr);
    EXPECT_EQ(FWDfwFileCreateWithUtf8Path("no such file"), nullptr);

    const auto file = open();
    const auto path = (folder / u8"f\u00fcnf \u4e94.dfw").u8string();
    const auto twin = FWDfwFileCreateWithUtf8Path(reinterpret_cast<const char*>(path.c_str()));
    ASSERT_TRUE(file && twin && file != twin);
    EXPECT_STREQ(FWDfwFileGetTargetMonitorProduct(file), "TQ271-P");
    EXPECT_EQ(FWDfwFileGetTargetFirmwareVersion(file).fpga, 7u);
    const FirmwareVersionRecord older{2, 1, 0, 2, 9};
    EXPECT_EQ(FWDfwFileSupportsMonitorFirmwareVersion(file, &older), 1);
    EXPECT_EQ(FWDfwFileSupportsMonitorFirmwareVersion(file, &newVersion), 0);
    const auto description = FWUtf8StringCreateDfwFileJsonString(file);
    EXPECT_EQ(Json::parse(FWUtf8StringGetCString(description))["version"]["osd"], 3);
    EXPECT_EQ(simulator::openHandles(), Json({{"package", 2}, {"string", 1}}));
    FWUtf8StringRelease(description);
    FWDfwFileRelease(file);
    FWDfwFileRelease(twin);

    const auto nameless = open(package(""));
    EXPECT_EQ(FWDfwFileGetTargetMonitorProduct(nameless), nullptr);
    FWDfwFileRelease(nameless);
}

TEST_F(FirmwareLibrary, TransfersBlockByBlock) {
    const struct {
        const char* what;
        Json conduct;
        std::uint32_t stopAt, result;
        std::vector<std::uint32_t> bytes;
        std::uint32_t state;
    } cases[] = {
        {"all of it", Json::object(), 0, 0, {10, 20, 30, 40, 45}, 2},
        {"stopped by the callback", Json::object(), 2, 0x8000000C, {10, 20}, 0},
        {"failing", {{"failAtBlock", 3}}, 0, 0x80000008, {10, 20}, 0},
        {"unplugged", {{"unplugAtBlock", 3}}, 0, 0x80010001, {10, 20, 30}, 99},
        {"unplugged at the end", {{"unplugAtBlock", 5}}, 0, 0x80010001, {10, 20, 30, 40, 45}, 99},
    };
    for (const bool callbackThread : {false, true})
        for (const auto& test : cases) {
            SCOPED_TRACE(test.what);
            auto conduct = test.conduct;
            conduct.update({{"callbackThread", callbackThread}, {"blockMilliseconds", 0.1}});
            load(conduct);
            const auto file = open();
            Recording recording;
            Steps steps{test.stopAt};
            EXPECT_EQ(code(FWMonitorTransferFirmwareData(hid(), file, Steps::take, &steps)), test.result);
            EXPECT_EQ(steps.bytes, test.bytes);
            EXPECT_EQ(steps.thread != std::this_thread::get_id(), callbackThread);
            EXPECT_EQ(recording.calls.size(), steps.bytes.size() + 2) << "the callback's own calls are recorded, too";
            EXPECT_EQ(state(), test.state);
            simulate({{"simulate", "plug"}, {"product", "TQ271-P"}, {"serial", "10000001"}});
            DmCtrlFind(0, 0);
            EXPECT_EQ(version(), "2.0.1.5.3") << "the monitor runs what it ran";
            FWDfwFileRelease(file);
        }
}

TEST_F(FirmwareLibrary, JudgesPackagesAndRefusesOtherProducts) {
    const struct {
        const char* product;
        FirmwareVersionRecord version;
        std::uint32_t check, transfer;
    } cases[] = {{"TQ271-P", newVersion, 0, 0},
                 {"TB240", newVersion, 1, 0x8000001A},
                 {"", newVersion, 1, 0x8000001A},
                 {"TQ271-P", {2, 0, 1, 5, 3}, 2, 0},
                 {"TQ271-P", {1, 9, 9, 9, 9}, 3, 0}};
    for (const auto& test : cases) {
        const auto file = open(package(test.product, test.version));
        EXPECT_EQ(FWDfwFileCheckMonitor(file, hid()), test.check);
        EXPECT_EQ(FWDfwFileSupportsMonitor(file, hid()), test.check == 0);
        EXPECT_EQ(code(FWMonitorTransferFirmwareData(hid(), file, nullptr, nullptr)), test.transfer);
        FWDfwFileRelease(file);
    }
    EXPECT_EQ(FWMonitorSupportsFirmwareUpdateV4(hid()), 1);
    EXPECT_EQ(FWMonitorSupportsFirmwareUpdateV4(hid("10000002", "TB240")), 0);
    EXPECT_EQ(FWMonitorSupportsFirmwareUpdate(hid("10000002", "TB240")), 1);
    EXPECT_EQ(FWMonitorSupportsFirmwareUpdate(nullptr), 0);
}

TEST_F(FirmwareLibrary, UpdatesWhenTriggered) {
    const auto file = open();
    for (const std::uint32_t polls : {0u, 2u}) {
        load({{"updatePolls", polls}});
        EXPECT_EQ(code(FWMonitorTriggerFirmwareUpdate(hid())), 0x80000015) << "nothing was transferred";
        EXPECT_EQ(FWMonitorTransferFirmwareData(hid(), file, nullptr, nullptr), 0);
        DmCtrlReset("10000001", "TQ271-P", 0);
        EXPECT_EQ(FWMonitorTriggerFirmwareUpdate(hid()), 0);
        for (std::uint32_t poll = 0; poll < polls; ++poll) {
            EXPECT_EQ(version(), "2.0.1.5.3");
            EXPECT_EQ(code(FWMonitorTransferFirmwareData(hid(), file, nullptr, nullptr)), 0x80000012);
            EXPECT_EQ(state(), 3u);
        }
        EXPECT_EQ(state(), 0u);
        EXPECT_EQ(version(), "2.1.0.3.7");
    }
    FWDfwFileRelease(file);
}

TEST_F(FirmwareLibrary, TransfersToTwoMonitorsAtOnceAndServesOthersMeanwhile) {
    static std::atomic<int> arrived;
    arrived = 0;
    const auto meet = [](const TransferProgress* progress, void* monitor) -> std::int32_t {
        if (progress->transferredBlocks > 1) return 1;
        const auto other = DmCtrlSetBrightnessForStep("10000001", "TB240", 7);  // a third monitor
        const auto again = FWMonitorTransferFirmwareData(monitor, nullptr, nullptr, nullptr);
        ++arrived;
        for (int i = 0; arrived < 2 && i < 5000; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return arrived == 2 && other == 0 && again < 0;
    };
    const auto first = open(), second = open(package("TB240"));
    std::uint32_t codes[2] = {1, 1};
    const auto transfer = [&](int i, FWHidHandle monitor, FWDfwFile* file) {
        codes[i] = code(FWMonitorTransferFirmwareData(monitor, file, meet, monitor));
    };
    std::thread thread(transfer, 0, hid(), first);
    transfer(1, hid("10000002", "TB240"), second);
    thread.join();
    EXPECT_THAT(codes, ElementsAre(0u, 0u));
    FWDfwFileRelease(first);
    FWDfwFileRelease(second);
    EXPECT_EQ(simulator::takeHandleFaults().size(), 2u) << "the null packages";
}

TEST_F(FirmwareLibrary, FindsMisusedHandles) {
    const auto log = (folder / "log").string();
#ifdef _WIN32
    _putenv_s("PELL_SIMULATOR_HANDLES", log.c_str());
#else
    setenv("PELL_SIMULATOR_HANDLES", log.c_str(), 1);
#endif
    const auto releaseAtOnce = [](const TransferProgress* progress, void* file) -> std::int32_t {
        if (progress->transferredBlocks == 1) FWDfwFileRelease(static_cast<FWDfwFile*>(file));
        return 1;
    };
    const auto file = open();
    const auto number = std::to_string(reinterpret_cast<std::uintptr_t>(file));
    EXPECT_EQ(FWMonitorTransferFirmwareData(hid(), file, releaseAtOnce, file), 0);
    FWDfwFileRelease(file);
    EXPECT_EQ(FWDfwFileGetTargetMonitorProduct(file), nullptr);
    FWUtf8StringRelease(nullptr);
    EXPECT_THAT(simulator::takeHandleFaults(),
                ElementsAre("FWDfwFileRelease: package " + number + " is in use",
                            "FWDfwFileRelease: there is no open package " + number,
                            "FWDfwFileGetTargetMonitorProduct: there is no open package " + number,
                            "FWUtf8StringRelease: there is no open string 0"));
#ifdef _WIN32
    _putenv_s("PELL_SIMULATOR_HANDLES", "");
#else
    unsetenv("PELL_SIMULATOR_HANDLES");
#endif
    std::ifstream stream(log);
    const std::string lines(std::istreambuf_iterator<char>(stream), {});
    EXPECT_EQ(lines, "open package " + number + "\nrelease package " + number + "\nrelease package " + number +
                         "\nrelease string 0\n");
}

TEST_F(FirmwareLibrary, TellsDeviceVersions) {
    FWDeviceProfile* profile = nullptr;
    ASSERT_EQ(FWDeviceProfileCreateFromMonitor(hid(), &profile), 0);
    const auto file = open();
    char device[20];
    std::uint32_t size = 0;
    EXPECT_EQ(FWDeviceProfileGetDeviceID(profile, nullptr, &size), 0);
    EXPECT_EQ(size, sizeof "TQ271-P/01");
    EXPECT_EQ(FWDeviceProfileGetDeviceID(profile, device, &size), 0);
    EXPECT_STREQ(device, "TQ271-P/01");
    --size;
    EXPECT_EQ(code(FWDeviceProfileGetDeviceID(profile, device, &size)), 0x80000003);
    simulate({{"simulate", "return"}, {"function", "FWDeviceProfileGetDeviceID"}, {"result", 0}, {"outputs", {4000}}});
    EXPECT_EQ(FWDeviceProfileGetDeviceID(profile, nullptr, &size), 0);
    EXPECT_EQ(size, 4000u);

    FirmwareVersionRecord version{};
    EXPECT_EQ(FWMonitorGetDeviceVersion(hid(), profile, device, &version), 0);
    EXPECT_EQ(version.osd, 5u);
    EXPECT_EQ(code(FWMonitorGetDeviceVersion(hid(), profile, "TB240/03", &version)), 0x80000001);
    EXPECT_EQ(FWMonitorGetDeviceVersionAfterUpdate(hid(), profile, file, device, &version), 0);
    char text[20];
    size = sizeof text;
    EXPECT_EQ(FWDeviceProfileGetVersionString(profile, &version, text, &size), 0);
    EXPECT_STREQ(text, "2.1.0.3.7");
    FWDeviceProfileRelease(profile);
    FWDfwFileRelease(file);
}

TEST_F(FirmwareLibrary, ObeysScriptsAndJournals) {
    const auto file = open();
    const auto number = reinterpret_cast<std::uintptr_t>(file);
    simulate({{"simulate", "return"}, {"function", "FWDfwFileCreateWithPath"}, {"result", 0}});
    EXPECT_EQ(open(), nullptr);
    simulate({{"simulate", "return"},
              {"function", "FWMonitorTransferFirmwareData"},
              {"result", 0x80000013u},
              {"product", "TB240"},
              {"serial", "10000002"}});
    Recording recording;
    const auto monitor = hid("10000002", "TB240");
    EXPECT_EQ(code(FWMonitorTransferFirmwareData(monitor, file, nullptr, nullptr)), 0x80000013);
    EXPECT_EQ(code(FWMonitorTransferFirmwareData(nullptr, file, nullptr, nullptr)), 0x80010001);
    EXPECT_EQ(recording.calls[1]["arguments"], Json({"TB240/10000002", number}));
    EXPECT_EQ(recording.calls[2]["arguments"], Json({nullptr, number}));
    FWDfwFileRelease(file);
}

TEST_F(FirmwareLibrary, HidHandlesAndLocksEndWithTheConnection) {
    const auto handle = hid();
    EXPECT_EQ(hid(), handle);
    EXPECT_NE(hid("10000001", "TB240"), handle);
    EXPECT_EQ(code(DmCtrlUnlockMonitor("10000001", "TQ271-P")), 0x80000015);
    EXPECT_EQ(DmCtrlLockMonitor("10000001", "TQ271-P"), 0);
    EXPECT_EQ(code(DmCtrlLockMonitor("10000001", "TQ271-P")), 0x8000000F);
    EXPECT_THAT(simulator::lockedMonitors(), ElementsAre("TQ271-P/10000001"));
    for (const auto what : {"unplug", "plug"})
        simulate({{"simulate", what}, {"product", "TQ271-P"}, {"serial", "10000001"}});
    DmCtrlFind(0, 0);
    EXPECT_NE(hid(), handle);
    std::uint32_t state = 0;
    EXPECT_EQ(code(FWMonitorGetTransferState(handle, &state)), 0x80010001);
    EXPECT_THAT(simulator::lockedMonitors(), IsEmpty());
}

TEST_F(FirmwareLibrary, RefusesWrongFirmwareInScenarios) {
    for (const Json& wrong : {Json{{"version", "2"}}, Json{{"failAt", 1}}, Json{{"callbackThread", 1}}})
        EXPECT_THROW(load(wrong), std::invalid_argument) << wrong;
}

}  // namespace
