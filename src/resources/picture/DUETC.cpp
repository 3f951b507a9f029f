// The status of DUETC; a number of the library.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class DUETC final : public Setting<DUETC, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{DmCtrlSupportedDUETCStatus}};
    static constexpr Step get{DmCtrlGetDUETCStatus, "Get DUETC status."};
    static constexpr Step set{DmCtrlSetDUETCStatus, "Set DUETC status."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<DUETC>;

}  // namespace torvo::bridge
