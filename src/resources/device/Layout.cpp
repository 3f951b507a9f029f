// The layout of the screen, by its number: 0 to count - 1.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Layout final : public Setting<Layout, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedLayout},
                                        Read{"count", DmCtrlGetLayoutCount, "Get layout."}};
    static constexpr Step get{DmCtrlGetLayout, "Get layout."};
    static constexpr Step set{DmCtrlSetLayout, "Set layout."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<Layout>;

}  // namespace torvo::bridge
