// The fine-contrast mode of the picture within the picture.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class PinPFineContrast final : public Setting<PinPFineContrast, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedPinPFineContrast)}};
    static constexpr Step get{NAMED(DmCtrlGetPinPFineContrast), "Get PinP fine contrast."};
    static constexpr Step set{NAMED(DmCtrlSetPinPFineContrast), "Set PinP fine contrast."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<PinPFineContrast>;

}  // namespace torvo::bridge
