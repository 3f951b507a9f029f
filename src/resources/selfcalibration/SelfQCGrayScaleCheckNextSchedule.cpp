// When the grayscale check job runs next.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/NextSchedule.h"

namespace torvo::bridge {

class SelfQCGrayScaleCheckNextSchedule final : public NextSchedule<SelfQCGrayScaleCheckNextSchedule> {
 public:
    using NextSchedule::NextSchedule;

    static constexpr std::uint32_t job = DM_JOB_GRAY_SCALE_CHECK;
};

template struct Entry<SelfQCGrayScaleCheckNextSchedule>;

}  // namespace torvo::bridge
