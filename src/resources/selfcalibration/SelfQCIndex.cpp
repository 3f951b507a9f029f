// Which target the quality-control programme has selected; a number of the library.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCIndex final : public Setting<SelfQCIndex, Number> {
 public:
    using Setting::Setting;

    static constexpr Step get{NAMED(DmCtrlGetSelfQCTargetSelect), "Get SelfQC target select."};
    static constexpr Step set{NAMED(DmCtrlSetSelfQCTargetSelect), "Set SelfQC target select."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<SelfQCIndex>;

}  // namespace torvo::bridge
