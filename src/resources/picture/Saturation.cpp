// The saturation of the whole picture, in steps.
#include "bridge/Setting.h"

namespace torvo::bridge {

class Saturation final : public Setting<Saturation, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupported6ColorsSaturation;
    static constexpr Step range{DmCtrlGetRange6ColorsSaturation, "Get saturation range."};
    static constexpr Step get{DmCtrlGet6ColorsSaturation, "Get saturation."};
    static constexpr Step set{DmCtrlSet6ColorsSaturation, "Set saturation."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<Saturation>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
