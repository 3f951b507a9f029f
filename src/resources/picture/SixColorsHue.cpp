// The hue of six colours, in steps.
#include "resources/shapes/SixColors.h"

namespace torvo::bridge {

class SixColorsHue final : public SixColors<SixColorsHue> {
 public:
    using SixColors::SixColors;

    static constexpr std::tuple queries{
        Support{DmCtrlSupported6ColorsHue},
        Range{DmCtrlGetRange6ColorsHue2, "Get 6 colors hue range."},
    };
    static constexpr Step get{DmCtrlGet6ColorsAllHue2, "Get 6 colors hue."};
    static constexpr Setter setters[] = {
        {"red", DmCtrlSetRedHue2, "Set 6 colors hue red."},
        {"green", DmCtrlSetGreenHue2, "Set 6 colors hue green."},
        {"blue", DmCtrlSetBlueHue2, "Set 6 colors hue blue."},
        {"cyan", DmCtrlSetCyanHue2, "Set 6 colors hue cyan."},
        {"magenta", DmCtrlSetMagentaHue2, "Set 6 colors hue magenta."},
        {"yellow", DmCtrlSetYellowHue2, "Set 6 colors hue yellow."},
    };
};

template struct Entry<SixColorsHue>;

}  // namespace torvo::bridge
