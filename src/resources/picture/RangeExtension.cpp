// The range extension's status. Older libraries can read it, but not set it.
#include "bridge/Setting.h"

namespace torvo::bridge {

class RangeExtension final : public Setting<RangeExtension, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = DmCtrlSupportedRangeExtension;
    static constexpr Step get{DmCtrlGetRangeExtension, "Get range extension status."};
    static constexpr Step set{NAMED(DmCtrlSetRangeExtension), "Set range extension status."};
    static constexpr auto refusal = "data is not number.";
};

template std::uint32_t serve<RangeExtension>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
