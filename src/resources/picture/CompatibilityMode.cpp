// Whether the monitor behaves as an older model would.
#include "bridge/Setting.h"

namespace torvo::bridge {

class CompatibilityMode final : public Setting<CompatibilityMode, Boolean> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedCompatibilityMode);
    static constexpr Step get{NAMED(DmCtrlGetCompatibilityMode), "Get compatibility mode."};
    static constexpr Step set{NAMED(DmCtrlSetCompatibilityMode), "Set compatibility mode."};
    static constexpr auto refusal = "data must be boolean.";
};

template std::uint32_t serve<CompatibilityMode>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
