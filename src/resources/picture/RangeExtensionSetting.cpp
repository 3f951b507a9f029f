// The setting of the range extension.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class RangeExtensionSetting final : public Setting<RangeExtensionSetting, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedRangeExtensionSetting}};
    static constexpr Step get{DmCtrlGetRangeExtensionSetting, "Get range extension setting."};
    static constexpr Step set{DmCtrlSetRangeExtensionSetting, "Set range extension setting."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<RangeExtensionSetting>;

}  // namespace torvo::bridge
