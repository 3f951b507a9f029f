// Whether colours outside the gamut are clipped.
#include "bridge/Setting.h"

namespace torvo::bridge {

class GamutClipping final : public Setting<GamutClipping, Boolean> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedClipping;
    static constexpr Step get{DmCtrlGetClipping, "Get gamut clipping."};
    static constexpr Step set{DmCtrlSetClipping, "Set gamut clipping."};
    static constexpr auto refusal = "data must be boolean.";
};

template std::uint32_t serve<GamutClipping>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
