// The flavor of the picture, and the one that the current mode has preset.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class Flavor final : public Setting<Flavor, Number> {
 public:
    using Setting::Setting;

    /// What the current mode has preset.
    struct Preset {
        static constexpr auto member = "preset";

        Value answer(const Monitor& monitor) const {
            const std::uint32_t mode = monitor.read(DmCtrlGetMode, "Get mode.");
            return monitor.read(DmCtrlGetPresetFlavor, "Get preset flavor.", mode);
        }
    };

    static constexpr std::tuple queries{Support{DmCtrlSupportedFlavor}, Preset{}};
    static constexpr Step get{DmCtrlGetFlavor, "Get flavor."};
    static constexpr Step set{DmCtrlSetFlavor, "Set flavor."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<Flavor>;

}  // namespace torvo::bridge
