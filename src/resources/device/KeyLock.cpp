// Which keys of the monitor are locked; a number of the library. A PUT can lock them for a time instead.
#include <libdmc/device.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class KeyLock final : public Setting<KeyLock, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{
        Support{DmCtrlSupportedKeyLockSetting},
        Support{"supportsAll", DmCtrlSupportedAllKeyLock},
    };
    static constexpr Step get{DmCtrlGetKeyLockState, "Get key lock state."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        if (data.has("timeout")) {
            const Value& timeout = data.get("timeout");
            checkRequest(isNumber(timeout), "data must be number.");
            monitor.write(DmCtrlSetTimeoutKeyLock, "Set timeout key lock.", toNumber<std::uint16_t>(timeout));
        } else {
            checkRequest(isNumber(data), "data must be number.");
            monitor.write(DmCtrlSetKeyLockState, "Set key lock state.", toNumber<std::uint32_t>(data));
        }
    }
};

template struct Entry<KeyLock>;

}  // namespace torvo::bridge
