// The luminance of the panel as it left the factory.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class FactoryPanelLuminance final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (request.requestQuery.has("supports"))
            result.value = monitor.supports(NAMED(DmCtrlSupportedFactoryPanelLuminance));
        else
            result.value = toValue(monitor.read(NAMED(DmCtrlGetFactoryPanelLuminance), "Get factory panel luminance."));
    }
};

template std::uint32_t serve<FactoryPanelLuminance>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
