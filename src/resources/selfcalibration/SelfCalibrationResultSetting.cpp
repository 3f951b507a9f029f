// The settings and matrices that a self-calibration has derived.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCalibrationResultSetting final : public Setting<SelfCalibrationResultSetting, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCalibrationScheduleV2}};
    static constexpr Step get{DmCtrlGetSelfCalibrationResultSetting, "Get SelfCalibration result setting."};
    static constexpr Step set{DmCtrlSetSelfCalibrationResultSetting, "Set SelfCalibration result setting."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<SelfCalibrationResultSetting>;

}  // namespace torvo::bridge
