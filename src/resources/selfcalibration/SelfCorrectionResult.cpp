// The result of the last self-correction.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCorrectionResult final : public Setting<SelfCorrectionResult, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCorrection}};
    static constexpr Step get{DmCtrlGetSelfCorrectionResult, "Get SelfCorrection result."};
};

template struct Entry<SelfCorrectionResult>;

}  // namespace torvo::bridge
