// Whether the monitor chooses the input port that has a signal.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class InputAuto final : public Setting<InputAuto, Boolean> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedInputAuto)}};
    static constexpr Step get{NAMED(DmCtrlGetInputAuto), "Get InputAuto."};
    static constexpr Step set{NAMED(DmCtrlSetInputAuto), "Set InputAuto."};
    static constexpr Check checks[] = {{isBoolean, "data must be false or true."}};
};

template struct Entry<InputAuto>;

}  // namespace torvo::bridge
