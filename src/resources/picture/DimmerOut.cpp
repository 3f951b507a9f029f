// The output of the backlight's dimmer.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class DimmerOut final : public Setting<DimmerOut, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedDimmerOut)}};
    static constexpr Step get{NAMED(DmCtrlGetDimmerOut), "Get dimmer out."};
};

template struct Entry<DimmerOut>;

}  // namespace torvo::bridge
