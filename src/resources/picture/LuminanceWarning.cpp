// Whether and how the monitor warns of a luminance that it cannot hold; a number of the library.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class LuminanceWarning final : public Setting<LuminanceWarning, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLuminanceWarning)}};
    static constexpr Step get{NAMED(DmCtrlGetLuminanceWarning), "Get luminance warning."};
    static constexpr Step set{NAMED(DmCtrlSetLuminanceWarning), "Set luminance warning."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<LuminanceWarning>;

}  // namespace torvo::bridge
