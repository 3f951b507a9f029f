// The indicator on the screen, shown and hidden. Hiding it sets the state of the key lock.
#include <libdmc/device.h>

#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class OSDIndicator final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr Selector positionSelector{"position", "Invalid position."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isObject(data) && data.has("action"), "data must have action.");
        const std::string& action = data.get("action").text();
        checkRequest(action == "show" || action == "hide", "data.action must be 'show' or 'hide'.");
        if (action == "show") {
            const std::uint32_t position = positionSelector.in(data).value_or(0);
            monitor.write(DmCtrlShowIndicatorOSD, "Show OSD indicator.", position);
        } else {
            const Value& keyLockState = data.get("keyLockState");
            checkRequest(isPresent(keyLockState), "data must have keyLockState when action is hide.");
            monitor.write(DmCtrlHideIndicatorOSD, "Hide OSD indicator.", toNumber<std::uint32_t>(keyLockState));
        }
    }
};

template struct Entry<OSDIndicator>;

}  // namespace torvo::bridge
