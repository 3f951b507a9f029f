// The saturation of six colours, in steps.
#include "resources/shapes/SixColors.h"

namespace torvo::bridge {

class SixColorsSaturation final : public SixColors<SixColorsSaturation> {
 public:
    using SixColors::SixColors;

    static constexpr std::tuple queries{
        Support{DmCtrlSupported6ColorsSaturation},
        Range{DmCtrlGetRange6ColorsSaturation2, "Get 6 colors saturation range."},
    };
    static constexpr Step get{DmCtrlGet6ColorsAllSaturation2, "Get 6 colors saturation."};
    static constexpr Setter setters[] = {
        {"red", DmCtrlSetRedSaturation2, "Set 6 colors saturation red."},
        {"green", DmCtrlSetGreenSaturation2, "Set 6 colors saturation green."},
        {"blue", DmCtrlSetBlueSaturation2, "Set 6 colors saturation blue."},
        {"cyan", DmCtrlSetCyanSaturation2, "Set 6 colors saturation cyan."},
        {"magenta", DmCtrlSetMagentaSaturation2, "Set 6 colors saturation magenta."},
        {"yellow", DmCtrlSetYellowSaturation2, "Set 6 colors saturation yellow."},
    };
};

template struct Entry<SixColorsSaturation>;

}  // namespace torvo::bridge
