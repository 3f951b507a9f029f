// The numbers of the targets, one for each target of the monitor.
#include <libdmc/picture.h>
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Lists.h"

namespace torvo::bridge {

class SelfCalibrationPairing final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (request.requestQuery.has("supports")) {
            result.value =
                monitor.supports(DmCtrlSupportedMode) && monitor.supports(DmCtrlSupportedSelfCalibrationScheduleV2);
            return;
        }
        constexpr auto action = "Get self target pairing.";
        const std::uint32_t count = monitor.read(DmCtrlGetSelfTargetCount, action);
        std::vector<std::uint32_t> targets(std::min(count, Monitor::maximumItems));
        // A failure is an empty list, and an empty list is a failure of its own.
        if (monitor.call(DmCtrlGetSelfTargetPairing, targets.data(), static_cast<std::uint32_t>(targets.size())) < 0)
            targets.clear();
        if (targets.empty()) checkMonitorControl(DmFailed, action);
        result.value = Value::array(targets);
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isArray(data), "data must be array.");
        const auto targets = toNumbers(data, "data must have number array.");
        monitor.write(DmCtrlSetSelfTargetPairing, "Set self target pairing.", targets.data(),
                      static_cast<std::uint32_t>(targets.size()));
    }
};

template struct Entry<SelfCalibrationPairing>;

}  // namespace torvo::bridge
