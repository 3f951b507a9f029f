// The status of GammaTC; a number of the library.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class GammaTC final : public Setting<GammaTC, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedGammaTCStatus}};
    static constexpr Step get{DmCtrlGetGammaTCStatus, "Get GammaTC status."};
    static constexpr Step set{DmCtrlSetGammaTCStatus, "Set GammaTC status."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<GammaTC>;

}  // namespace torvo::bridge
