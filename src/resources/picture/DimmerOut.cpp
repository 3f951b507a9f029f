// The output of the backlight's dimmer.
#include "bridge/Setting.h"

namespace torvo::bridge {

class DimmerOut final : public Setting<DimmerOut, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedDimmerOut);
    static constexpr Step get{NAMED(DmCtrlGetDimmerOut), "Get dimmer out."};
};

template std::uint32_t serve<DimmerOut>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
