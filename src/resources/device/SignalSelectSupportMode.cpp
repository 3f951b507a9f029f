// How the monitor selects a signal: a boolean, or a number on newer monitors.
#include <libdmc/device.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class SignalSelectSupportMode final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static bool isV2(const Monitor& monitor) {
        return monitor.isNewer(NAMED(DmCtrlSupportedRCSignalSelectSupportModeV2));
    }

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (request.requestQuery.has("supports"))
            result.value = isV2(monitor) || monitor.supports(NAMED(DmCtrlSupportedRCSignalSelectSupportMode));
        else if (isV2(monitor))
            result.value =
                monitor.read(NAMED(DmCtrlGetRCSignalSelectSupportModeV2), "Get signal select support mode v2.");
        else
            result.value =
                monitor.read(NAMED(DmCtrlGetRCSignalSelectSupportMode), "Get signal select support mode.") != 0;
    }

    // Either generation takes either kind of value.
    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isBoolean(data) || isNumber(data), "data is not boolean or number.");
        if (isV2(monitor))
            monitor.write(NAMED(DmCtrlSetRCSignalSelectSupportModeV2), "Set signal select support mode v2.",
                          toNumber<std::uint32_t>(data));
        else
            monitor.write(NAMED(DmCtrlSetRCSignalSelectSupportMode), "Set signal select support mode.",
                          std::uint32_t{lenientFlag(data)});
    }
};

template struct Entry<SignalSelectSupportMode>;

}  // namespace torvo::bridge
