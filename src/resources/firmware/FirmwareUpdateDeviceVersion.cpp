// The version of a monitor's device as a text: the current one, or the one after the update with a package.
#include <algorithm>

#include "resources/firmware/Firmware.h"
#include "runtime/Owned.h"

namespace torvo::bridge {

namespace {

/// What the firmware library knows of the monitor's device.
Owned<FWDeviceProfile> createProfile(FWHidHandle handle) {
    const Release release(firmwareLibrary()(NAMED(FWDeviceProfileRelease)));
    FWDeviceProfile* profile = nullptr;
    checkMonitorControl(firmwareLibrary()(NAMED(FWDeviceProfileCreateFromMonitor))(handle, &profile),
                        "Get device profile.");
    checkInternal(profile != nullptr, "Device profile is not available.");
    return {profile, release};
}

/// A text in two steps: `read(buffer, &size)` gives the size without a buffer, and fills one of that size.
template <class Read>
std::string readText(Read read, const char* lengthAction, const char* action) {
    std::uint32_t size = 0;
    checkMonitorControl(read(nullptr, &size), lengthAction);
    size = std::min(size, Monitor::maximumText);
    std::string text(size, '\0');
    checkMonitorControl(read(text.data(), &size), action);
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}

}  // namespace

class FirmwareUpdateDeviceVersion final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        const FWHidHandle handle = hidHandle(monitor);
        const ScopedMonitorLock lock(monitor);
        const Owned<FWDeviceProfile> profile = createProfile(handle);
        DfwFileManager::Owner file;
        if (query.has("dfwFile")) file = findDfwFile(query.get("dfwFile").text());

        const auto readDevice = firmwareLibrary()(NAMED(FWDeviceProfileGetDeviceID));
        const std::string device =
            readText([&](char* buffer, std::uint32_t* size) { return readDevice(profile.get(), buffer, size); },
                     "Get device ID length.", "Get device ID.");
        const FirmwareVersionRecord version = readVersion(handle, profile.get(), file.get(), device.c_str());
        const auto readVersionText = firmwareLibrary()(NAMED(FWDeviceProfileGetVersionString));
        result.value = readText(
            [&](char* buffer, std::uint32_t* size) { return readVersionText(profile.get(), &version, buffer, size); },
            "Get device version string length.", "Get device version string.");
    }

    static FirmwareVersionRecord readVersion(FWHidHandle handle, FWDeviceProfile* profile, FWDfwFile* file,
                                             const char* device) {
        FirmwareVersionRecord version{};
        if (file)
            checkMonitorControl(
                firmwareLibrary()(NAMED(FWMonitorGetDeviceVersionAfterUpdate))(handle, profile, file, device, &version),
                "Get device version after update.");
        else
            checkMonitorControl(firmwareLibrary()(NAMED(FWMonitorGetDeviceVersion))(handle, profile, device, &version),
                                "Get device version.");
        return version;
    }
};

template struct Entry<FirmwareUpdateDeviceVersion>;

}  // namespace torvo::bridge
