// The state of the calibration job; a number of the library.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCCalibration final : public Setting<SelfQCCalibration, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSelfQCCal)}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCCalState), "Get SelfQC calibration state."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCCalState), "Set SelfQC calibration state."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<SelfQCCalibration>;

}  // namespace torvo::bridge
