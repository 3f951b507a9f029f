// Whether all windows share one colour setting.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class QVEnableWholeWindowColorSetting final : public Setting<QVEnableWholeWindowColorSetting, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedEnableWholeWindowColorSetting)}};
    static constexpr Step get{NAMED(DmCtrlGetEnableWholeWindowColorSetting),
                              "Get QV enable whole window color setting."};
    static constexpr Step set{NAMED(DmCtrlSetEnableWholeWindowColorSetting),
                              "Set QV enable whole window color setting."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<QVEnableWholeWindowColorSetting>;

}  // namespace torvo::bridge
