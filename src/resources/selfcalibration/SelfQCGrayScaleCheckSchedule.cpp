// When the grayscale check job runs. Which members it has depends on its type.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCGrayScaleCheckSchedule final : public Setting<SelfQCGrayScaleCheckSchedule, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{List{"available", NAMED(DmCtrlEnumSupportedSelfCalibrationScheduleType),
                                             "Get SelfQC grayscale check schedule."}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCGSCSchedule), "Get SelfQC grayscale check schedule."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCGSCSchedule), "Set SelfQC grayscale check schedule."};
    static constexpr Check checks[] = {{isObject, "data is not object."}};
};

template struct Entry<SelfQCGrayScaleCheckSchedule>;

}  // namespace torvo::bridge
