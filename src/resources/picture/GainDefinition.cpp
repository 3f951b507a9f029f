// The gains that make a colour temperature.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class GainDefinition final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (request.requestQuery.has("supports"))
            result.value = monitor.supports(NAMED(DmCtrlSupportedGainDefinition));
        else
            result.value = toValue(monitor.read(NAMED(DmCtrlGetGainDefinition), "Get gain definition."));
    }
};

template std::uint32_t serve<GainDefinition>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
