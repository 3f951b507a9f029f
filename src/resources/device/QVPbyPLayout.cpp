// The layout of the picture-by-picture windows; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class QVPbyPLayout final : public Setting<QVPbyPLayout, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedQVPbyPLayout)}};
    static constexpr Step get{NAMED(DmCtrlGetQVPbyPLayout), "Get QV PbyP layout."};
    static constexpr Step set{NAMED(DmCtrlSetQVPbyPLayout), "Set QV PbyP layout."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<QVPbyPLayout>;

}  // namespace torvo::bridge
