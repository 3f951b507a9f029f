// When the LEA job measures; a number of the library.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCLEAMeasurementTiming final : public Setting<SelfQCLEAMeasurementTiming, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSelfQCLEAMeasTiming)}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCLEAMeasTiming), "Get LEA measuement timing."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCLEAMeasTiming), "Set LEA Measurement timing."};
    static constexpr Check checks[] = {{isNumber, "data must be digit number"}};
};

template struct Entry<SelfQCLEAMeasurementTiming>;

}  // namespace torvo::bridge
