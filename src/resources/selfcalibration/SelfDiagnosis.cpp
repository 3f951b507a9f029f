// Whether the photo sensor is stable, with its readings.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfDiagnosis final : public Setting<SelfDiagnosis, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedRCSelfDiagnosis)}};
    static constexpr Step get{NAMED(DmCtrlGetRCSelfDiagnosisData), "Get SelfDiagnosis data."};
};

template struct Entry<SelfDiagnosis>;

}  // namespace torvo::bridge
