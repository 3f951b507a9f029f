// The state of the grayscale check; a number of the library.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCGrayScaleCheck final : public Setting<SelfQCGrayScaleCheck, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSelfQCGSC)}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCGSCState), "Get SelfQC grayscale check state."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCGSCState), "Set SelfQC grayscale check state."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<SelfQCGrayScaleCheck>;

}  // namespace torvo::bridge
