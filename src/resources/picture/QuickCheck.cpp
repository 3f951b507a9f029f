// The quick check; a number of the library.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class QuickCheck final : public Setting<QuickCheck, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedQuickCheck)}};
    static constexpr Step get{NAMED(DmCtrlGetQuickCheck), "Get quick check."};
    static constexpr Step set{NAMED(DmCtrlSetQuickCheck), "Set quick check."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<QuickCheck>;

}  // namespace torvo::bridge
