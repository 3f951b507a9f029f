// What a monitor corrects itself to.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfCorrectionTarget final : public Setting<SelfCorrectionTarget, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSelfCorrection}};
    static constexpr Step get{DmCtrlGetSelfCorrectionTarget, "Get SelfCorrection target."};
    static constexpr Step set{DmCtrlSetSelfCorrectionTarget, "Set SelfCorrection target."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<SelfCorrectionTarget>;

}  // namespace torvo::bridge
