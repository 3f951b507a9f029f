// What the presence sensor makes of the power; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LumisaveSensePowerState final : public Setting<LumisaveSensePowerState, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLumisaveSensePowerState)}};
    static constexpr Step get{NAMED(DmCtrlGetLumisaveSensePowerState), "Get LumisaveSense power state."};
};

template struct Entry<LumisaveSensePowerState>;

}  // namespace torvo::bridge
