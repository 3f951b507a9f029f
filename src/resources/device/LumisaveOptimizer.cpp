// Whether the Lumisave optimizer is on, and whether it can be adjusted now.
#include <libdmc/device.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class LumisaveOptimizer final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedLumisaveOptimizer)}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const auto enabled = monitor.read(NAMED(DmCtrlGetLumisaveOptimizerEnable), "Get Lumisave optimizer enable.");
        const auto status = monitor.read(NAMED(DmCtrlGetLumisaveOptimizerStatus), "Get Lumisave optimizer status.");
        result.value = {{"enabled", enabled != 0}, {"adjustable", status != 0}};
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& enabled = request.data().get("enabled");
        checkRequest(isPresent(enabled), "data must have enabled.");
        monitor.write(NAMED(DmCtrlSetLumisaveOptimizerEnable), "Set Lumisave optimizer enable.",
                      std::uint32_t{lenientFlag(enabled)});
    }
};

template struct Entry<LumisaveOptimizer>;

}  // namespace torvo::bridge
