// The setting of the KVM switch; a number of the library.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class KVMSetting final : public Setting<KVMSetting, Number> {
 public:
    using Setting::Setting;

    /// Whether there is a switch, and whether it has more than one setting.
    struct Supports {
        static constexpr auto member = "supports";

        Value answer(const Monitor& monitor) const {
            return {{"supports", monitor.supports(NAMED(DmCtrlSupportedKVMSetting))},
                    {"hasMultipleSettings", monitor.supports(NAMED(DmCtrlSupportedKVMSettingV2))}};
        }
    };

    static constexpr std::tuple queries{Supports{}};
    static constexpr Step get{NAMED(DmCtrlGetKVMSettingV2), "Get KVM setting."};
    static constexpr Step set{NAMED(DmCtrlSetKVMSettingV2), "Set KVM setting."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<KVMSetting>;

}  // namespace torvo::bridge
