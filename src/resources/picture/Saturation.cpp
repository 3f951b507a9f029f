// The saturation of the whole picture, in steps.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Saturation final : public Setting<Saturation, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupported6ColorsSaturation},
                                        Range{DmCtrlGetRange6ColorsSaturation, "Get saturation range."}};
    static constexpr Step get{DmCtrlGet6ColorsSaturation, "Get saturation."};
    static constexpr Step set{DmCtrlSet6ColorsSaturation, "Set saturation."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<Saturation>;

}  // namespace torvo::bridge
