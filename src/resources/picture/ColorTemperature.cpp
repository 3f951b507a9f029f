// The colour temperature: in kelvin, or on monitors without that by the index of a preset.
#include "bridge/Resource.h"

namespace torvo::bridge {

class ColorTemperature final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = inKelvin(monitor) || monitor.supports(DmCtrlSupportedColorTemperatureIndex);
        else if (query.has("available"))
            result.value = Value::array(
                monitor.enumerate(inKelvin(monitor) ? DmCtrlEnumColorTemperature : DmCtrlEnumColorTemperatureIndex,
                                  "Get color temperature."));
        else
            result.value = monitor.read(inKelvin(monitor) ? DmCtrlGetColorTemperature : DmCtrlGetColorTemperatureIndex,
                                        "Get color temperature.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isNumber(), "data must be number.");
        monitor.write(inKelvin(monitor) ? DmCtrlSetColorTemperature : DmCtrlSetColorTemperatureIndex,
                      "Set color temperature.", data.asUInt());
    }

    static bool inKelvin(const Monitor& monitor) { return monitor.supports(DmCtrlSupportedColorTemperature); }
};

template std::uint32_t serve<ColorTemperature>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
