// The state of self-calibration; a number of the library.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCalibration final : public Setting<SelfCalibration, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCalibration}};
    static constexpr Step get{DmCtrlGetSelfCalibrationState, "Get SelfCalibration state."};
    static constexpr Step set{DmCtrlSetSelfCalibrationState, "Set SelfCalibration state."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<SelfCalibration>;

}  // namespace torvo::bridge
