// The setting of the range extension.
#include "bridge/Setting.h"

namespace torvo::bridge {

class RangeExtensionSetting final : public Setting<RangeExtensionSetting, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedRangeExtensionSetting;
    static constexpr Step get{DmCtrlGetRangeExtensionSetting, "Get range extension setting."};
    static constexpr Step set{DmCtrlSetRangeExtensionSetting, "Set range extension setting."};
    static constexpr auto refusal = "data is not number.";
};

template std::uint32_t serve<RangeExtensionSetting>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
