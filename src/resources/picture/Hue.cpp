// The hue of the whole picture, in steps.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Hue final : public Setting<Hue, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupported6ColorsHue},
                                        Range{DmCtrlGetRange6ColorsHue, "Get hue range."}};
    static constexpr Step get{DmCtrlGet6ColorsHue, "Get hue."};
    static constexpr Step set{DmCtrlSet6ColorsHue, "Set hue."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<Hue>;

}  // namespace torvo::bridge
