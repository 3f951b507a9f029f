// The presence sensor: off, on, or a further mode; a number of the library. "available" asks for the further modes.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LumisaveSense final : public Setting<LumisaveSense, Number> {
 public:
    using Setting::Setting;

    static bool isNumberOrBoolean(const Value& data) noexcept { return isNumber(data) || isBoolean(data); }

    static constexpr std::tuple queries{
        Support{NAMED(DmCtrlSupportedLumisaveSense)},
        Support{"available", NAMED(DmCtrlSupportedLumisaveSenseV2)},
    };
    static constexpr Step get{NAMED(DmCtrlGetLumisaveSenseV2), "Get LumisaveSense."};
    static constexpr Step set{NAMED(DmCtrlSetLumisaveSenseV2), "Set LumisaveSense."};
    static constexpr Check checks[] = {{isNumberOrBoolean, "data must be number or boolean."}};
};

template struct Entry<LumisaveSense>;

}  // namespace torvo::bridge
