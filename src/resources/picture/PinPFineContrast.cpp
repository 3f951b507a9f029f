// The fine-contrast mode of the picture within the picture.
#include "bridge/Setting.h"

namespace torvo::bridge {

class PinPFineContrast final : public Setting<PinPFineContrast, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedPinPFineContrast);
    static constexpr Step get{NAMED(DmCtrlGetPinPFineContrast), "Get PinP fine contrast."};
    static constexpr Step set{NAMED(DmCtrlSetPinPFineContrast), "Set PinP fine contrast."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<PinPFineContrast>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
