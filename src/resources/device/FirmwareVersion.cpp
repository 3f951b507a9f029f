// The versions of the firmware that works now.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class FirmwareVersion final : public Setting<FirmwareVersion, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedFirmwareVersion}};
    static constexpr Step get{DmCtrlGetFirmwareVersion, "Get firmware version."};
};

template struct Entry<FirmwareVersion>;

}  // namespace torvo::bridge
