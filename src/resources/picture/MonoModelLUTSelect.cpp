// The look-up table of a monochrome model.
#include "bridge/Setting.h"

namespace torvo::bridge {

class MonoModelLUTSelect final : public Setting<MonoModelLUTSelect, Number> {
 public:
    using Setting::Setting;
    static constexpr auto supported = NAMED(DmCtrlSupportedMonoModelLUTSelect);
    static constexpr Step get{NAMED(DmCtrlGetMonoModelLUTSelect), "Get mono model LUT select."};
    static constexpr Step set{NAMED(DmCtrlSetMonoModelLUTSelect), "Set mono model LUT select."};
    static constexpr auto refusal = "data must be number.";
};

template std::uint32_t serve<MonoModelLUTSelect>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
