// The curve by which the brightness follows the ambient light. A PUT keeps what it leaves out.
#include <libdmc/device.h>
#include <records/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class AutoLumisaveSettings final : public Setting<AutoLumisaveSettings, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedAutoLumisaveSettings)},
                                        Range{"ambientLightRange", NAMED(DmCtrlGetAutoLumisaveAmbientLightRange),
                                              "Get AutoLumisave ambient light range."}};
    static constexpr Step get{NAMED(DmCtrlGetAutoLumisaveSettings), "Get AutoLumisave settings."};
    static constexpr Step set{NAMED(DmCtrlSetAutoLumisaveSettings), "Set AutoLumisave settings."};
    static constexpr Check checks[] = {{isObject, "data must be object."}};
};

template struct Entry<AutoLumisaveSettings>;

}  // namespace torvo::bridge
