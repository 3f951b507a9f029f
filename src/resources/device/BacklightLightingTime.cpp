// How long the backlight has been on, in hours.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class BacklightLightingTime final : public Setting<BacklightLightingTime, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedBackLightLightingTime}};
    static constexpr Step get{DmCtrlGetBackLightLightingTime, "Get backlight lighting time."};
};

template struct Entry<BacklightLightingTime>;

}  // namespace torvo::bridge
