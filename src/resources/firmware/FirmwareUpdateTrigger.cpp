// Makes a monitor update itself with the firmware that was transferred.
#include "resources/firmware/Firmware.h"

namespace torvo::bridge {

class FirmwareUpdateTrigger final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Post(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        const FWHidHandle handle = hidHandle(monitor);
        const ScopedMonitorLock lock(monitor);
        checkMonitorControl(firmwareLibrary()(NAMED(FWMonitorTriggerFirmwareUpdate))(handle), "Trigger firmware data.");
    }
};

template struct Entry<FirmwareUpdateTrigger>;

}  // namespace torvo::bridge
