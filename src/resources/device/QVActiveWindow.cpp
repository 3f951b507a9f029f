// The active window; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class QVActiveWindow final : public Setting<QVActiveWindow, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedQVActiveWindow)}};
    static constexpr Step get{NAMED(DmCtrlGetQVActiveWindow), "Get QV active window."};
    static constexpr Step set{NAMED(DmCtrlSetQVActiveWindow), "Set QV active window."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<QVActiveWindow>;

}  // namespace torvo::bridge
