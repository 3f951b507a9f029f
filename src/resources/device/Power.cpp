// Whether the monitor is on. A PUT takes every kind of value but null.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Power final : public Setting<Power, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedPower}};
    static constexpr Step get{DmCtrlGetPower, "Get power."};
    static constexpr Step set{DmCtrlSetPower, "Set power."};
    static constexpr Check checks[] = {{isPresent, "data is empty."}};
};

template struct Entry<Power>;

}  // namespace torvo::bridge
