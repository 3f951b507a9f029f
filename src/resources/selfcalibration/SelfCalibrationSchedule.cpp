// When the monitor calibrates itself. A GET leaves out what does not apply; a PUT takes the year as "yaer".
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCalibrationSchedule final : public Setting<SelfCalibrationSchedule, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCalibrationScheduleV2}};
    static constexpr Step get{DmCtrlGetSelfCalibrationScheduleV2, "Get SelfCalibration schedule."};
    static constexpr Step set{DmCtrlSetSelfCalibrationScheduleV2, "Set SelfCalibration schedule."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<SelfCalibrationSchedule>;

}  // namespace torvo::bridge
