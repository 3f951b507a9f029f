// Whether a self-calibration takes the ambient light out of its measurements.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCalibrationAmbientLightCancelSetting final
    : public Setting<SelfCalibrationAmbientLightCancelSetting, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedAmbientLightCancelOnSelfCalibration}};
    static constexpr Step get{DmCtrlGetAmbientLightCancelOnSelfCalibration,
                              "Get SelfCalibration ambient light cancel setting."};
    static constexpr Step set{DmCtrlSetAmbientLightCancelOnSelfCalibration,
                              "Set SelfCalibration ambient light cancel setting."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<SelfCalibrationAmbientLightCancelSetting>;

}  // namespace torvo::bridge
