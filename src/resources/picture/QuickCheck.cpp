// The quick check; a number of the library.
#include "bridge/Setting.h"

namespace torvo::bridge {

class QuickCheck final : public Setting<QuickCheck, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedQuickCheck);
    static constexpr Step get{NAMED(DmCtrlGetQuickCheck), "Get quick check."};
    static constexpr Step set{NAMED(DmCtrlSetQuickCheck), "Set quick check."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<QuickCheck>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
