// Whether the monitor is in its state for calibration.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class CalibrationState final : public Setting<CalibrationState, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedCalibrationState}};
    static constexpr Step get{DmCtrlGetCalibrationState, "Get calibration state."};
    static constexpr Step set{DmCtrlSetCalibrationState, "Set calibration state."};
    static constexpr Check checks[] = {{isBoolean, "data is not boolean."}};
};

template struct Entry<CalibrationState>;

}  // namespace torvo::bridge
