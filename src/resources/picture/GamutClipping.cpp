// Whether colours outside the gamut are clipped.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class GamutClipping final : public Setting<GamutClipping, Boolean> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedClipping}};
    static constexpr Step get{DmCtrlGetClipping, "Get gamut clipping."};
    static constexpr Step set{DmCtrlSetClipping, "Set gamut clipping."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<GamutClipping>;

}  // namespace torvo::bridge
