// When the LEA job runs next.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/NextSchedule.h"

namespace torvo::bridge {

class SelfQCLEANextSchedule final : public NextSchedule<SelfQCLEANextSchedule> {
 public:
    using NextSchedule::NextSchedule;

    static constexpr std::uint32_t job = DM_JOB_LEA;
};

template struct Entry<SelfQCLEANextSchedule>;

}  // namespace torvo::bridge
