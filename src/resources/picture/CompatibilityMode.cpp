// Whether the monitor behaves as an older model would.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class CompatibilityMode final : public Setting<CompatibilityMode, Boolean> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedCompatibilityMode)}};
    static constexpr Step get{NAMED(DmCtrlGetCompatibilityMode), "Get compatibility mode."};
    static constexpr Step set{NAMED(DmCtrlSetCompatibilityMode), "Set compatibility mode."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<CompatibilityMode>;

}  // namespace torvo::bridge
