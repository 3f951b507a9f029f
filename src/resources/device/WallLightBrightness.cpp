// The brightness of the wall light, in steps of its own range.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class WallLightBrightness final : public Setting<WallLightBrightness, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{
        Support{NAMED(DmCtrlSupportedWallLightBrightness)},
        Range{NAMED(DmCtrlGetRangeWallLightBrightness), "Get range wall light brightness."}};
    static constexpr Step get{NAMED(DmCtrlGetWallLightBrightness), "Get wall light brightness."};
    static constexpr Step set{NAMED(DmCtrlSetWallLightBrightness), "Set wall light brightness."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<WallLightBrightness>;

}  // namespace torvo::bridge
