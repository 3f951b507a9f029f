// What profiles are made from: chromaticities and luminance of the panel.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class ProfileData final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord&) override {
        result.value = toValue(monitor.read(DmCtrlProfGetData, "Get profile data."));
    }
};

template std::uint32_t serve<ProfileData>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
