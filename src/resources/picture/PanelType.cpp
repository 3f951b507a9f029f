// The type of the panel; a number of the library.
#include "bridge/Setting.h"

namespace torvo::bridge {

class PanelType final : public Setting<PanelType, Number> {
 public:
    using Setting::Setting;
    static constexpr Step get{NAMED(DmCtrlGetPanelType), "Get the panel type."};
};

template std::uint32_t serve<PanelType>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
