// The gamut, by its index among the monitor's gamuts.
#include "bridge/Setting.h"

namespace torvo::bridge {

class Gamut final : public Setting<Gamut, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedGamutIndex;
    static constexpr Step available{DmCtrlEnumGamutIndex, "Get gamut index."};
    static constexpr Step get{DmCtrlGetGamutIndex, "Get gamut index."};
    static constexpr Step set{DmCtrlSetGamutIndex, "Set gamut index."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<Gamut>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
