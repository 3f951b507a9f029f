// Whether the uniformity of the panel is corrected.
#include "bridge/Setting.h"

namespace torvo::bridge {

class UniformityState final : public Setting<UniformityState, Truth> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedUniformityEnable);
    static constexpr Step get{NAMED(DmCtrlGetUniformityEnable), "Get uniformity enable."};
    static constexpr Step set{NAMED(DmCtrlSetUniformityEnable), "Set uniformity enable."};
    static constexpr auto refusal = "data is empty.";
};

template std::uint32_t serve<UniformityState>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
