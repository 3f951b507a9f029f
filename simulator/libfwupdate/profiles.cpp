// Device profiles, and versions of devices: those of the monitor's firmware.
#include "simulator/libfwupdate/FirmwareCall.h"

using simulator::Answer;
using simulator::answer;
using simulator::FirmwareCall;
using simulator::Monitor;
using simulator::Output;
using simulator::State;
using simulator::versionText;
using simulator::World;
namespace result = simulator::result;

namespace {

/// A text in two steps.
Answer text(const std::string& text, const char* buffer, const uint32_t* size) {
    if (!size) return result::invalidArgument;
    return buffer && *size <= text.size() ? Answer(result::invalidBufferSize) : answer({text});
}

bool isOf(const FWDeviceProfile* profile, const char* device, const Monitor& monitor) {
    return profile && device && profile->device == device && monitor.firmware.device == device;
}

}  // namespace

DmResult FWDeviceProfileCreateFromMonitor(FWHidHandle monitor, FWDeviceProfile** profile) {
    return FirmwareCall(__func__, monitor)
        .run(
            [](Monitor& found) {
                const auto made = std::make_shared<FWDeviceProfile>(FWDeviceProfile{found.firmware.device});
                return answer({simulator::Handles::number(State::instance().handles.open(made))});
            },
            {Output::handle(profile)});
}

void FWDeviceProfileRelease(FWDeviceProfile* profile) {
    FirmwareCall(__func__, profile).release(profile);
}

DmResult FWDeviceProfileGetDeviceID(FWDeviceProfile* profile, char* buffer, uint32_t* size) {
    FirmwareCall call(__func__, profile);
    const auto found = call.find(profile);
    return call.run([&](World&) { return found ? text(found->device, buffer, size) : Answer(result::invalidArgument); },
                    {Output::text(buffer, size)});
}

DmResult FWDeviceProfileGetVersionString(FWDeviceProfile* profile, const FirmwareVersionRecord* version, char* buffer,
                                         uint32_t* size) {
    FirmwareCall call(__func__, profile, version);
    const auto found = call.find(profile);
    return call.run(
        [&](World&) {
            return found && version ? text(versionText(*version), buffer, size) : Answer(result::invalidArgument);
        },
        {Output::text(buffer, size)});
}

DmResult FWMonitorGetDeviceVersion(FWHidHandle monitor, FWDeviceProfile* profile, const char* device,
                                   FirmwareVersionRecord* version) {
    FirmwareCall call(__func__, monitor, profile, device);
    const auto known = call.find(profile);
    return call.run(
        [&](Monitor& found) {
            return isOf(known.get(), device, found) ? answer({&found.firmware.version})
                                                    : Answer(result::invalidArgument);
        },
        {version});
}

DmResult FWMonitorGetDeviceVersionAfterUpdate(FWHidHandle monitor, FWDeviceProfile* profile, FWDfwFile* file,
                                              const char* device, FirmwareVersionRecord* version) {
    FirmwareCall call(__func__, monitor, profile, file, device);
    const auto known = call.find(profile);
    const auto opened = call.find(file);
    return call.run(
        [&](Monitor& found) -> Answer {
            if (!opened || !isOf(known.get(), device, found)) return result::invalidArgument;
            if (opened->package.product != found.product) return result::invalidData;
            return answer({&opened->package.version});
        },
        {version});
}
