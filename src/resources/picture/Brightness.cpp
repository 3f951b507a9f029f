// The picture's brightness, as a step of the monitor's own range or as a percentage of it.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Brightness final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupportedBrightness);
        else if (query.has("range"))
            result.value = monitor.range(DmCtrlGetRangeBrightnessForStep, "Get brightness range.");
        else if (query.has("percentage"))
            result.value = monitor.read(DmCtrlGetBrightnessForPercentage, "Get brightness percentage.");
        else
            result.value = monitor.read(DmCtrlGetBrightnessForStep, "Get brightness.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& percentage = data.get("percentage");
        checkRequest(data.isNumber() || percentage.isNumber(), "data must be number.");
        if (percentage.isNumber())
            monitor.write(DmCtrlSetBrightnessForPercentage, "Set brightness percentage.", percentage.asDouble());
        else
            monitor.write(DmCtrlSetBrightnessForStep, "Set brightness.", data.asUInt());
    }
};

template std::uint32_t serve<Brightness>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
