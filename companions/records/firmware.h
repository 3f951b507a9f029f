// Records of firmware updates.
#pragma once

#include <libfwupdate.h>
#include <records/Member.h>

namespace companions {

template <>
inline constexpr auto members<FirmwareVersionRecord> = std::tuple(
    Member{"system", &FirmwareVersionRecord::system}, Member{"controller", &FirmwareVersionRecord::controller},
    Member{"frontEnd", &FirmwareVersionRecord::frontEnd}, Member{"osd", &FirmwareVersionRecord::osd},
    Member{"fpga", &FirmwareVersionRecord::fpga});

}  // namespace companions
