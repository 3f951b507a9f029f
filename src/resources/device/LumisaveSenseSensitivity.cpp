// The sensitivity of the presence sensor; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LumisaveSenseSensitivity final : public Setting<LumisaveSenseSensitivity, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLumisaveSenseSensitivity)}};
    static constexpr Step get{NAMED(DmCtrlGetLumisaveSenseSensitivity), "Get LumisaveSense sensitivity."};
    static constexpr Step set{NAMED(DmCtrlSetLumisaveSenseSensitivity), "Set LumisaveSense sensitivity."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<LumisaveSenseSensitivity>;

}  // namespace torvo::bridge
