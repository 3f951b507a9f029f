// How the monitor powers devices through USB-C; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class USBPowerDelivery final : public Setting<USBPowerDelivery, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedUSBPowerDelivery)}};
    static constexpr Step get{NAMED(DmCtrlGetUSBPowerDelivery), "Get USB power delivery."};
};

template struct Entry<USBPowerDelivery>;

}  // namespace torvo::bridge
