// HybridGammaPXL on or off, in the current mode or in one that the request names.
#include "bridge/MonitorCriticalSection.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class HybridGammaPXL final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value = monitor.supports(NAMED(DmCtrlSupportedHybridGammaPXL));
            return;
        }
        const MonitorCriticalSection section(monitor);
        selectMode(monitor, query);
        result.value = monitor.read(NAMED(DmCtrlGetHybridGammaPXL), "Get HybridGammaPXL.") != 0;
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(!data.isNull(), "data is empty.");
        const MonitorCriticalSection section(monitor);
        selectMode(monitor, data);
        if (data.isObject() && !data.has("enabled")) return;
        const bool enabled = (data.isObject() ? data.get("enabled") : data).asBool();
        monitor.write(NAMED(DmCtrlSetHybridGammaPXL), "Set HybridGammaPXL.", std::uint32_t{enabled});
    }

    static void selectMode(const Monitor& monitor, const Value& request) {
        if (const Value& mode = request.get("mode"); mode.isNumber())
            monitor.write(NAMED(DmCtrlSetTargetSelectionMode), "Set target selection mode.", mode.asUInt());
    }
};

template std::uint32_t serve<HybridGammaPXL>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
