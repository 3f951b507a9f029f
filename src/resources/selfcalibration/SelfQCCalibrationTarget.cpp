// What the monitor calibrates itself to. A PUT writes the whole target: members that the data leaves out are zero.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class SelfQCCalibrationTarget final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        result.value = toValue(monitor.read(NAMED(DmCtrlGetSelfQCCalTarget), "Get SelfQC calibration target."));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data is not object.");
        const auto target = toRecord<DmCalibrationTarget>(data);
        monitor.write(NAMED(DmCtrlSetSelfQCCalTarget), "Set SelfQC calibration target.", &target);
    }
};

template std::uint32_t serve<SelfQCCalibrationTarget>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
