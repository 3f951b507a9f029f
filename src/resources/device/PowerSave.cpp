// How the monitor saves power; a number of the library. "supportsLow" asks for the setting low.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class PowerSave final : public Setting<PowerSave, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedPowerSaveSetting)},
                                        Support{"supportsLow", NAMED(DmCtrlSupportedPowerSaveSettingV2)}};
    static constexpr Step get{NAMED(DmCtrlGetPowerSaveSettingV2), "Get PowerSave."};
    static constexpr Step set{NAMED(DmCtrlSetPowerSaveSettingV2), "Set PowerSave."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<PowerSave>;

}  // namespace torvo::bridge
