// Packages: opened, described, closed.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <stdexcept>

#include "simulator/libfwupdate/FirmwareCall.h"

using simulator::Answer;
using simulator::answer;
using simulator::FirmwareCall;
using simulator::Json;
using simulator::World;

namespace {

/// The library's end is logged: nobody may release anything after it.
const struct Life {
    Life() { simulator::logHandles("load"); }
    ~Life() { simulator::logHandles("unload"); }
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
    FirmwareCall call(__func__, file);
    const char* product = nullptr;
    call.text(
        [&](World&) {
            const auto opened = call.find(file);
            return opened && !opened->package.product.empty() ? answer(opened->package.product) : Answer{0};
        });
    return product;
}
