// The revision of the panel. Its failures have no reason.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class PanelRevision final : public Setting<PanelRevision, Number> {
 public:
    using Setting::Setting;
    static constexpr Step get{DmCtrlGetPanelRevision, ""};
};

template struct Entry<PanelRevision>;

}  // namespace torvo::bridge
