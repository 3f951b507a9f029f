// The range extension's status. Older libraries can read it, but not set it.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class RangeExtension final : public Setting<RangeExtension, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedRangeExtension}};
    static constexpr Step get{DmCtrlGetRangeExtension, "Get range extension status."};
    static constexpr Step set{NAMED(DmCtrlSetRangeExtension), "Set range extension status."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<RangeExtension>;

}  // namespace torvo::bridge
