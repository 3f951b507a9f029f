// The picture mode, by its number: 0 to count - 1.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Mode final : public Setting<Mode, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedMode}, Read{"count", DmCtrlGetModeCount, "Get mode."}};
    static constexpr Step get{DmCtrlGetMode, "Get mode."};
    static constexpr Step set{DmCtrlSetMode, "Set mode."};
    static constexpr Check checks[] = {{isPresent, "data is empty."}, {isNumber, "data must be number."}};
};

template struct Entry<Mode>;

}  // namespace torvo::bridge
