// Whether the picture is shown in shades of grey.
#include "bridge/Setting.h"

namespace torvo::bridge {

class MonochromeConversion final : public Setting<MonochromeConversion, Truth> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedMonochromeConversion);
    static constexpr Step get{NAMED(DmCtrlGetMonochromeConversion), "Get MonochromeConversion."};
    static constexpr Step set{NAMED(DmCtrlSetMonochromeConversion), "Set MonochromeConversion."};
    static constexpr auto refusal = "data is empty.";
};

template std::uint32_t serve<MonochromeConversion>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
