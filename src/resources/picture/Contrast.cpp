// The picture's contrast, as a step of the monitor's own range or as a percentage of it.
#include <libdmc/picture.h>

#include "resources/shapes/StepOrPercentage.h"

namespace torvo::bridge {

class Contrast final : public StepOrPercentage<Contrast> {
 public:
    using StepOrPercentage::StepOrPercentage;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedContrast},
        Range{DmCtrlGetRangeContrastForStep, "Get contrast range."},
        Read{"percentage", DmCtrlGetContrastForPercentage, "Get contrast percentage."},
    };
    static constexpr Step get{DmCtrlGetContrastForStep, "Get contrast."};
    static constexpr Step setPercentage{DmCtrlSetContrastForPercentage, "Set contrast percentage."};
    static constexpr Step setStep{DmCtrlSetContrastForStep, "Set contrast."};
};

template struct Entry<Contrast>;

}  // namespace torvo::bridge
