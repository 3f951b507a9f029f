// The state of self-correction, which is that of self-calibration; a number of the library.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCorrection final : public Setting<SelfCorrection, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCorrection}};
    static constexpr Step get{DmCtrlGetSelfCalibrationState, "Get SelfCorrection state."};
    static constexpr Step set{DmCtrlSetSelfCalibrationState, "Set SelfCorrection state."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<SelfCorrection>;

}  // namespace torvo::bridge
