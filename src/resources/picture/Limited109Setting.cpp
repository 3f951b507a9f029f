// What becomes of the range from 100 to 109 % of a limited signal.
#include "bridge/Setting.h"

namespace torvo::bridge {

class Limited109Setting final : public Setting<Limited109Setting, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedLimited109Setting);
    static constexpr Step get{NAMED(DmCtrlGetLimited109Setting), "Get limited 109% setting."};
    static constexpr Step set{NAMED(DmCtrlSetLimited109Setting), "Set limited 109% setting."};
    static constexpr auto refusal = "data is not number.";
};

template std::uint32_t serve<Limited109Setting>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
