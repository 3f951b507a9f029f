// Whether a failed grayscale check starts a calibration.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCRecalibrationForGrayScaleCheckError final
    : public Setting<SelfQCRecalibrationForGrayScaleCheckError, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfQCRecalibrationForGSCErrorEnable}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCRecalibrationForGSCErrorEnable),
                              "Get SelfQC recalibration for GSC error enable."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCRecalibrationForGSCErrorEnable),
                              "Set SelfQC recalibration for GSC error enable."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<SelfQCRecalibrationForGrayScaleCheckError>;

}  // namespace torvo::bridge
