// Firmware packages and the simulated firmware library, through the library's own functions.
#include <gmock/gmock.h>
#include <libdmc.h>
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

const FirmwarePackage package{"TQ271-P", {2, 1, 0, 3, 7}, 10, "five blocks, of which the last one is shorter"};

std::uint32_t code(DmResult result) {
    return static_cast<std::uint32_t>(result);
}

TEST(FirmwarePackages, AreRefusedWhenBroken) {
    const auto sound = simulator::writePackage(package);
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

    FWDfwFile* open() const {
        const auto path = folder / u8"f\u00fcnf \u4e94.dfw";
        std::ofstream(path, std::ios::binary) << simulator::writePackage(package);
        return FWDfwFileCreateWithPath(path.c_str());
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

/// Counts the steps of a transfer; calls the simulator at each, and stops it at the given step.
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

TEST_F(FirmwareLibrary, TransfersBlockByBlock) {
    const struct {
        const char* what;
        Json behaviour;
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
            auto behaviour = test.behaviour;
            behaviour.update({{"callbackThread", callbackThread}, {"blockMilliseconds", 0.1}});
            load(behaviour);
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
            EXPECT_EQ(state(), test.result == 0 ? 2u : 0u);
            EXPECT_EQ(version(), "2.0.1.5.3") << "the monitor runs what it ran";
            FWDfwFileRelease(file);
        }
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

}  // namespace
