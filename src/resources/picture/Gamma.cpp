// The gamma, by its index among the monitor's gammas.
#include "bridge/Setting.h"

namespace torvo::bridge {

class Gamma final : public Setting<Gamma, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedGammaIndex;
    static constexpr Step available{DmCtrlEnumGammaIndex, "Get gamma index."};
    static constexpr Step get{DmCtrlGetGammaIndex, "Get gamma index."};
    static constexpr Step set{DmCtrlSetGammaIndex, "Set gamma index."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<Gamma>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
