// Whether and how the monitor warns of a luminance that it cannot hold; a number of the library.
#include "bridge/Setting.h"

namespace torvo::bridge {

class LuminanceWarning final : public Setting<LuminanceWarning, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedLuminanceWarning);
    static constexpr Step get{NAMED(DmCtrlGetLuminanceWarning), "Get luminance warning."};
    static constexpr Step set{NAMED(DmCtrlSetLuminanceWarning), "Set luminance warning."};
    static constexpr auto refusal = "data is not number.";
};

template std::uint32_t serve<LuminanceWarning>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
