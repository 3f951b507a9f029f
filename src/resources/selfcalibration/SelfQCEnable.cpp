// For which modes the quality-control programme is on: one boolean for each mode.
#include <libdmc/picture.h>
#include <libdmc/selfcalibration.h>

#include <vector>

#include "bridge/Resource.h"

namespace torvo::bridge {

class SelfQCEnable final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        constexpr auto action = "Get SelfQC enable.";
        const std::uint32_t count =
            monitor.isNewer(DmCtrlSupportedMode) ? monitor.read(DmCtrlGetModeCount, action) : fineContrasts(monitor);
        if (count == 0) checkMonitorControl(DmUnsupported, "Unsupported mode.");
        result.value = Value::array();
        for (const std::uint32_t enabled : monitor.readList(NAMED(DmCtrlGetEnableSelfCalibrationMode), action, count))
            result.value.append(enabled != 0);
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isArray(data), "data is not array.");
        std::vector<std::uint32_t> enabled;
        for (const Value& element : data.elements()) enabled.push_back(lenientFlag(element));
        monitor.write(NAMED(DmCtrlSetEnableSelfCalibrationMode), "Set SelfQC enable.", enabled.data(),
                      static_cast<std::uint32_t>(enabled.size()));
    }

    // Monitors without modes have the programme in these fine-contrast modes, as far as they have them.
    static std::uint32_t fineContrasts(const Monitor& monitor) {
        std::uint32_t count = 0;
        for (const std::uint32_t mode : {11U, 12U, 13U, 25U, 26U, 27U})
            count += monitor.supports(DmCtrlHasFineContrast, mode);
        return count;
    }
};

template struct Entry<SelfQCEnable>;

}  // namespace torvo::bridge
