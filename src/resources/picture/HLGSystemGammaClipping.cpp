// Whether the HLG system gamma is clipped.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class HLGSystemGammaClipping final : public Setting<HLGSystemGammaClipping, Boolean> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedHLGSystemGammaClipping)}};
    static constexpr Step get{NAMED(DmCtrlGetHLGSystemGammaClipping), "Get HLG system gamma clipping."};
    static constexpr Step set{NAMED(DmCtrlSetHLGSystemGammaClipping), "Set HLG system gamma clipping."};
    static constexpr Check checks[] = {{isBoolean, "data must be boolean."}};
};

template struct Entry<HLGSystemGammaClipping>;

}  // namespace torvo::bridge
