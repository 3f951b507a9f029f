// A monitor's firmware, and what a package means to it.
#include "simulator/libfwupdate/FirmwareCall.h"

using simulator::Answer;
using simulator::answer;
using simulator::Firmware;
using simulator::FirmwareCall;
using simulator::isNewer;
using simulator::Monitor;
using simulator::World;
namespace result = simulator::result;

namespace {

enum class Fit : std::uint32_t { fits, otherProduct, sameVersion, olderVersion, noMonitor, noPackage };

Fit judge(const FWDfwFile* file, const Monitor* monitor) {
    if (!file) return Fit::noPackage;
    if (!monitor) return Fit::noMonitor;
    if (file->package.product != monitor->product) return Fit::otherProduct;
    if (isNewer(file->package.version, monitor->firmware.version)) return Fit::fits;
    return isNewer(monitor->firmware.version, file->package.version) ? Fit::olderVersion : Fit::sameVersion;
}

int32_t supports(const char* function, FWHidHandle monitor, const char* feature) {
    return FirmwareCall(function, monitor).test(feature);
}

}  // namespace

uint32_t FWDfwFileCheckMonitor(FWDfwFile* file, FWHidHandle monitor) {
    FirmwareCall call(__func__, file, monitor);
    const auto opened = call.find(file);
    return call.run([&](World& world) -> Answer {
        return static_cast<std::uint32_t>(judge(opened.get(), world.findMonitor(monitor)));
    });
}

int32_t FWDfwFileSupportsMonitor(FWDfwFile* file, FWHidHandle monitor) {
    FirmwareCall call(__func__, file, monitor);
    const auto opened = call.find(file);
    return call.test(nullptr, [&](Monitor& found) { return judge(opened.get(), &found) == Fit::fits; });
}

int32_t FWMonitorSupportsFirmwareUpdate(FWHidHandle monitor) {
    return supports(__func__, monitor, "firmwareUpdate");
}

int32_t FWMonitorSupportsFirmwareUpdateV4(FWHidHandle monitor) {
    return supports(__func__, monitor, "firmwareUpdateV4");
}

DmResult FWMonitorGetTransferState(FWHidHandle monitor, uint32_t* state) {
    return FirmwareCall(__func__, monitor)
        .run(
            [](Monitor& found) -> Answer {
                const auto polled = found.firmware.poll();
                if (polled == Firmware::State::gone) return result::connectionError;
                return answer({static_cast<std::uint32_t>(polled)});
            },
            {state});
}

DmResult FWMonitorGetFirmwareVersion(FWHidHandle monitor, FirmwareVersionRecord* version) {
    return FirmwareCall(__func__, monitor)
        .run([](Monitor& found) { return answer({&found.firmware.version}); }, {version});
}

DmResult FWMonitorTriggerFirmwareUpdate(FWHidHandle monitor) {
    return FirmwareCall(__func__, monitor).run([](Monitor& found) {
        if (found.firmware.state != Firmware::State::transferred) return result::invalidPrecondition;
        found.firmware.update();
        return result::success;
    });
}
