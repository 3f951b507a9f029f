// The status of GammaTC; a number of the library.
#include "bridge/Setting.h"

namespace torvo::bridge {

class GammaTC final : public Setting<GammaTC, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedGammaTCStatus;
    static constexpr Step get{DmCtrlGetGammaTCStatus, "Get GammaTC status."};
    static constexpr Step set{DmCtrlSetGammaTCStatus, "Set GammaTC status."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<GammaTC>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
