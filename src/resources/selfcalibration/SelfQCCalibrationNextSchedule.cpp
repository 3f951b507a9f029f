// When the calibration job runs next.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/NextSchedule.h"

namespace torvo::bridge {

class SelfQCCalibrationNextSchedule final : public NextSchedule<SelfQCCalibrationNextSchedule> {
 public:
    using NextSchedule::NextSchedule;

    static constexpr std::uint32_t job = DM_JOB_CALIBRATION;
};

template struct Entry<SelfQCCalibrationNextSchedule>;

}  // namespace torvo::bridge
