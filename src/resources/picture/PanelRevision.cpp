// The revision of the panel. Its failures have no reason.
#include "bridge/Setting.h"

namespace torvo::bridge {

class PanelRevision final : public Setting<PanelRevision, Number> {
 public:
    using Setting::Setting;
    static constexpr Step get{DmCtrlGetPanelRevision, ""};
};

template std::uint32_t serve<PanelRevision>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
