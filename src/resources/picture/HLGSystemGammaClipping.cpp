// Whether the HLG system gamma is clipped.
#include "bridge/Setting.h"

namespace torvo::bridge {

class HLGSystemGammaClipping final : public Setting<HLGSystemGammaClipping, Boolean> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedHLGSystemGammaClipping);
    static constexpr Step get{NAMED(DmCtrlGetHLGSystemGammaClipping), "Get HLG system gamma clipping."};
    static constexpr Step set{NAMED(DmCtrlSetHLGSystemGammaClipping), "Set HLG system gamma clipping."};
    static constexpr auto refusal = "data must be boolean.";
};

template std::uint32_t serve<HLGSystemGammaClipping>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
