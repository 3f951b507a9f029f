// The state of the wall light; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class WallLightState final : public Setting<WallLightState, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedWallLightStatus)}};
    static constexpr Step get{NAMED(DmCtrlGetWallLightStatus), "Get wall light status."};
    static constexpr Step set{NAMED(DmCtrlSetWallLightStatus), "Set wall light status."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<WallLightState>;

}  // namespace torvo::bridge
