// Whether the backlight is on.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class BacklightState final : public Setting<BacklightState, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedBackLight}};
    static constexpr Step get{DmCtrlGetBackLightState, "Get backlight state."};
    static constexpr Step set{DmCtrlSetBackLightState, "Set backlight state."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<BacklightState>;

}  // namespace torvo::bridge
