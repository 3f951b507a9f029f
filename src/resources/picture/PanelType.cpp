// The type of the panel; a number of the library.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class PanelType final : public Setting<PanelType, Number> {
 public:
    using Setting::Setting;
    static constexpr Step get{NAMED(DmCtrlGetPanelType), "Get the panel type."};
};

template struct Entry<PanelType>;

}  // namespace torvo::bridge
