// Firmware packages and the simulated firmware library, through the library's own functions.
#include <gmock/gmock.h>
#include <libdmc.h>
#include <libfwupdate.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "simulator/core/FirmwarePackage.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/World.h"

namespace {

using simulator::FirmwarePackage;
using simulator::Json;
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
    EXPECT_EQ(simulator::readPackage(sound).payload, package.payload);
    for (const auto& bytes : broken) EXPECT_THROW(simulator::readPackage(bytes), std::invalid_argument) << bytes;
    for (const auto version :
         {"", "1.2.3.4", "1.2.3.4.5.6", "1.2.3.4.5.", "1..3.4.5", "01.2.3.4.5", "1.2.3.4.4294967296"})
        EXPECT_THROW(simulator::parseVersion(version), std::invalid_argument) << version;
}

class FirmwareLibrary : public testing::Test {
 protected:
    FirmwareLibrary() {
        std::filesystem::create_directories(folder);
        Json scenario = simulator::World::builtInScenario();
        scenario["firmware"]["blockMilliseconds"] = 0;
        simulator::loadScenario(scenario);
    }
    ~FirmwareLibrary() override {
        EXPECT_EQ(simulator::openHandles(), Json::object());
        EXPECT_THAT(simulator::takeHandleFaults(), IsEmpty());
        std::filesystem::remove_all(folder);
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
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("pell_" + std::to_string(std::random_device()()));
};

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
