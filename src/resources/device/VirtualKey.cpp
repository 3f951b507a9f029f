// The keys that can be pressed from afar. A GET lists them, a PUT presses one.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class VirtualKey final : public Setting<VirtualKey, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedVirtualKey},
                                        List{"available", DmCtrlEnumVirtualKey, "Get virtual key."}};
    static constexpr Step set{DmCtrlSetVirtualKey, "Set virtual key."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
    static constexpr auto queryRequired = "Query is allowed only supports or available.";
};

template struct Entry<VirtualKey>;

}  // namespace torvo::bridge
