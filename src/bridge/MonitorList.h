// The monitors that the monitor-control library has found.
#pragma once

#include <libdmc/monitors.h>

#include <cstdint>
#include <string_view>

namespace torvo {

/// No list is read further than this, however many monitors a library claims to have.
inline constexpr std::uint32_t maximumMonitors = 1024;

/// NUL-terminated texts.
struct MonitorAddress {
    char serial[DM_SERIAL_SIZE];
    char product[DM_PRODUCT_SIZE];
};

/// Reads the monitor at an index; the result is the library's. The texts are at most 8 and 16 bytes, also when the
/// library forgets their NUL.
DmResult readMonitorAddress(std::uint32_t index, MonitorAddress& address);

/// "DmError" unless such a monitor is connected, both texts being equal byte for byte.
void requireConnected(std::string_view serial, std::string_view product);

}  // namespace torvo
