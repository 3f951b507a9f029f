// What becomes of the range from 100 to 109 % of a limited signal.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Limited109Setting final : public Setting<Limited109Setting, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLimited109Setting)}};
    static constexpr Step get{NAMED(DmCtrlGetLimited109Setting), "Get limited 109% setting."};
    static constexpr Step set{NAMED(DmCtrlSetLimited109Setting), "Set limited 109% setting."};
    static constexpr Check checks[] = {{isNumber, "data is not number."}};
};

template struct Entry<Limited109Setting>;

}  // namespace torvo::bridge
