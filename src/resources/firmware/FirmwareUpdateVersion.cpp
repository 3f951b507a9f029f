// The versions of a monitor's firmware.
#include <records/firmware.h>

#include "bridge/Records.h"
#include "resources/firmware/Firmware.h"

namespace torvo::bridge {

class FirmwareUpdateVersion final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        const FWHidHandle handle = hidHandle(monitor);
        const ScopedMonitorLock lock(monitor);
        FirmwareVersionRecord version{};
        checkMonitorControl(firmwareLibrary()(NAMED(FWMonitorGetFirmwareVersion))(handle, &version),
                            "Get firmware version.");
        result.value = toValue(version);
    }
};

template struct Entry<FirmwareUpdateVersion>;

}  // namespace torvo::bridge
