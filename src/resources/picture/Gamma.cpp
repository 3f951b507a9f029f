// The gamma, by its index among the monitor's gammas.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Gamma final : public Setting<Gamma, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedGammaIndex},
                                        List{"available", DmCtrlEnumGammaIndex, "Get gamma index."}};
    static constexpr Step get{DmCtrlGetGammaIndex, "Get gamma index."};
    static constexpr Step set{DmCtrlSetGammaIndex, "Set gamma index."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<Gamma>;

}  // namespace torvo::bridge
