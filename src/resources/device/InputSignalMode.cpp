// The mode of the input signal; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class InputSignalMode final : public Setting<InputSignalMode, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{DmCtrlSupportedInputSignalMode}};
    static constexpr Step get{DmCtrlGetInputSignalMode, "Get input signal mode."};
};

template struct Entry<InputSignalMode>;

}  // namespace torvo::bridge
