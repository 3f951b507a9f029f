// HybridGammaPXL on or off, in the current mode or in one that the request names.
#include <libdmc/picture.h>

#include "bridge/MonitorCriticalSection.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

class HybridGammaPXL final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(NAMED(DmCtrlSupportedHybridGammaPXL));
            return;
        }
        const auto mode = modeSelector.in(query);
        const MonitorCriticalSection section(monitor);
        select(monitor, mode);
        result.value = monitor.read(NAMED(DmCtrlGetHybridGammaPXL), "Get HybridGammaPXL.") != 0;
    }

    // An object without "enabled" only selects its mode.
    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& enabled = data.isObject() ? data.get("enabled") : data;
        checkRequest(isPresent(data) && (isPresent(enabled) || data.has("mode")), "data is empty.");
        const auto mode = modeSelector.in(data, request.requestQuery);
        const MonitorCriticalSection section(monitor);
        select(monitor, mode);
        if (isPresent(enabled))
            monitor.write(NAMED(DmCtrlSetHybridGammaPXL), "Set HybridGammaPXL.", std::uint32_t{lenientFlag(enabled)});
    }

    static void select(const Monitor& monitor, std::optional<std::uint32_t> mode) {
        if (mode) monitor.write(NAMED(DmCtrlSetTargetSelectionMode), "Set target selection mode.", *mode);
    }
};

template struct Entry<HybridGammaPXL>;

}  // namespace torvo::bridge
