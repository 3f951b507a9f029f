// The colour temperature: in kelvin, or on older monitors by the index of a preset.
#include <libdmc/picture.h>

#include "bridge/Resource.h"

namespace torvo::bridge {

class ColorTemperature final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        const bool inKelvin = monitor.isNewer(DmCtrlSupportedColorTemperature);
        if (query.has("supports"))
            result.value = inKelvin || monitor.supports(DmCtrlSupportedColorTemperatureIndex);
        else if (query.has("available"))
            result.value = Value::array(monitor.enumerate(
                inKelvin ? DmCtrlEnumColorTemperature : DmCtrlEnumColorTemperatureIndex, "Get color temperature."));
        else
            result.value = monitor.read(inKelvin ? DmCtrlGetColorTemperature : DmCtrlGetColorTemperatureIndex,
                                        "Get color temperature.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data), "data must be number.");
        const bool inKelvin = monitor.isNewer(DmCtrlSupportedColorTemperature);
        monitor.write(inKelvin ? DmCtrlSetColorTemperature : DmCtrlSetColorTemperatureIndex, "Set color temperature.",
                      toNumber<std::uint32_t>(data));
    }
};

template struct Entry<ColorTemperature>;

}  // namespace torvo::bridge
