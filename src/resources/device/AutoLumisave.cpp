// Whether the monitor follows the ambient light with its brightness.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class AutoLumisave final : public Setting<AutoLumisave, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedBrightRegulator}};
    static constexpr Step get{DmCtrlGetBrightRegulator, "Get AutoLumisave."};
    static constexpr Step set{DmCtrlSetBrightRegulator, "Set AutoLumisave."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<AutoLumisave>;

}  // namespace torvo::bridge
