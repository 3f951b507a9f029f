// Sends a package to a monitor. The request lasts as long as the transfer; meanwhile the page receives an event
// "transferFirmwareData" for each step.
#include <QtWebKitBridgeHelper.h>
#include <libdmc/monitors.h>

#include "bridge/MonitorList.h"
#include "pocketjson/Serializer.h"
#include "resources/firmware/Firmware.h"

namespace torvo::bridge {

namespace {

/// Whether a connected monitor has this HID handle, and which one.
bool findConnected(FWHidHandle wanted, MonitorAddress& address) {
    for (std::uint32_t index = 0; index < maximumMonitors && !isFailure(readMonitorAddress(index, address)); ++index) {
        FWHidHandle handle = nullptr;
        const DmResult result = gated(DmCtrlGetHIDHandle)(address.serial, address.product, &handle);
        if (!isFailure(result) && handle == wanted) return true;
    }
    return false;
}

void reportProgress(const TransferProgress& progress, FWHidHandle handle) {
    MonitorAddress address;
    if (!findConnected(handle, address)) return;
    const Value event{{"serial", address.serial},
                      {"product", address.product},
                      {"transferredBlock", progress.transferredBlocks},
                      {"blockCount", progress.blockCount},
                      {"transferredBytes", progress.transferredBytes},
                      {"totalBytes", progress.totalBytes}};
    std::string text;
    pocketjson::write(event, text);
    gated(BridgeHelperDispatchEvent)("transferFirmwareData", text.c_str());
}

/// Called by the firmware library, on whatever thread. Never asks it to stop; an event that cannot be sent is dropped.
std::int32_t onProgress(const TransferProgress* progress, void* handle) noexcept {
    try {
        if (progress) reportProgress(*progress, handle);
    } catch (...) {
    }
    return 1;
}

}  // namespace

class FirmwareUpdateTransfer final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Post(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const std::string& identifier = request.data().get("dfwFile").text();
        checkRequest(!identifier.empty(), "dfwFile is not found.");
        const FWHidHandle handle = hidHandle(monitor);
        const DfwFileManager::Owner file = findDfwFile(identifier);
        const ScopedMonitorLock lock(monitor);
        checkMonitorControl(
            firmwareLibrary()(NAMED(FWMonitorTransferFirmwareData))(handle, file.get(), onProgress, handle),
            "Transfer firmware data.");
    }
};

template struct Entry<FirmwareUpdateTransfer>;

}  // namespace torvo::bridge
