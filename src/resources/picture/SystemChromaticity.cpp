// The chromaticities of the primaries and the white point of the whole system. A query for "RGBW" asks for what is
// answered anyway.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SystemChromaticity final : public Setting<SystemChromaticity, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedSystemChromaticity}};
    static constexpr Step get{DmCtrlGetSystemChromaticity, "Get system chromaticity."};
    static constexpr Step set{DmCtrlSetSystemChromaticity, "Set system chromaticity."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<SystemChromaticity>;

}  // namespace torvo::bridge
