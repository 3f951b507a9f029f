// The control of the presence sensor; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LumisaveSenseControl final : public Setting<LumisaveSenseControl, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLumisaveSenseControl)}};
    static constexpr Step get{NAMED(DmCtrlGetLumisaveSenseControl), "Get LumisaveSense control."};
    static constexpr Step set{NAMED(DmCtrlSetLumisaveSenseControl), "Set LumisaveSense control."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<LumisaveSenseControl>;

}  // namespace torvo::bridge
