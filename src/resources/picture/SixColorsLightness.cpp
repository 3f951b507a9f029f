// The lightness of six colours, in steps; set all at once.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SixColorsLightness final : public Setting<SixColorsLightness, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{
        Support{DmCtrlSupported6ColorsLightness},
        Range{DmCtrlGetRange6ColorsLightness, "Get 6 colors lightness range."},
    };
    static constexpr Step get{DmCtrlGet6ColorsAllLightness, "Get 6 colors lightness."};
    static constexpr Step set{DmCtrlSet6ColorsAllLightness, "Set 6 colors lightness."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<SixColorsLightness>;

}  // namespace torvo::bridge
