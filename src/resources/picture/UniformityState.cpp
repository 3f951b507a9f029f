// Whether the uniformity of the panel is corrected.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class UniformityState final : public Setting<UniformityState, Boolean> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedUniformityEnable)}};
    static constexpr Step get{NAMED(DmCtrlGetUniformityEnable), "Get uniformity enable."};
    static constexpr Step set{NAMED(DmCtrlSetUniformityEnable), "Set uniformity enable."};
    static constexpr Check checks[] = {{isPresent, "data is empty."}};
};

template struct Entry<UniformityState>;

}  // namespace torvo::bridge
