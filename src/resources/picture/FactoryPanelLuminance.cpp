// The luminance of the panel as it left the factory.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class FactoryPanelLuminance final : public Setting<FactoryPanelLuminance, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedFactoryPanelLuminance)}};
    static constexpr Step get{NAMED(DmCtrlGetFactoryPanelLuminance), "Get factory panel luminance."};
};

template struct Entry<FactoryPanelLuminance>;

}  // namespace torvo::bridge
