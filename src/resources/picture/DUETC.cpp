// The status of DUETC; a number of the library.
#include "bridge/Setting.h"

namespace torvo::bridge {

class DUETC final : public Setting<DUETC, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedDUETCStatus;
    static constexpr Step get{DmCtrlGetDUETCStatus, "Get DUETC status."};
    static constexpr Step set{DmCtrlSetDUETCStatus, "Set DUETC status."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<DUETC>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
