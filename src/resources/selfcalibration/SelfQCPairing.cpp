// The numbers of the targets, one for each mode.
#include <libdmc/picture.h>
#include <libdmc/selfcalibration.h>

#include <vector>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class SelfQCPairing final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSelfTargetPairing)}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        constexpr auto action = "Get SelfQC pairing.";
        const std::uint32_t count = monitor.read(DmCtrlGetModeCount, action);
        if (count == 0) checkMonitorControl(DmUnsupported, "Unsupported mode.");
        result.value = Value::array(monitor.readList(NAMED(DmCtrlGetSelfTargetPairing), action, count));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isArray(data), "data is not array.");
        std::vector<std::uint32_t> targets;
        for (const Value& element : data.elements()) targets.push_back(lenientNumber(element));
        monitor.write(NAMED(DmCtrlSetSelfTargetPairing), "Set SelfQC pairing.", targets.data(),
                      static_cast<std::uint32_t>(targets.size()));
    }
};

template struct Entry<SelfQCPairing>;

}  // namespace torvo::bridge
