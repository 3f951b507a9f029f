// The level of the presence sensor; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LumisaveSenseLevel final : public Setting<LumisaveSenseLevel, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLumisaveSenseLevel)}};
    static constexpr Step get{NAMED(DmCtrlGetLumisaveSenseLevel), "Get LumisaveSense level."};
    static constexpr Step set{NAMED(DmCtrlSetLumisaveSenseLevel), "Set LumisaveSense level."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<LumisaveSenseLevel>;

}  // namespace torvo::bridge
