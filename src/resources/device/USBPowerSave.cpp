// Whether the USB hub sleeps with the monitor.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class USBPowerSave final : public Setting<USBPowerSave, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedUSBPowerSave}};
    static constexpr Step get{DmCtrlGetUSBPowerSave, "Get USB power save."};
    static constexpr Step set{DmCtrlSetUSBPowerSave, "Set USB power save."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<USBPowerSave>;

}  // namespace torvo::bridge
