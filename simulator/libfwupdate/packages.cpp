// Packages: opened, described, closed.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "simulator/core/Simulator.h"
#include "simulator/libfwupdate/FirmwareCall.h"

using simulator::Answer;
using simulator::answer;
using simulator::FirmwareCall;
using simulator::Input;
using simulator::isNewer;
using simulator::Json;
using simulator::World;
namespace result = simulator::result;

namespace {

/// The library's end is logged: nobody may release anything after it, and what is still open goes with its code.
const struct Life {
    Life() { simulator::logHandles("load"); }
    ~Life() {
        simulator::logHandles("unload");
        simulator::releaseHandles();
    }
} life;

FWDfwFile* createPackage(const char* function, const std::filesystem::path& path) {
    const auto text = path.u8string();
    return FirmwareCall(function, std::string(text.begin(), text.end())).create<FWDfwFile>([&] {
        std::ifstream stream(path, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        try {
            return std::make_shared<FWDfwFile>(FWDfwFile{simulator::readPackage(bytes)});
        } catch (const std::invalid_argument&) {
            return std::shared_ptr<FWDfwFile>();
        }
    });
}

}  // namespace

FWDfwFile* FWDfwFileCreateWithPath(const FWPathCharacter* path) {
    return createPackage(__func__, path);
}

FWDfwFile* FWDfwFileCreateWithUtf8Path(const char* path) {
    const std::string text = path;
    return createPackage(__func__, std::u8string(text.begin(), text.end()));
}

void FWDfwFileRelease(FWDfwFile* file) {
    FirmwareCall(__func__, file).release(file);
}

const char* FWDfwFileGetTargetMonitorProduct(FWDfwFile* file) {
    return FirmwareCall(__func__, file).text(file, [](const FWDfwFile& opened) { return opened.package.product; });
}

FirmwareVersionRecord FWDfwFileGetTargetFirmwareVersion(FWDfwFile* file) {
    FirmwareCall call(__func__, file);
    const auto opened = call.find(file);
    FirmwareVersionRecord version{};
    call.run([&](World&) { return opened ? answer({&opened->package.version}) : Answer(result::invalidArgument); },
             {&version});
    return version;
}

int32_t FWDfwFileSupportsMonitorFirmwareVersion(FWDfwFile* file, const FirmwareVersionRecord* version) {
    FirmwareCall call(__func__, file, version);
    const auto opened = call.find(file);
    return call.run(
        [&](World&) -> Answer { return opened && version && isNewer(opened->package.version, *version) ? 1 : 0; });
}

FWUtf8String* FWUtf8StringCreateDfwFileJsonString(FWDfwFile* file) {
    FirmwareCall call(__func__, file);
    const auto opened = call.find(file);
    return call.create<FWUtf8String>([&] {
        if (!opened) return std::shared_ptr<FWUtf8String>();
        const auto& package = opened->package;
        const Json description = {{"product", package.product},
                                  {"version", Input(&package.version).json()},
                                  {"blockSize", package.blockSize},
                                  {"blockCount", package.blockCount()},
                                  {"size", package.size()}};
        return std::make_shared<FWUtf8String>(FWUtf8String{simulator::writeJson(description)});
    });
}

const char* FWUtf8StringGetCString(FWUtf8String* text) {
    return FirmwareCall(__func__, text).text(text, [](const FWUtf8String& string) { return string.text; });
}

void FWUtf8StringRelease(FWUtf8String* text) {
    FirmwareCall(__func__, text).release(text);
}
