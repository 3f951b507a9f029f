// The brightness of the power indicator, in steps of its own range.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class PowerLED final : public Setting<PowerLED, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedPowerLED)},
                                        Range{NAMED(DmCtrlGetRangePowerLED), "Get range power LED."}};
    static constexpr Step get{NAMED(DmCtrlGetPowerLED), "Get power LED."};
    static constexpr Step set{NAMED(DmCtrlSetPowerLED), "Set power LED."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<PowerLED>;

}  // namespace torvo::bridge
