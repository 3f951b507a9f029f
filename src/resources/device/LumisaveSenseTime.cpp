// How long nobody must be there before the monitor sleeps; an index of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LumisaveSenseTime final : public Setting<LumisaveSenseTime, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLumisaveSenseTimeIndex)}};
    static constexpr Step get{NAMED(DmCtrlGetLumisaveSenseTimeIndex), "Get LumisaveSense time index."};
    static constexpr Step set{NAMED(DmCtrlSetLumisaveSenseTimeIndex), "Set LumisaveSense time index."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<LumisaveSenseTime>;

}  // namespace torvo::bridge
