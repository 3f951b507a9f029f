// The hue of the whole picture, in steps.
#include "bridge/Setting.h"

namespace torvo::bridge {

class Hue final : public Setting<Hue, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupported6ColorsHue;
    static constexpr Step range{DmCtrlGetRange6ColorsHue, "Get hue range."};
    static constexpr Step get{DmCtrlGet6ColorsHue, "Get hue."};
    static constexpr Step set{DmCtrlSet6ColorsHue, "Set hue."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<Hue>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
