#include "bridge/MonitorList.h"

#include <algorithm>
#include <array>

#include "bridge/Errors.h"

namespace torvo {

namespace {

// The text in a buffer whose last byte is kept for the NUL that may be missing.
template <std::size_t Size>
std::string boundedText(const std::array<char, Size>& buffer) {
    return {buffer.begin(), std::find(buffer.begin(), buffer.end() - 1, '\0')};
}

constexpr DmResult notFound = static_cast<DmResult>(0x80000000);

}  // namespace

DmResult readMonitorAddress(std::uint32_t index, MonitorAddress& address) {
    std::array<char, DM_SERIAL_SIZE> serial{};
    std::array<char, DM_PRODUCT_SIZE> product{};
    const DmResult result = DmCtrlGetSerialProduct(index, serial.data(), product.data(), 0);
    address = {boundedText(serial), boundedText(product)};
    return result;
}

void findMonitor(const std::string& serial, const std::string& product) {
    std::uint32_t count = 0;
    checkMonitorControl(DmCtrlGetNumMonitors(&count), "");
    count = std::min(count, maximumMonitors);
    for (std::uint32_t index = 0; index < count; ++index) {
        MonitorAddress address;
        checkMonitorControl(readMonitorAddress(index, address), "");
        if (address.serial == serial && address.product == product) return;
    }
    checkMonitorControl(notFound, "Monitor is not found.");
}

}  // namespace torvo
