// What the monitor calibrates itself to. A PUT writes the whole target: members that the data leaves out are zero.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCCalibrationTarget final : public Setting<SelfQCCalibrationTarget, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr Step get{NAMED(DmCtrlGetSelfQCCalTarget), "Get SelfQC calibration target."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCCalTarget), "Set SelfQC calibration target."};
    static constexpr Check checks[] = {{isObject, "data is not object."}};
};

template struct Entry<SelfQCCalibrationTarget>;

}  // namespace torvo::bridge
