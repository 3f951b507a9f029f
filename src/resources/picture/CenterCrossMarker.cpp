// A cross that marks the center of the screen.
#include "bridge/Resource.h"

namespace torvo::bridge {

class CenterCrossMarker final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        checkRequest(request.requestQuery.has("supports"), "supports query is required.");
        result.value = monitor.supports(NAMED(DmCtrlSupportedCenterCrossMarker));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        monitor.write(NAMED(DmCtrlShowCenterCrossMarker), "Show center cross marker.");
    }

    void Delete(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        monitor.write(NAMED(DmCtrlHideCenterCrossMarker), "Hide center cross marker.");
    }
};

template std::uint32_t serve<CenterCrossMarker>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
