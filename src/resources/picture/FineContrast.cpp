// The fine-contrast mode, by its number.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class FineContrast final : public Setting<FineContrast, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedFineContrast},
        List{"available", DmCtrlEnumFineContrast, "Get fine contrast."},
        Read{"count", DmCtrlGetFineContrastCount, "Get fine contrast."},
    };
    static constexpr Step get{DmCtrlGetFineContrast, "Get fine contrast."};
    static constexpr Step set{DmCtrlSetFineContrast, "Set fine contrast."};
    static constexpr Check checks[] = {{isPresent, "data is empty."}, {isNumber, "data must be number."}};
};

template struct Entry<FineContrast>;

}  // namespace torvo::bridge
