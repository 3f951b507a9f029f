#include "bridge/MonitorList.h"

#include <algorithm>

#include "bridge/Errors.h"
#include "runtime/Gate.h"

namespace torvo {

DmResult readMonitorAddress(std::uint32_t index, MonitorAddress& address) {
    address = {};
    const DmResult result = gated(DmCtrlGetSerialProduct)(index, address.serial, address.product, 0);
    address.serial[DM_SERIAL_SIZE - 1] = '\0';
    address.product[DM_PRODUCT_SIZE - 1] = '\0';
    return result;
}

void requireConnected(std::string_view serial, std::string_view product) {
    std::uint32_t count = 0;
    checkMonitorControl(gated(DmCtrlGetNumMonitors)(&count), "");
    count = std::min(count, maximumMonitors);
    for (std::uint32_t index = 0; index < count; ++index) {
        MonitorAddress address;
        checkMonitorControl(readMonitorAddress(index, address), "");
        if (address.serial == serial && address.product == product) return;
    }
    checkMonitorControl(DmFailed, "Monitor is not found.");
}

}  // namespace torvo
