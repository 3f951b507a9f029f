// The limits that a grayscale check judges by, in per cent. A PUT writes all: what it leaves out is zero.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCGrayScaleCheckTarget final : public Setting<SelfQCGrayScaleCheckTarget, WholeRecord> {
 public:
    using Setting::Setting;

    static constexpr Step get{NAMED(DmCtrlGetSelfQCGSCTarget), "Get SelfQC grayscale check target."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCGSCTarget), "Set SelfQC grayscale check target."};
    static constexpr Check checks[] = {{isObject, "data is not object."}};
};

template struct Entry<SelfQCGrayScaleCheckTarget>;

}  // namespace torvo::bridge
