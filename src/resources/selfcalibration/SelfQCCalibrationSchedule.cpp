// When the calibration job runs. Which members it has depends on its type.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCCalibrationSchedule final : public Setting<SelfQCCalibrationSchedule, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{
        List{"available", NAMED(DmCtrlEnumSupportedSelfCalibrationScheduleType), "Get SelfQC calibration schedule."}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCCalSchedule), "Get SelfQC calibration schedule."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCCalSchedule), "Set SelfQC calibration schedule."};
    static constexpr Check checks[] = {{isObject, "data is not object."}};
};

template struct Entry<SelfQCCalibrationSchedule>;

}  // namespace torvo::bridge
