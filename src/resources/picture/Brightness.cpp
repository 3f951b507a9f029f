// The picture's brightness, as a step of the monitor's own range or as a percentage of it.
#include <libdmc/picture.h>

#include "resources/shapes/StepOrPercentage.h"

namespace torvo::bridge {

class Brightness final : public StepOrPercentage<Brightness> {
 public:
    using StepOrPercentage::StepOrPercentage;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedBrightness},
        Range{DmCtrlGetRangeBrightnessForStep, "Get brightness range."},
        Read{"percentage", DmCtrlGetBrightnessForPercentage, "Get brightness percentage."},
    };
    static constexpr Step get{DmCtrlGetBrightnessForStep, "Get brightness."};
    static constexpr Step setPercentage{DmCtrlSetBrightnessForPercentage, "Set brightness percentage."};
    static constexpr Step setStep{DmCtrlSetBrightnessForStep, "Set brightness."};
};

template struct Entry<Brightness>;

}  // namespace torvo::bridge
