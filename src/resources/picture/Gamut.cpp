// The gamut, by its index among the monitor's gamuts.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Gamut final : public Setting<Gamut, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedGamutIndex},
                                        List{"available", DmCtrlEnumGamutIndex, "Get gamut index."}};
    static constexpr Step get{DmCtrlGetGamutIndex, "Get gamut index."};
    static constexpr Step set{DmCtrlSetGamutIndex, "Set gamut index."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<Gamut>;

}  // namespace torvo::bridge
