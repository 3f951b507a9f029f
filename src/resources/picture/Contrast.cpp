// The picture's contrast, as a step of the monitor's own range or as a percentage of it.
#include "bridge/Resource.h"

namespace torvo::bridge {

class Contrast final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(DmCtrlSupportedContrast);
        else if (query.has("range"))
            result.value = monitor.range(DmCtrlGetRangeContrastForStep, "Get contrast range.");
        else if (query.has("percentage"))
            result.value = monitor.read(DmCtrlGetContrastForPercentage, "Get contrast percentage.");
        else
            result.value = monitor.read(DmCtrlGetContrastForStep, "Get contrast.");
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& percentage = data.get("percentage");
        checkRequest(data.isNumber() || percentage.isNumber(), "data must be number.");
        if (percentage.isNumber())
            monitor.write(DmCtrlSetContrastForPercentage, "Set contrast percentage.", percentage.asDouble());
        else
            monitor.write(DmCtrlSetContrastForStep, "Set contrast.", data.asUInt());
    }
};

template std::uint32_t serve<Contrast>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
